// The depth buffer in tiles: most of a frame is never drawn to, and need not be cleared; and what lies behind
// all that a tile shows need not be drawn.
#pragma once

#include "base/rect.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Tiles begin at the top left corner of their area; those at its right and bottom may be cut.
constexpr int32_t kTileWidth = 16, kTileHeight = 8;  // pixels

struct DepthTiles {
    Rect area{};  // of the frame buffer
    int32_t columns = 0, rows = 0;
    std::vector<float> farthest{};     // by tile, row by row: no pixel's depth is greater
    std::vector<uint8_t> isChanged{};  // 1 where `farthest` may be greater than any pixel's depth
    std::vector<uint8_t> isStale{};    // 1 where the depths are those of an earlier frame: all count as far
    size_t staleCount = 0;
};

// Whose depth each pixel holds, while objects are drawn in another order than the scene's.
struct PixelOwners {
    bool areKept = false;
    int32_t current = 0;              // the number of the object at hand, in the scene's order
    std::vector<int32_t> numbers{};   // width x height
    std::vector<uint8_t> areStale{};  // by tile, 1 where nobody drew yet: the numbers mean nothing
};

// Makes every depth of the area far. The others are never looked at.
void ClearDepth(const Rect& area);

// To be called before depths or owners are read or written inside a rectangle: what was cleared is then
// written.
void PrepareDepth(const Rect& rect);

// From now on pixels have owners, until ForgetOwners. What was drawn before belongs to no object and keeps
// its place before others of the same depth.
void KeepOwners();
void ForgetOwners();

// To be called after depths were written inside a rectangle.
void DepthChanged(const Rect& rect);

// A depth that no pixel of the rectangle lies beyond, as near as the tiles tell it.
float FarthestDepth(const Rect& rect);
