#include "render/raster/mesh_batch.h"

#include "render/frame_buffer.h"

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

// Grows with the number. What is not a number comes at one of the ends.
static uint32_t OrderOf(float number) {
    const auto bits = std::bit_cast<uint32_t>(number);
    return (bits & 0x80000000) != 0 ? ~bits : bits | 0x80000000;
}

static size_t NumberOf(Place place) { return static_cast<uint32_t>(place); }

static const std::vector<Place>& NearestFirst(std::span<const MeshInstance> instances) {
    static std::vector<Place> places;
    places.clear();
    for (const MeshInstance& instance : instances)
        places.push_back(Place{OrderOf(DistanceOf(instance))} << 32 | places.size());
    std::ranges::sort(places);
    return places;
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

static void DrawInSceneOrder(std::span<const MeshInstance> instances) {
    for (const MeshInstance& instance : instances) DrawMesh(*instance.mesh, instance.draw);
}

static void DrawInOrder(std::span<const MeshInstance> instances, const std::vector<Place>& places) {
    KeepOwners();
    for (const Place place : places) {
        const MeshInstance& instance = instances[NumberOf(place)];
        frameBuffer.owners.current = static_cast<int32_t>(NumberOf(place));
        DrawMesh(*instance.mesh, instance.draw);
    }
    ForgetOwners();
}

void DrawMeshes(std::span<const MeshInstance> instances) {
    if (instances.size() < kFewestToSort) {
        DrawInSceneOrder(instances);
        return;
    }
    const std::vector<Place>& places = NearestFirst(instances);
    if (AreNearlyInOrder(places)) {
        DrawInSceneOrder(instances);
    } else {
        DrawInOrder(instances, places);
    }
}
