// What one pass over a playing scene finds out and keeps until its end.
#pragma once

#include "play/scene_lookup.h"
#include "play/world_boxes.h"

#include <cstdint>
#include <vector>

struct PlayPass {
    WorldBoxes boxes{};
    SceneLookup lookup{};
    int32_t objectsBefore = 0;         // objects that were there when the pass began
    std::vector<int32_t> spawnedBy{};  // for each object added since: the spawner that placed it
};
