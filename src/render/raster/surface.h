// The memory that is drawn into: pixels and their depths.
//
// The depths are kept in tiles. Most of a frame is never drawn to, and need not be cleared; and what lies
// behind all that a tile shows need not be drawn.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "render/raster/mesh_to_draw.h"
#include "render/raster/simd_level.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// The depth of a pixel that nothing was drawn to.
constexpr float kFarDepth = 1.0f;

// Tiles begin at the top left corner of their area; those at its right and bottom may be cut.
constexpr int32_t kTileWidth = 16, kTileHeight = 8;  // pixels

struct DepthTiles {
    Rect area{};  // of the surface
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

struct Surface {
    Pixel* pixels = nullptr;        // width x height, row 0 at the top; null: nothing may be drawn
    int32_t width = 0, height = 0;  // pixels
    std::vector<float> depth{};     // width x height; 1 is far, nothing drawn yet: see PrepareDepth
    DepthTiles depthTiles{};
    PixelOwners owners{};
    Rect viewport{};                   // what lines and 3D drawing are confined to; inside the surface
    SimdLevel simd = BestSimdLevel();  // how triangles are filled
    bool systemDrew = false;           // the system drew last: see PreparePixelAccess
    MeshScratch scratch{};
};

// To be called before pixels are read or written directly: what the system drew before is then in them.
void PreparePixelAccess(Surface& surface);

// Makes every depth of the area far. The others are never looked at.
void ClearDepth(const Rect& area, Surface& surface);

// To be called before depths or owners are read or written inside a rectangle: what was cleared is then
// written.
void PrepareDepth(const Rect& rect, Surface& surface);

// From now on pixels have owners, until ForgetOwners. What was drawn before belongs to no object and keeps
// its place before others of the same depth.
void KeepOwners(Surface& surface);
void ForgetOwners(Surface& surface);

// To be called after depths were written inside a rectangle.
void DepthChanged(const Rect& rect, Surface& surface);

// A depth that no pixel of the rectangle lies beyond, as near as the tiles tell it.
float FarthestDepth(const Rect& rect, Surface& surface);
