// Keeping a scene: as a snapshot that shares what did not change, and aside while something else is shown.
#pragma once

#include "state/editor_state.h"

#include <optional>

// Keeps `scene` as it is, bit for bit. Runs of `earlier` that still stand in the scene, moved or not, are
// shared; null shares nothing. With an earlier snapshot that differs in one place the cost is one comparison
// of all objects and a copy of the objects around that place, and of the parent indices when one changed.
SceneSnapshot TakeSnapshot(const Scene& scene, const SceneSnapshot* earlier);

// True when `scene` is what it was when the snapshot was taken, bit for bit.
bool HoldsScene(const SceneSnapshot& snapshot, const Scene& scene);

// Makes `scene` what it was when the snapshot was taken, bit for bit. Objects that are so already stay.
void RestoreSnapshot(const SceneSnapshot& snapshot, Scene& scene);

// A copy of the scene, of the undo history, and of where the user is. Nothing changes.
KeptScene KeepScene();

// Makes `kept` the open scene again and leaves it empty. `kept` holds a scene.
void PutSceneBack(std::optional<KeptScene>& kept);
