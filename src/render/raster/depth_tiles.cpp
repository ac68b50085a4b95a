#include "render/raster/depth_tiles.h"

#include "render/frame_buffer.h"
#include "render/raster/kernels.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>

namespace {

// Tile numbers; right and bottom are exclusive.
using TileRange = Rect;

}  // namespace

static DepthTiles& Tiles() { return frameBuffer.depthTiles; }

static int32_t CountOf(int32_t pixels, int32_t size) { return std::max(0, (pixels + size - 1) / size); }

void ClearDepth(const Rect& area) {
    DepthTiles& tiles = Tiles();
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
static TileRange TilesOf(const Rect& rect) {
    const Rect& area = Tiles().area;
    const int32_t left = std::max(rect.left, area.left) - area.left,
                  top = std::max(rect.top, area.top) - area.top;
    const int32_t right = std::min(rect.right, area.right) - area.left,
                  bottom = std::min(rect.bottom, area.bottom) - area.top;
    if (left >= right || top >= bottom) return {};
    return {left / kTileWidth, top / kTileHeight, CountOf(right, kTileWidth), CountOf(bottom, kTileHeight)};
}

static size_t IndexOf(int32_t column, int32_t row) {
    return static_cast<size_t>(row) * static_cast<size_t>(Tiles().columns) + static_cast<size_t>(column);
}

// The pixels of a tile.
static Rect PixelsOf(int32_t column, int32_t row) {
    const Rect& area = Tiles().area;
    const int32_t left = area.left + column * kTileWidth, top = area.top + row * kTileHeight;
    return {left, top, std::min(left + kTileWidth, area.right), std::min(top + kTileHeight, area.bottom)};
}

template <typename Value>
static Value* RowOf(std::vector<Value>& values, int32_t x, int32_t y) {
    return values.data() + static_cast<ptrdiff_t>(y) * frameBuffer.width + x;
}

static const RasterKernels& Kernels() { return KernelsOf(frameBuffer.simd); }

template <typename Visit>
static void VisitTiles(const Rect& rect, Visit visit) {
    const TileRange range = TilesOf(rect);
    for (int32_t row = range.top; row < range.bottom; ++row) {
        for (int32_t column = range.left; column < range.right; ++column) visit(column, row);
    }
}

// Writes the stale tiles of a rectangle, those that follow one another in a row together: in rows as long as
// possible, memory is written in the order that caches expect. Gives how many tiles that were.
template <typename Value>
static size_t WriteStale(std::vector<Value>& values, std::vector<uint8_t>& isStale, const Rect& rect,
                         Value value) {
    const TileRange range = TilesOf(rect);
    size_t written = 0;
    for (int32_t row = range.top; row < range.bottom; ++row) {
        for (int32_t column = range.left; column < range.right; ++column) {
            const int32_t first = column;
            while (column < range.right && isStale[IndexOf(column, row)] != 0) {
                isStale[IndexOf(column, row)] = 0;
                ++column;
            }
            if (column == first) continue;
            const Rect begin = PixelsOf(first, row), end = PixelsOf(column - 1, row);
            Kernels().clearBlock(RowOf(values, begin.left, begin.top), frameBuffer.width,
                                 end.right - begin.left, Height(begin), std::bit_cast<uint32_t>(value));
            written += static_cast<size_t>(column - first);
        }
    }
    return written;
}

// Nobody's number is the least: it wins every tie.
constexpr int32_t kNobody = std::numeric_limits<int32_t>::min();

void PrepareDepth(const Rect& rect) {
    DepthTiles& tiles = Tiles();
    PixelOwners& owners = frameBuffer.owners;
    if (tiles.staleCount > 0)
        tiles.staleCount -= WriteStale(frameBuffer.depth, tiles.isStale, rect, kFarDepth);
    if (owners.areKept) WriteStale(owners.numbers, owners.areStale, rect, kNobody);
}

void KeepOwners() {
    PixelOwners& owners = frameBuffer.owners;
    owners.areKept = true;
    owners.numbers.resize(frameBuffer.depth.size());
    owners.areStale.assign(Tiles().isStale.size(), 1);
}

void ForgetOwners() { frameBuffer.owners.areKept = false; }

void DepthChanged(const Rect& rect) {
    VisitTiles(rect, [](int32_t column, int32_t row) { Tiles().isChanged[IndexOf(column, row)] = 1; });
}

static float FarthestOf(const Rect& pixels) {
    return Kernels().farthestOf(RowOf(frameBuffer.depth, pixels.left, pixels.top), frameBuffer.width,
                                Width(pixels), Height(pixels));
}

static float FarthestOfTile(int32_t column, int32_t row) {
    const size_t tile = IndexOf(column, row);
    if (Tiles().isChanged[tile] != 0) {
        Tiles().farthest[tile] = FarthestOf(PixelsOf(column, row));
        Tiles().isChanged[tile] = 0;
    }
    return Tiles().farthest[tile];
}

float FarthestDepth(const Rect& rect) {
    const TileRange range = TilesOf(rect);
    float farthest = 0;
    for (int32_t row = range.top; row < range.bottom; ++row) {
        for (int32_t column = range.left; column < range.right; ++column) {
            farthest = std::max(farthest, FarthestOfTile(column, row));
            if (farthest >= kFarDepth) return kFarDepth;
        }
    }
    return farthest;
}
