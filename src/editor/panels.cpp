#include "editor/panels.h"

#include "editor/fit_text.h"
#include "editor/hierarchy.h"
#include "editor/theme.h"
#include "editor/widgets.h"
#include "render/frame_buffer.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>

static void DrawSplitter(PanelEdge edge, const Rect& line) {
    const auto* resize = std::get_if<PanelResize>(&editorState.gesture);
    FillRect(line, resize && resize->edge == edge ? kAccent : kSplitter);
}

void DrawPanelFrames(const EditorLayout& layout) {
    DrawPanelBox(layout.topBar, kTopBarFill, kPanelLightEdge);
    DrawPanelBox(layout.hierarchy, kPanelFill, kPanelLightEdge);
    DrawPanelBox(layout.inspector, kPanelFill, kPanelLightEdge);
}

// The panel covers what ran out of the Inspector. The splitters come last, so that the edge that is being
// dragged lies over the panels on both of its sides.
void DrawBottomFrame(const EditorLayout& layout) {
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

constexpr int32_t kStripHeight = 24;  // of a line of text

static Rect PlaceOf(const PageTab& tab, const EditorLayout& layout) {
    return {tab.left, layout.bottomTop + 10, tab.right, layout.bottomTop + 38};
}

void FillBottomStrip(const Rect& strip, const EditorLayout& layout) {
    const Rect& panel = layout.bottom;  // with two lines of edge at its top and one at its other sides
    FillRect({std::max(strip.left, panel.left + 1), std::max(strip.top, panel.top + 2),
              std::min(strip.right, panel.right - 1), std::min(strip.bottom, panel.bottom - 1)},
             kBottomPanelFill);
}

// Draws a line of text, on a strip of its own if the tree of the Hierarchy runs on below it. Elsewhere the
// strip would change nothing, and asking the system for its length is the dearest part of a panel whose texts
// are cached.
static void DrawLine(Point place, const std::wstring& text, TextFont font, const EditorLayout& layout) {
    const int32_t top = place.y - (kStripHeight - font.height) / 2;
    if (HierarchyReachesBelow(top)) {
        const int32_t right = place.x + MeasureCanvasText(text, font.height, font.weight);
        FillBottomStrip({place.x, top, right, top + kStripHeight}, layout);
    }
    DrawText(place.x, place.y, text, kConsoleText, font.height, font.weight);
}

static void DrawConsole(const EditorLayout& layout) {
    constexpr TextFont kFont{15, kNormal};
    DrawLine({18, layout.bottomTop + 50}, editorState.statusMessage, kFont, layout);
    DrawLine({18, layout.bottomTop + 78},
             L"Mys: tahni za hrany panelu pro resize, leve tahni za barevnou osu gizma pro posun.", kFont,
             layout);
}

// The message is the only answer that the program gives, so it is there on the Files page too, beside the
// tabs.
static void DrawMessageBesideTabs(const EditorLayout& layout) {
    constexpr TextFont kFont{13, kNormal};
    constexpr int32_t kLeft = 234, kGap = 16;  // before the Inspector
    const int32_t room = layout.inspectorLeft - kGap - kLeft;
    if (room <= 0) return;
    const std::wstring shown = ShortenMiddle(editorState.statusMessage, room, kFont);
    DrawLine({kLeft, layout.bottomTop + 18}, shown, kFont, layout);
}

void DrawBottomPanel(const EditorLayout& layout) {
    for (const PageTab& tab : kTabs) {
        DrawTab(PlaceOf(tab, layout), tab.title, editorState.bottomTab == tab.page);
    }
    if (editorState.bottomTab == BottomTab::Console) {
        DrawConsole(layout);
    } else {
        DrawMessageBesideTabs(layout);
    }
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
