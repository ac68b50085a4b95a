#include "app/frame_view.h"

#include "platform/window.h"
#include "render/camera.h"
#include "render/frame_buffer.h"
#include "scene/editor_camera.h"
#include "state/editor_state.h"
#include "viewport/scene_view.h"

bool ShowsGame() { return editorState.playMode || editorState.runtimeMode; }

bool HubIsShown() { return editorState.hubVisible && !editorState.runtimeMode; }

// A minimised window has no size; the picture keeps the one that it had.
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
    if (editorState.runtimeMode) layout.viewport = {0, 0, width, height};
    return layout;
}

BlueprintLayout CurrentBlueprintLayout() {
    const auto [width, height] = PictureSize();
    return LayoutBlueprint(width, height);
}

FrameView CurrentView(const Rect& viewport) {
    const CameraPose camera = ActiveCamera(editorState.scene, EditorCamera(), ShowsGame());
    const Matrix4 projection = ProjectionMatrix(Width(viewport), Height(viewport));
    return {camera, MultiplyMatrix(projection, ViewMatrix(camera)), viewport};
}

PickView CurrentPickView(const Rect& viewport) {
    const FrameView view = CurrentView(viewport);
    return {.scene = editorState.scene,
            .meshes = editorState.meshes,
            .viewport = view.viewport,
            .viewProjection = view.viewProjection,
            .eye = view.camera.position,
            .playMode = ShowsGame()};
}
