#include "editor/panel_frames.h"

#include "editor/theme.h"
#include "render/frame_buffer.h"
#include "render/panel_box.h"
#include "state/editor_state.h"

// The splitters by the numbers that SplitterHitTest gives.
static void DrawSplitter(int32_t edge, const Rect& line) {
    FillRect(line, editorState.panelResize.edge == edge ? kAccent : kSplitter);
}

void DrawPanelFrames(const EditorLayout& layout) {
    DrawPanelBox(layout.topBar, kTopBarFill, kPanelLightEdge);
    DrawPanelBox(layout.hierarchy, kPanelFill, kPanelLightEdge);
    DrawPanelBox(layout.inspector, kPanelFill, kPanelLightEdge);
    DrawPanelBox(layout.bottom, kBottomPanelFill, kPanelLightEdge);

    const int32_t left = layout.hierarchy.right, right = layout.inspectorLeft, top = layout.bottomTop;
    DrawSplitter(1, {left - 1, kTopBarHeight, left + 1, top});
    DrawSplitter(2, {right - 1, kTopBarHeight, right + 1, top});
    DrawSplitter(3, {0, top - 1, layout.width, top + 1});
}
