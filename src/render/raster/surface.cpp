#include "render/raster/surface.h"

#include "platform/canvas.h"
#include "render/raster/kernels.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace {

// Tile numbers; right and bottom are exclusive.
using TileRange = Rect;

}  // namespace

void PreparePixelAccess(Surface& surface) {
    if (!surface.systemDrew) return;
    FlushCanvas();
    surface.systemDrew = false;
}

// For the depths of whole tiles. Memory is their limit, so sixteen lanes gain nothing, and they wait for what
// eight lanes have just stored: a frame of 1,000 cubes takes a twelfth longer.
static const RasterKernels& TileKernels(const Surface& surface) {
    return KernelsOf(std::min(surface.simd, SimdLevel::Avx2));
}

static int32_t CountOf(int32_t pixels, int32_t size) { return std::max(0, (pixels + size - 1) / size); }

// Writes no depth at all: each tile is marked as stale, and its depths are written when something is first
// drawn to it. A frame that leaves half of its tiles alone clears half of its depths. Whoever reads or
// writes a depth must call PrepareDepth first, or would see the frame before.
void ClearDepth(const Rect& area, Surface& surface) {
    DepthTiles& tiles = surface.depthTiles;
    tiles.area = area;
    tiles.columns = CountOf(Width(area), kTileWidth);
    tiles.rows = CountOf(Height(area), kTileHeight);
    const auto count = static_cast<size_t>(tiles.columns) * static_cast<size_t>(tiles.rows);
    tiles.farthest.assign(count, kFarDepth);
    tiles.isChanged.assign(count, 0);
    tiles.isStale.assign(count, 1);
    tiles.staleCount = count;
}

// The tiles that hold pixels of the rectangle.
static TileRange TilesOf(const Rect& rect, const DepthTiles& tiles) {
    const Rect& area = tiles.area;
    const int32_t left = std::max(rect.left, area.left) - area.left,
                  top = std::max(rect.top, area.top) - area.top;
    const int32_t right = std::min(rect.right, area.right) - area.left,
                  bottom = std::min(rect.bottom, area.bottom) - area.top;
    if (left >= right || top >= bottom) return {};
    return {left / kTileWidth, top / kTileHeight, CountOf(right, kTileWidth), CountOf(bottom, kTileHeight)};
}

static size_t IndexOf(int32_t column, int32_t row, const DepthTiles& tiles) {
    return static_cast<size_t>(row) * static_cast<size_t>(tiles.columns) + static_cast<size_t>(column);
}

// The pixels of a tile.
static Rect PixelsOf(int32_t column, int32_t row, const DepthTiles& tiles) {
    const Rect& area = tiles.area;
    const int32_t left = area.left + column * kTileWidth, top = area.top + row * kTileHeight;
    return {left, top, std::min(left + kTileWidth, area.right), std::min(top + kTileHeight, area.bottom)};
}

// Makes the depths of some tiles of a row far. They are written as one block: its rows are longer than those
// of a tile, and memory is written more nearly in its own order.
static void ClearTiles(int32_t row, int32_t left, int32_t right, Surface& surface) {
    const Rect first = PixelsOf(left, row, surface.depthTiles),
               last = PixelsOf(right - 1, row, surface.depthTiles);
    float* corner = surface.depth.data() + static_cast<ptrdiff_t>(first.top) * surface.width + first.left;
    TileKernels(surface).clearBlock(corner, surface.width, last.right - first.left, Height(first),
                                    std::bit_cast<uint32_t>(kFarDepth));
}

void PrepareDepth(const Rect& rect, Surface& surface) {
    DepthTiles& tiles = surface.depthTiles;
    if (tiles.staleCount == 0) return;
    const TileRange range = TilesOf(rect, tiles);
    for (int32_t row = range.top; row < range.bottom; ++row) {
        uint8_t* isStale = tiles.isStale.data() + IndexOf(0, row, tiles);
        for (int32_t column = range.left; column < range.right; ++column) {
            const int32_t first = column;
            for (; column < range.right && isStale[column] != 0; ++column) isStale[column] = 0;
            if (column == first) continue;
            ClearTiles(row, first, column, surface);
            tiles.staleCount -= static_cast<size_t>(column - first);
        }
    }
}

// Starts anew when the surface has changed its size, and when all numbers are given.
void KeepOwners(size_t objects, Surface& surface) {
    PixelOwners& owners = surface.owners;
    const auto left = static_cast<size_t>(std::numeric_limits<int32_t>::max() - owners.next);
    if (owners.numbers.size() != surface.depth.size() || objects > left) {
        owners = {};
        owners.numbers.resize(surface.depth.size());
    }
    owners.areKept = true;
    owners.first = owners.next;
    owners.next += static_cast<int32_t>(objects);
}

void ForgetOwners(Surface& surface) { surface.owners.areKept = false; }

void DepthChanged(const Rect& rect, Surface& surface) {
    DepthTiles& tiles = surface.depthTiles;
    const TileRange range = TilesOf(rect, tiles);
    for (int32_t row = range.top; row < range.bottom; ++row) {
        std::fill_n(tiles.isChanged.data() + IndexOf(range.left, row, tiles), range.right - range.left,
                    uint8_t{1});
    }
}

static float FarthestOf(const Rect& pixels, const Surface& surface) {
    const float* first =
        surface.depth.data() + static_cast<ptrdiff_t>(pixels.top) * surface.width + pixels.left;
    return TileKernels(surface).farthestOf(first, surface.width, Width(pixels), Height(pixels));
}

// Brings the farthest depths of some tiles of a row up to date. Unchanged tiles are skipped by a search
// through bytes.
static void RefreshTiles(int32_t row, int32_t left, int32_t right, Surface& surface) {
    DepthTiles& tiles = surface.depthTiles;
    for (int32_t column = left; column < right; ++column) {
        const size_t tile = IndexOf(column, row, tiles);
        const void* changed = std::memchr(&tiles.isChanged[tile], 1, static_cast<size_t>(right - column));
        if (changed == nullptr) return;
        column += static_cast<int32_t>(static_cast<const uint8_t*>(changed) - &tiles.isChanged[tile]);
        const size_t found = IndexOf(column, row, tiles);
        tiles.farthest[found] = FarthestOf(PixelsOf(column, row, tiles), surface);
        tiles.isChanged[found] = 0;
    }
}

// Asked before a mesh is drawn: what is farther away than the answer cannot be seen. Only tiles that were
// drawn to since the last question are measured pixel by pixel. The first row with a far tile ends the
// search, because part of the rectangle is usually still empty. The rows of a large mesh are long, so they
// are compared in vectors.
float FarthestDepth(const Rect& rect, Surface& surface) {
    DepthTiles& tiles = surface.depthTiles;
    const TileRange range = TilesOf(rect, tiles);
    const RasterKernels& kernels = TileKernels(surface);
    float farthest = 0;
    for (int32_t row = range.top; row < range.bottom; ++row) {
        RefreshTiles(row, range.left, range.right, surface);
        const float* first = tiles.farthest.data() + IndexOf(range.left, row, tiles);
        farthest = std::max(farthest, kernels.farthestOf(first, tiles.columns, Width(range), 1));
        if (farthest >= kFarDepth) return kFarDepth;
    }
    return farthest;
}
