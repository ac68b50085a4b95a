// Clearing, and the greatest depth of a tile.
//
// Both take a whole block at once, row by row, in whole vectors; the last vector of a row overlaps the one
// before it, rather than being written number by number. They are bound by the memory that they touch, so
// nothing else would gain: aligned, wider or streaming stores do not.
#pragma once

#include "render/raster/kernels.h"
#include "render/raster/lanes.h"

namespace {

void ClearBlock(void* first, int64_t stride, int32_t width, int32_t height, uint32_t value) {
    const Ints values = Splat(static_cast<int32_t>(value));
    for (int32_t y = 0; y < height; ++y) {
        auto* row = static_cast<int32_t*>(first) + y * stride;
        if (width < kLanes) {
            for (int32_t x = 0; x < width; ++x) memcpy(row + x, &value, sizeof value);
            continue;
        }
        for (int32_t x = 0; x + kLanes <= width; x += kLanes) Store(row + x, values);
        Store(row + (width - kLanes), values);
    }
    LeaveVectors();
}

float FarthestOfBlock(const float* first, int64_t stride, int32_t width, int32_t height) {
    float farthest = 0;
    Floats most = Splat(0.0f);
    for (int32_t y = 0; y < height; ++y) {
        const float* row = first + y * stride;
        if (width < kLanes) {
            for (int32_t x = 0; x < width; ++x) farthest = farthest < row[x] ? row[x] : farthest;
            continue;
        }
        for (int32_t x = 0; x + kLanes <= width; x += kLanes) most = Most(Load(row + x), most);
        most = Most(Load(row + (width - kLanes)), most);
    }
    const float found = MostLane(most);
    LeaveVectors();
    return farthest < found ? found : farthest;
}

}  // namespace
