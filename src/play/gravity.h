// The fall of objects with Gravitation or a Rigidbody.
#pragma once

#include "play/world_boxes.h"

#include <cstdint>

// Speeds an active object up downwards, lets its drag slow it, and moves it until it lands. Entities, cameras
// and lights do not fall. `dt` in seconds; `index` names an object.
void GravityStep(int32_t index, float dt, WorldBoxes& boxes);
