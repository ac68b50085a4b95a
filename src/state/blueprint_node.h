// One node of a Blueprint document.
#pragma once

#include <cstdint>
#include <string>

// Links are not stored: node k leads to node k + 1.
struct BlueprintNode {
    int32_t id = 1;  // at least 1; duplicates and gaps are kept
    std::wstring title{};
    int32_t x = 0, y = 0;  // top left, pixels from the canvas origin
};
