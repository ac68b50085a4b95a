#include "editor/bottom_panel.h"

#include "editor/theme.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"
#include "scene/status.h"
#include "state/editor_state.h"

namespace {
struct PageTab {
    BottomTab page;
    int32_t left, right;  // pixels
    const wchar_t* title;
    const wchar_t* message;
};
}  // namespace

constexpr PageTab kTabs[] = {
    {BottomTab::Files, 16, 106, L"Files", L"Prepnuto na Files."},
    {BottomTab::Console, 112, 216, L"Console", L"Prepnuto na Console."},
};

static Rect PlaceOf(const PageTab& tab, const EditorLayout& layout) {
    return {tab.left, layout.bottomTop + 10, tab.right, layout.bottomTop + 38};
}

static void DrawConsole(const EditorLayout& layout) {
    DrawText(18, layout.bottomTop + 50, editorState.statusMessage, kConsoleText, 15, kNormal);
    DrawText(18, layout.bottomTop + 78,
             L"Mys: tahni za hrany panelu pro resize, leve tahni za barevnou osu gizma pro posun.",
             kConsoleText, 15, kNormal);
}

void DrawBottomPanel(const EditorLayout& layout) {
    for (const PageTab& tab : kTabs) {
        DrawTab(PlaceOf(tab, layout), tab.title, editorState.bottomTab == tab.page);
    }
    if (editorState.bottomTab == BottomTab::Console) DrawConsole(layout);
}

bool ClickBottomTabs(Point pointer, const EditorLayout& layout) {
    for (const PageTab& tab : kTabs) {
        if (!Contains(PlaceOf(tab, layout), pointer)) continue;
        editorState.bottomTab = tab.page;
        SetStatus(tab.message);
        return true;
    }
    return false;
}
