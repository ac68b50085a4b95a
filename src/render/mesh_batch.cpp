#include "render/mesh_batch.h"

#include "render/frame_buffer.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

struct Place {
    float distance = 0;  // clip w of the mesh's origin
    int32_t number = 0;  // of the instance
};

}  // namespace

static float DistanceOf(const MeshInstance& instance) {
    return TransformToClip(instance.draw.viewProjection, Translation(instance.draw.world)).w;
}

// What is not a number comes last, so that the order is one.
static bool IsNearer(const Place& a, const Place& b) {
    const bool aIsNumber = a.distance == a.distance, bIsNumber = b.distance == b.distance;
    if (aIsNumber && bIsNumber && a.distance != b.distance) return a.distance < b.distance;
    return aIsNumber != bIsNumber ? aIsNumber : a.number < b.number;
}

static const std::vector<Place>& NearestFirst(std::span<const MeshInstance> instances) {
    static std::vector<Place> places;
    places.clear();
    for (const MeshInstance& instance : instances)
        places.push_back({DistanceOf(instance), static_cast<int32_t>(places.size())});
    std::ranges::sort(places, IsNearer);
    return places;
}

// True when the order of the scene is near enough to that of the distances: keeping the owners of pixels
// costs more than a better order gives then. An order by chance moves a mesh by a third of their number.
static bool AreNearlyInOrder(const std::vector<Place>& places) {
    constexpr double kNearly = 0.2;  // of the number of meshes, in the mean
    double moved = 0;
    for (size_t i = 0; i < places.size(); ++i)
        moved += std::abs(static_cast<double>(i) - static_cast<double>(places[i].number));
    const auto count = static_cast<double>(places.size());
    return moved <= kNearly * count * count;
}

static void DrawInSceneOrder(std::span<const MeshInstance> instances) {
    for (const MeshInstance& instance : instances) DrawMesh(*instance.mesh, instance.draw);
}

static void DrawInOrder(std::span<const MeshInstance> instances, const std::vector<Place>& places) {
    KeepOwners();
    for (const Place& place : places) {
        const MeshInstance& instance = instances[static_cast<size_t>(place.number)];
        frameBuffer.owners.current = place.number;
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
