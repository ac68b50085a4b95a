#include "render/raster/mesh_batch.h"

#include "render/raster/draw_mesh.h"

#include "base/prefetch.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

// Distance in the upper half, index in the lower one. Sorted by distance and then by place in the scene;
// one number is compared faster than two.
using Place = uint64_t;

static float DistanceOf(const MeshInstance& instance) {
    return TransformToClip(instance.draw.viewProjection, Translation(instance.draw.world)).w;
}

// An integer that sorts as the float does: the sign bit of positive numbers is set, and all bits of
// negative ones are flipped. A value that is not a number sorts to one of the ends.
static uint32_t OrderOf(float number) {
    const auto bits = std::bit_cast<uint32_t>(number);
    return (bits & 0x80000000) != 0 ? ~bits : bits | 0x80000000;
}

static size_t NumberOf(Place place) { return static_cast<uint32_t>(place); }

static void SortNearestFirst(std::span<const MeshInstance> instances, std::vector<Place>& places) {
    places.clear();
    for (const MeshInstance& instance : instances)
        places.push_back(Place{OrderOf(DistanceOf(instance))} << 32 | places.size());
    std::ranges::sort(places);
}

// True when the scene stands nearly in the order of distance: keeping owners would then cost more than the
// better order saves. In a random order a mesh is moved by a third of their number on average.
static bool AreNearlyInOrder(const std::vector<Place>& places) {
    constexpr double kNearly = 0.2;  // of the number of meshes, in the mean
    double moved = 0;
    for (size_t i = 0; i < places.size(); ++i)
        moved += std::abs(static_cast<double>(i) - static_cast<double>(NumberOf(places[i])));
    const auto count = static_cast<double>(places.size());
    return moved <= kNearly * count * count;
}

// An estimate of how much of the view a mesh fills, 0 .. 1: the square of its reach over its distance.
static float ShareOfView(const MeshInstance& instance) {
    const Matrix4& world = instance.draw.world;
    float size = 0;
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) size += world.m[row][column] * world.m[row][column];
    }
    const float reach = instance.mesh->measures.reach, distance = DistanceOf(instance);
    const float share = size * reach * reach / (distance * distance);
    return share > 0 ? std::min(share, 1.0f) : 0.0f;
}

// True when large meshes come much later in the scene than in the order of distance. An example is a wall
// that was added last and stands before many small meshes: it hides them only if it is drawn first. It has
// to hide many for this to pay.
static bool DoLargeOnesComeLate(std::span<const MeshInstance> instances, const std::vector<Place>& places) {
    constexpr size_t kMany = 256;
    constexpr double kLate = 0.2;  // of the number of meshes, in the mean by their share of the view
    if (instances.size() < kMany) return false;
    double late = 0, all = 0;
    for (size_t i = 0; i < places.size(); ++i) {
        const size_t number = NumberOf(places[i]);
        const auto share = static_cast<double>(ShareOfView(instances[number]));
        if (number > i) late += share * static_cast<double>(number - i);
        all += share;
    }
    return late > kLate * all * static_cast<double>(places.size());
}

static void DrawInSceneOrder(std::span<const MeshInstance> instances, Surface& surface) {
    for (const MeshInstance& instance : instances) DrawMesh(*instance.mesh, instance.draw, surface);
}

// At equal depths the earlier mesh of the scene must be visible, whichever is drawn first. So every pixel
// remembers the number of the mesh that it shows.
static void DrawInOrder(std::span<const MeshInstance> instances, const std::vector<Place>& places,
                        Surface& surface) {
    KeepOwners(instances.size(), surface);
    for (size_t i = 0; i < places.size(); ++i) {
        if (i + kPrefetchAhead < places.size())
            PrefetchRecord(instances[NumberOf(places[i + kPrefetchAhead])]);
        const size_t number = NumberOf(places[i]);
        const MeshInstance& instance = instances[number];
        surface.owners.current = surface.owners.first + static_cast<int32_t>(number);
        DrawMesh(*instance.mesh, instance.draw, surface);
    }
    ForgetOwners(surface);
}

// In go meshes in scene order; out comes the picture that drawing them in this order gives. Nearest first
// is cheaper, because a hidden mesh ends before its vertices are transformed. The price is an owner for
// every pixel, which keeps ties as the scene has them: one more buffer to write. So few meshes, and meshes
// that are already nearly sorted, are drawn as they stand.
void DrawMeshes(std::span<const MeshInstance> instances, Surface& surface) {
    if (instances.size() < kFewestToSort) {
        DrawInSceneOrder(instances, surface);
        return;
    }
    std::vector<Place>& places = surface.scratch.order;
    SortNearestFirst(instances, places);
    if (AreNearlyInOrder(places) && !DoLargeOnesComeLate(instances, places)) {
        DrawInSceneOrder(instances, surface);
    } else {
        DrawInOrder(instances, places, surface);
    }
}
