// Taking a snapshot of a scene, and putting it back.
#pragma once

#include "state/scene_snapshot.h"

// Keeps `scene` as it is, bit for bit. Runs of `earlier` that still stand in the scene, moved or not, are
// shared; null shares nothing. With an earlier snapshot that differs in one place the cost is one comparison
// of all objects and a copy of the objects around that place, and of the parent indices when one changed.
SceneSnapshot TakeSnapshot(const Scene& scene, const SceneSnapshot* earlier);

// True when `scene` is what it was when the snapshot was taken, bit for bit.
bool HoldsScene(const SceneSnapshot& snapshot, const Scene& scene);

// Makes `scene` what it was when the snapshot was taken, bit for bit. Objects that are so already stay.
void RestoreSnapshot(const SceneSnapshot& snapshot, Scene& scene);
