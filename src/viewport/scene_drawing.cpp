#include "viewport/scene_drawing.h"

#include "base/limit.h"
#include "base/prefetch.h"
#include "render/frame_buffer.h"
#include "render/raster/mesh_bounds.h"
#include "scene/selection.h"
#include "scene/shown_screen.h"
#include "scene/transform.h"
#include "scene/world_cache.h"
#include "state/editor_state.h"
#include "viewport/gizmo.h"
#include "viewport/scene_view.h"
#include "viewport/viewport_overlay.h"

#include <vector>

static const TextureImage* TextureOf(const GameObject& object) {
    if (!object.hasTexture || !IsIndexOf(object.textureIndex, editorState.textures.size())) return nullptr;
    return &editorState.textures[static_cast<size_t>(object.textureIndex)];
}

// What the edit mode shows of the selection is not part of the game.
static bool IsSelected(int32_t index) { return !ShowsGame() && index == editorState.selectedIndex; }

static MeshDraw MeshDrawOf(int32_t index, const MeshDraw& frame, FrameWorlds& worlds) {
    const GameObject& object = editorState.scene[static_cast<size_t>(index)];
    MeshDraw draw = frame;
    draw.world = worlds.Of(index);
    draw.selected = IsSelected(index);
    draw.tint = object.hasColor ? object.color : 0;
    draw.roughness = object.roughness;
    draw.gloss = object.gloss;
    draw.texture = TextureOf(object);
    draw.repeat = object.textureRepeat;
    return draw;
}

static void DrawTextOf(int32_t index, const Matrix4& viewProjection, FrameWorlds& worlds) {
    const Vec3 position = Translation(worlds.Of(index));
    DrawTextObject(editorState.scene[static_cast<size_t>(index)], position, viewProjection,
                   IsSelected(index));
}

// Meshes are drawn in batches: only a text and the outline of the selection ignore depth and must come where
// they stand in the scene. What is invisible is not worth sorting. `frame` holds what all objects share.
// Gives the objects with a marker, which come last: walking through a large scene twice costs more than a
// list.
static std::vector<int32_t> DrawObjects(const MeshDraw& frame, FrameWorlds& worlds) {
    std::vector<int32_t> marked;
    const bool showsGame = ShowsGame();
    const Frustum frustum = FrustumOf(frame.viewProjection, frameBuffer.viewport);
    for (int32_t i = 0; i < static_cast<int32_t>(editorState.scene.size()); ++i) {
        const GameObject& object = editorState.scene[static_cast<size_t>(i)];
        if (i + kPrefetchAhead < editorState.scene.size()) {
            const GameObject& later = editorState.scene[i + kPrefetchAhead];
            Prefetch(&later.meshIndex);
            Prefetch(&later.active);
            Prefetch(&later.isText);
        }
        if (!IsShown(object, showsGame)) continue;
        if (HasMarker(object)) marked.push_back(i);
        if (!object.isText && !ShowsMesh(object, editorState.meshes.size())) continue;
        if (object.isText || IsSelected(i)) DrawCollectedMeshes();
        if (object.isText) {
            DrawTextOf(i, frame.viewProjection, worlds);
            continue;
        }
        const Mesh& mesh = editorState.meshes[static_cast<size_t>(object.meshIndex)].mesh;
        if (!IsSelected(i) && IsInvisible(mesh, worlds.Of(i), frustum)) continue;
        CollectMesh({&mesh, MeshDrawOf(i, frame, worlds)});
        if (IsSelected(i)) DrawCollectedMeshes();
    }
    DrawCollectedMeshes();
    return marked;
}

static void DrawMarkersOf(int32_t index, const Matrix4& viewProjection, FrameWorlds& worlds) {
    const GameObject& object = editorState.scene[static_cast<size_t>(index)];
    DrawMarkerIcons(object, Translation(worlds.Of(index)), viewProjection, IsSelected(index));
}

static void DrawSelectedGizmo(const FrameView& view) {
    if (ShowsGame() || !SelectionIsValid() || !HasPlace(SelectedObject())) return;
    const Vec3 origin = WorldPosition(editorState.scene, editorState.selectedIndex);
    const auto* drag = std::get_if<GizmoDrag>(&editorState.gesture);
    DrawGizmo(ProjectGizmo(origin, view.viewProjection, view.viewport),
              drag ? std::optional(drag->axis) : std::nullopt);
}

static LibraryMarks MarksOfLibrary() {
    LibraryMarks marks{editorState.meshes.data(), editorState.textures.data()};
    for (const MeshAsset& asset : editorState.meshes) marks.meshMarks.push_back(asset.mesh.measures.identity);
    for (const TextureImage& texture : editorState.textures) marks.textureMarks.push_back(texture.identity);
    return marks;
}

void DrawScene(const FrameView& view) {
    frameBuffer.viewport = view.viewport;
    const MeshDraw frame{.eye = view.camera.position,
                         .light = LightDirection(editorState.scene),
                         .viewProjection = view.viewProjection};

    NoteLibrary(MarksOfLibrary());
    ClearViewportDepth();
    FillRect(view.viewport, ViewportBackground(editorState.scene, editorState.selectedIndex, ShowsGame()));
    if (ShownScreen() != Shown::Game) DrawGrid(frame.viewProjection);
    FrameWorlds worlds(editorState.scene, frameBuffer.worlds);
    for (const int32_t marked : DrawObjects(frame, worlds))
        DrawMarkersOf(marked, frame.viewProjection, worlds);
    DrawSelectedGizmo(view);
}
