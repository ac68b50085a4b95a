// The component PlanePrefabSpawner: an object that keeps one instance of a prefab standing on itself.
#pragma once

#include "play/play_pass.h"

#include <cstdint>

// Places the prefab at a random spot on top of the object if no instance of it stands there. If that file
// does not exist, the first prefab of the project becomes the object's own. Does nothing for an inactive
// object or one without Shape; `index` names an object. In the frame in which a spawner was itself placed,
// it does not place its own prefab, nor one that led to it.
void SpawnerStep(int32_t index, PlayPass& pass);
