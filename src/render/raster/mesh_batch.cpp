#include "render/raster/mesh_batch.h"

#include "render/raster/draw_mesh.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <vector>

// Sorts as the distance does, and then as the place in the scene: one number is compared faster than two.
using Place = uint64_t;

static float DistanceOf(const MeshInstance& instance) {
    return TransformToClip(instance.draw.viewProjection, Translation(instance.draw.world)).w;
}

// Orders floats as unsigned integers. A value that is not a number sorts to one of the ends.
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

// True when the order of the scene is near enough to that of the distances: keeping the owners of pixels
// costs more than a better order gives then. An order by chance moves a mesh by a third of their number.
static bool AreNearlyInOrder(const std::vector<Place>& places) {
    constexpr double kNearly = 0.2;  // of the number of meshes, in the mean
    double moved = 0;
    for (size_t i = 0; i < places.size(); ++i)
        moved += std::abs(static_cast<double>(i) - static_cast<double>(NumberOf(places[i])));
    const auto count = static_cast<double>(places.size());
    return moved <= kNearly * count * count;
}

// How much of the view a mesh may fill, 0 .. 1: by its reach and its distance.
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

// True when large meshes come much later in the scene than their distance would have them, as a wall that was
// added last before many small ones: it hides them only if it is drawn first. Of fewer meshes it would not
// hide enough.
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
    for (const MeshInstance& instance : instances) DrawMeshInView(*instance.mesh, instance.draw, surface);
}

// Of two meshes at the same depth the first in the scene is visible, whichever is drawn first: the pixels
// remember whose depth they hold.
static void DrawInOrder(std::span<const MeshInstance> instances, const std::vector<Place>& places,
                        Surface& surface) {
    KeepOwners(surface);
    for (const Place place : places) {
        const MeshInstance& instance = instances[NumberOf(place)];
        surface.owners.current = static_cast<int32_t>(NumberOf(place));
        DrawMeshInView(*instance.mesh, instance.draw, surface);
    }
    ForgetOwners(surface);
}

// In go meshes in scene order, out comes the picture of drawing them in that order. Nearest first is cheaper,
// because what was drawn hides what comes later before its vertices are transformed. But it needs an owner
// for every pixel, so that ties go to the scene's order, and owners are one more buffer to write: few meshes,
// and those already nearly sorted, are drawn as they stand.
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
