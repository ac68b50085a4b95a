// A scene kept for later, which shares with an earlier one what did not change in between.
#pragma once

#include "state/game_object.h"

#include <cstdint>
#include <memory>
#include <vector>

// The objects in scene order, cut into runs that nobody changes any more. A value: a copy costs no object.
// Parent indices are kept aside, because removing or moving one object changes those of all objects whose
// parents stand behind it.
struct SceneSnapshot {
    std::vector<std::shared_ptr<const Scene>> runs{};  // 1 .. 64 objects each; their parents say nothing
    std::shared_ptr<const std::vector<int32_t>>
        parents{};  // parent index of each object; null without objects
};

// Keeps `scene` as it is, bit for bit. Runs of `earlier` that still stand in the scene, moved or not, are
// shared; null shares nothing. With an earlier snapshot that differs in one place the cost is one comparison
// of all objects and a copy of the objects around that place, and of the parent indices when one changed.
SceneSnapshot TakeSnapshot(const Scene& scene, const SceneSnapshot* earlier);

// True when `scene` is what it was when the snapshot was taken, bit for bit.
bool HoldsScene(const SceneSnapshot& snapshot, const Scene& scene);

// Makes `scene` what it was when the snapshot was taken, bit for bit. Objects that are so already stay.
void RestoreSnapshot(const SceneSnapshot& snapshot, Scene& scene);
