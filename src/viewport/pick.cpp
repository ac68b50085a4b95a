#include "viewport/pick.h"

#include "render/frame_buffer.h"
#include "render/raster/camera.h"
#include "render/raster/draw_mesh.h"
#include "render/raster/mesh_bounds.h"
#include "scene/world_cache.h"
#include "state/editor_state.h"
#include "viewport/scene_view.h"
#include "viewport/viewport_overlay.h"

// What of an object lies over the meshes: its icon or its text.
static bool IsOverlayAt(const GameObject& object, Point anchor, Point pixel) {
    if (HasMarkerIcon(object) && Contains(IconRect(anchor), pixel)) return true;
    return object.isText && Contains(TextObjectRect(object, anchor), pixel);
}

static bool IsOverlayAt(const GameObject& object, Vec3 position, const PickView& view, Point pixel) {
    Point anchor;
    return ProjectToPixel(view.viewProjection, position, view.viewport, anchor) &&
           IsOverlayAt(object, anchor, pixel);
}

// One walk through the scene. Of icons and texts the last one at the pixel is wanted, of meshes the nearest.
// Most meshes end at the first question, whether a sphere around them holds the pixel at all: it costs a few
// products where placing a mesh in the view costs a hundred.
int32_t PickObject(const PickView& view, Point pixel) {
    if (!Contains(view.viewport, pixel)) return -1;
    int32_t overlay = -1, nearest = -1;
    PickedPixel picked{view.viewport, pixel};
    const PixelPlanes planes = PlanesAround(pixel, view.viewport, view.viewProjection);
    FrameWorlds worlds(view.scene, frameBuffer.worlds);
    MeshDraw draw{.eye = view.eye, .viewProjection = view.viewProjection};
    for (int32_t i = 0; i < static_cast<int32_t>(view.scene.size()); ++i) {
        const GameObject& object = view.scene[static_cast<size_t>(i)];
        if (!IsShown(object, view.playMode)) continue;
        const bool hasOverlay = HasMarkerIcon(object) || object.isText;
        if (hasOverlay && IsOverlayAt(object, Translation(worlds.Of(i)), view, pixel)) overlay = i;
        if (!ShowsMesh(object, view.meshes.size())) continue;
        const Mesh& mesh = view.meshes[static_cast<size_t>(object.meshIndex)].mesh;
        const Matrix4& world = worlds.Of(i);
        if (MissesPixel(mesh, world, planes)) continue;
        draw.world = world;
        if (MeshCoversPixel(mesh, draw, picked, frameBuffer)) nearest = i;
    }
    return overlay >= 0 ? overlay : nearest;
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
