// What was drawn where in the last frame, so that a click means what the user saw.
#pragma once

#include "base/rect.h"

#include <cstdint>
#include <string>
#include <vector>

struct HitZone {
    Rect rect{};
    int32_t action = 0;  // the number of the action that a click runs
    int32_t block = 0;   // the script whose block it lies in, 0 elsewhere
};

// In the order of drawing; the first zone under the pointer wins.
using HitZoneList = std::vector<HitZone>;

// Where a file or a folder was drawn. The lists of both change between two frames; a path goes on naming the
// same.
struct PathZone {
    Rect rect{};
    std::wstring path{};
};

using PathZoneList = std::vector<PathZone>;

// A drawn row of the Hierarchy.
struct HierarchyRow {
    int32_t objectIndex = -1;
    int32_t depth = 0;  // 0 for a root
    int32_t y = 0;      // pixels
};

using HierarchyRowList = std::vector<HierarchyRow>;
