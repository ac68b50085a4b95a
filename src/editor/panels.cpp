#include "editor/panels.h"

#include "editor/theme.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"
#include "scene/status.h"
#include "state/editor_state.h"

static void DrawSplitter(PanelEdge edge, const Rect& line) {
    const auto* resize = std::get_if<PanelResize>(&editorState.gesture);
    FillRect(line, resize && resize->edge == edge ? kAccent : kSplitter);
}

void DrawPanelFrames(const EditorLayout& layout) {
    DrawPanelBox(layout.topBar, kTopBarFill, kPanelLightEdge);
    DrawPanelBox(layout.hierarchy, kPanelFill, kPanelLightEdge);
    DrawPanelBox(layout.inspector, kPanelFill, kPanelLightEdge);
    DrawPanelBox(layout.bottom, kBottomPanelFill, kPanelLightEdge);

    const int32_t left = layout.hierarchy.right, right = layout.inspectorLeft, top = layout.bottomTop;
    DrawSplitter(PanelEdge::HierarchyRight, {left - 1, kTopBarHeight, left + 1, top});
    DrawSplitter(PanelEdge::InspectorLeft, {right - 1, kTopBarHeight, right + 1, top});
    DrawSplitter(PanelEdge::BottomTop, {0, top - 1, layout.width, top + 1});
}

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
