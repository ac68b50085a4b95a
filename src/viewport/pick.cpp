#include "viewport/pick.h"

#include "render/frame_buffer.h"
#include "render/raster/camera.h"
#include "render/raster/draw_mesh.h"
#include "scene/transform.h"
#include "state/editor_state.h"
#include "viewport/scene_view.h"
#include "viewport/viewport_overlay.h"

// What of an object lies over the meshes: its icon or its text.
static bool IsOverlayAt(const GameObject& object, Point anchor, Point pixel) {
    if (HasMarkerIcon(object) && Contains(IconRect(anchor), pixel)) return true;
    return object.isText && Contains(TextObjectRect(object, anchor), pixel);
}

static int32_t PickOverlay(const PickView& view, Point pixel) {
    WorldMatrices worlds(view.scene);
    for (auto i = static_cast<int32_t>(view.scene.size()) - 1; i >= 0; --i) {
        const GameObject& object = view.scene[static_cast<size_t>(i)];
        if (!IsShown(object, view.playMode) || !(HasMarkerIcon(object) || object.isText)) continue;
        Point anchor;
        const Vec3 position = Translation(worlds.Of(i));
        if (!ProjectToPixel(view.viewProjection, position, view.viewport, anchor)) continue;
        if (IsOverlayAt(object, anchor, pixel)) return i;
    }
    return -1;
}

static int32_t PickMesh(const PickView& view, Point pixel) {
    int32_t found = -1;
    PickedPixel picked{view.viewport, pixel};
    WorldMatrices worlds(view.scene);
    MeshDraw draw{.eye = view.eye, .viewProjection = view.viewProjection};
    for (int32_t i = 0; i < static_cast<int32_t>(view.scene.size()); ++i) {
        const GameObject& object = view.scene[static_cast<size_t>(i)];
        if (!IsShown(object, view.playMode) || !ShowsMesh(object, view.meshes.size())) continue;
        draw.world = worlds.Of(i);
        const Mesh& mesh = view.meshes[static_cast<size_t>(object.meshIndex)].mesh;
        if (MeshCoversPixel(mesh, draw, picked, frameBuffer)) found = i;
    }
    return found;
}

int32_t PickObject(const PickView& view, Point pixel) {
    if (!Contains(view.viewport, pixel)) return -1;
    const int32_t overlay = PickOverlay(view, pixel);
    return overlay >= 0 ? overlay : PickMesh(view, pixel);
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
