#include "editor/panel_frames.h"

#include "editor/theme.h"
#include "render/frame_buffer.h"
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
