#include "viewport/current_view.h"

#include "render/raster/camera.h"
#include "scene/editor_camera.h"
#include "state/editor_state.h"
#include "viewport/scene_view.h"

bool ShowsGame() { return editorState.playMode || editorState.runtimeMode; }

FrameView CurrentView(const Rect& viewport) {
    const CameraPose camera = ActiveCamera(editorState.scene, editorState.camera, ShowsGame());
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
