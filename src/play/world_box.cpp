#include "play/world_box.h"

#include "render/mesh.h"
#include "render/transform.h"
#include "scene/editor_state.h"

#include <cmath>
#include <limits>
#include <span>

constexpr float kThinnest = 0.04f;  // world units
constexpr float kInfinity = std::numeric_limits<float>::infinity();

constexpr MeshVertex kCubeCorners[] = {{{-1, -1, -1}}, {{1, -1, -1}}, {{-1, 1, -1}}, {{1, 1, -1}},
                                       {{-1, -1, 1}},  {{1, -1, 1}},  {{-1, 1, 1}},  {{1, 1, 1}}};

static std::span<const MeshVertex> ShapeOf(const GameObject& object) {
    const auto mesh = static_cast<size_t>(object.meshIndex);
    const bool hasMesh = object.hasShape && object.meshIndex >= 0 && mesh < editorState.meshes.size() &&
                         !editorState.meshes[mesh].vertices.empty();
    if (hasMesh) return editorState.meshes[mesh].vertices;
    return kCubeCorners;
}

static Box BoxAround(std::span<const MeshVertex> shape, const Matrix4& world) {
    Box box{{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}};
    for (const MeshVertex& vertex : shape) {
        const Vec3 point = TransformPoint(world, vertex.position);
        Include({point, point}, box);
    }
    return box;
}

static void ThickenAxis(float& low, float& high) {
    if (!(high - low < kThinnest)) return;
    const float centre = (low + high) / 2;
    low = centre - kThinnest / 2;
    high = centre + kThinnest / 2;
}

static Box Thickened(Box box) {
    ThickenAxis(box.min.x, box.max.x);
    ThickenAxis(box.min.y, box.max.y);
    ThickenAxis(box.min.z, box.max.z);
    return box;
}

static bool IsFinite(Vec3 v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

static Matrix4 WithoutTranslation(Matrix4 world) {
    for (int row = 0; row < 3; ++row) world.m[row][3] = 0;
    return world;
}

Box WorldBox(int32_t index) {
    const Scene& scene = editorState.scene;
    return Thickened(BoxAround(ShapeOf(scene[index]), WorldMatrix(scene, index)));
}

// TransformPoint adds the translation last. Rounding is monotone, so the smallest sum belongs to the smallest
// summand: the translation may as well be added to the extent.
Box WorldBox(int32_t index, TurnedShape& shape) {
    const Scene& scene = editorState.scene;
    const Matrix4 world = WorldMatrix(scene, index);
    const Vec3 place = Translation(world);
    if (!IsFinite(place)) return Thickened(BoxAround(ShapeOf(scene[index]), world));

    const Matrix4 turn = WithoutTranslation(world);
    if (!shape.isKnown || shape.world != turn) {
        shape = {turn, BoxAround(ShapeOf(scene[index]), turn), true};
    }
    return Thickened({shape.extent.min + place, shape.extent.max + place});
}
