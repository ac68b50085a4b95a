// One step of a playing scene.
#pragma once

#include "play/world_boxes.h"

// What one step finds out about the scene and the next one can still use. A fresh cache is always right.
struct PlayCache {
    WorldBoxes boxes{};
};

// Lets every object act once, in scene order: those that are added on the way too. `dt` in seconds, at most
// 0.05.
void PlayStep(float dt, PlayCache& cache);
