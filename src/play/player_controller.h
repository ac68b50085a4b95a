// Objects that the player moves with W, S, A and D.
#pragma once

#include "play/world_boxes.h"

#include <cstdint>

// Moves the object ahead and sideways as it is turned about y: at 4 units per second, or with a Rigidbody by
// a force that its mass weighs against, up to that speed. `dt` in seconds; `index` names an object.
void PlayerControllerStep(int32_t index, float dt, WorldBoxes& boxes);
