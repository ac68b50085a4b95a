// The ready-made animations: turning, pulsing, bouncing.
#pragma once

#include "play/world_boxes.h"

#include <cstdint>

// Animates the object, active or not, when it has the component. `dt` in seconds; `index` names an object.
void AnimationStep(int32_t index, float dt, WorldBoxes& boxes);
