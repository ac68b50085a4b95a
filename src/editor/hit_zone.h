// What was drawn where in the last frame, so that a click means what the user saw.
#pragma once

#include "render/rect.h"

#include <cstdint>
#include <vector>

struct HitZone {
    Rect rect{};
    int32_t action = 0;  // the number of the action that a click runs
};

// In the order of drawing; the first zone under the pointer wins.
using HitZoneList = std::vector<HitZone>;

// A drawn row of the Hierarchy.
struct HierarchyRow {
    int32_t objectIndex = -1;
    int32_t depth = 0;  // 0 for a root
    int32_t y = 0;      // pixels
};

using HierarchyRowList = std::vector<HierarchyRow>;
