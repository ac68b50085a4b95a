#include "app/current_layout.h"

#include "platform/window.h"
#include "render/frame_buffer.h"
#include "scene/shown_screen.h"
#include "state/editor_state.h"

// A minimised window has no size: the picture keeps its last one.
static ClientSize PictureSize() {
    const ClientSize size = WindowClientSize();
    const bool isUsable = size.width >= 1 && size.height >= 1;
    return isUsable ? size : ClientSize{frameBuffer.width, frameBuffer.height};
}

HubLayout CurrentHubLayout() {
    const auto [width, height] = PictureSize();
    return LayoutHub(width, height, editorState.recentProjects.size());
}

EditorLayout CurrentLayout() {
    const auto [width, height] = PictureSize();
    EditorLayout layout = LayoutEditor(FitPanelsToWindow(editorState.panels, width, height), width, height);
    if (ShownScreen() == Shown::Game) layout.viewport = {0, 0, width, height};
    return layout;
}

BlueprintLayout CurrentBlueprintLayout() {
    const auto [width, height] = PictureSize();
    return LayoutBlueprint(width, height);
}
