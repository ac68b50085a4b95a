// Clearing, and the greatest depth of a tile.
//
// Both are bound by the memory that they touch, so they are plain loops over whole vectors. The last vector
// of a run overlaps the one before it, rather than being written number by number.
#pragma once

#include "render/raster/kernels.h"
#include "render/raster/lanes.h"

namespace {

void FillRun(void* first, size_t count, uint32_t value) {
    auto* to = static_cast<int32_t*>(first);
    const Ints values = Splat(static_cast<int32_t>(value));
    if (count < static_cast<size_t>(kLanes)) {
        for (size_t i = 0; i < count; ++i) memcpy(to + i, &value, sizeof value);
        return;
    }
    for (size_t i = 0; i + kLanes <= count; i += kLanes) Store(to + i, values);
    Store(to + (count - kLanes), values);
    LeaveVectors();
}

float FarthestOfBlock(const float* first, int32_t stride, int32_t width, int32_t height) {
    float farthest = 0;
    Floats most = Splat(0.0f);
    for (int32_t y = 0; y < height; ++y) {
        const float* row = first + static_cast<int64_t>(y) * stride;
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
