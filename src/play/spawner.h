// The component PlanePrefabSpawner: an object that keeps one instance of a prefab standing on itself.
#pragma once

#include "play/play_pass.h"

#include <cstdint>

// Places the prefab at a random spot on top of the object when none of its instances stands there. Without
// such a file the first prefab of the project's files becomes the object's. Only for an active object with
// Shape; `index` names an object. An instance does not place its own kind, nor one that led to it, in the
// frame in which it was placed itself.
void SpawnerStep(int32_t index, PlayPass& pass);
