// One step of a playing scene.
#pragma once

#include "play/world_boxes.h"

// What one step computes and the next one can still use. An empty cache is always right.
struct PlayCache {
    WorldBoxes boxes{};
};

// Lets every object act once, in scene order, including objects added on the way. `dt` in seconds, at most
// 0.05.
void PlayStep(float dt, PlayCache& cache);
