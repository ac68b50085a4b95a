#include "play/world_box.h"

#include "state/editor_state.h"
#include "state/mesh.h"

#include <cmath>
#include <limits>
#include <span>

constexpr float kThinnest = 0.04f;  // world units
constexpr float kInfinity = std::numeric_limits<float>::infinity();

constexpr MeshVertex kCubeCorners[] = {{{-1, -1, -1}}, {{1, -1, -1}}, {{-1, 1, -1}}, {{1, 1, -1}},
                                       {{-1, -1, 1}},  {{1, -1, 1}},  {{-1, 1, 1}},  {{1, 1, 1}}};

// Null for an object without a mesh, whose shape is the cube.
static const Mesh* MeshOf(const GameObject& object) {
    const auto mesh = static_cast<size_t>(object.meshIndex);
    const bool hasMesh = object.hasShape && object.meshIndex >= 0 && mesh < editorState.meshes.size() &&
                         !editorState.meshes[mesh].mesh.vertices.empty();
    return hasMesh ? &editorState.meshes[mesh].mesh : nullptr;
}

static std::span<const MeshVertex> ShapeOf(const GameObject& object) {
    const Mesh* mesh = MeshOf(object);
    if (mesh == nullptr) return kCubeCorners;
    return mesh->vertices;
}

// What stands for the shape in the cache. A mesh that was not measured has no identity, so nothing can tell
// later whether it is still the same: its extent is computed every time.
static int32_t ShapeNumber(const GameObject& object) {
    const Mesh* mesh = MeshOf(object);
    if (mesh == nullptr) return kCubeShape;
    return mesh->measures.identity == nullptr ? kUnknownShape : object.meshIndex;
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

// The extent of an object without parent depends on its rotation and scale alone; comparing these is cheaper
// than building and comparing matrices.
static const Box& ExtentOfRoot(const GameObject& object, TurnedShape& shape) {
    const int32_t mesh = ShapeNumber(object);
    const bool isSame = shape.mesh != kUnknownShape && shape.mesh == mesh && shape.isOfRoot &&
                        shape.rotation == object.rotation && shape.scale == object.scale;
    if (!isSame) {
        const Matrix4 turn = LocalMatrix({}, object.rotation, object.scale);
        shape = {.rotation = object.rotation,
                 .scale = object.scale,
                 .extent = BoxAround(ShapeOf(object), turn),
                 .mesh = mesh,
                 .isOfRoot = true};
    }
    return shape.extent;
}

static const Box& ExtentOfChild(const GameObject& object, const Matrix4& world, TurnedShape& shape) {
    const int32_t mesh = ShapeNumber(object);
    const Matrix4 turn = WithoutTranslation(world);
    const bool isSame =
        shape.mesh != kUnknownShape && shape.mesh == mesh && !shape.isOfRoot && shape.world == turn;
    if (!isSame) shape = {.world = turn, .extent = BoxAround(ShapeOf(object), turn), .mesh = mesh};
    return shape.extent;
}

// In goes an object with its caches, out comes the box that transforming every vertex would give, bit for
// bit, mostly without touching a vertex. TransformPoint adds the translation last, and rounding is monotone:
// the smallest sum belongs to the smallest summand. So the translation may just as well be added to the
// cached extent. Only a translation that is not finite breaks this, and goes the long way.
Box WorldBox(int32_t index, WorldMatrices& worlds, TurnedShape& shape) {
    const GameObject& object = editorState.scene[index];
    if (object.parentIndex < 0 && IsFinite(object.position)) {
        const Box& extent = ExtentOfRoot(object, shape);
        return Thickened({extent.min + object.position, extent.max + object.position});
    }
    const Matrix4 world = worlds.Of(index);
    const Vec3 place = Translation(world);
    if (!IsFinite(place)) return Thickened(BoxAround(ShapeOf(object), world));
    const Box& extent = ExtentOfChild(object, world, shape);
    return Thickened({extent.min + place, extent.max + place});
}
