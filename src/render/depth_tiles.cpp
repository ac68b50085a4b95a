#include "render/depth_tiles.h"

#include "render/frame_buffer.h"

#include <immintrin.h>

#include <algorithm>
#include <cstddef>

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

static float* DepthRow(int32_t x, int32_t y) {
    return frameBuffer.depth.data() + static_cast<ptrdiff_t>(y) * frameBuffer.width + x;
}

static void MakeFar(const Rect& pixels) {
    const __m128 four = _mm_set1_ps(kFarDepth);
    for (int32_t y = pixels.top; y < pixels.bottom; ++y) {
        float* row = DepthRow(pixels.left, y);
        if (Width(pixels) == kTileWidth) {
            _mm_storeu_ps(row, four);
            _mm_storeu_ps(row + 4, four);
        } else {
            std::fill_n(row, Width(pixels), kFarDepth);
        }
    }
}

void PrepareDepth(const Rect& rect) {
    if (Tiles().staleCount == 0) return;
    const TileRange range = TilesOf(rect);
    for (int32_t row = range.top; row < range.bottom; ++row) {
        for (int32_t column = range.left; column < range.right; ++column) {
            uint8_t& isStale = Tiles().isStale[IndexOf(column, row)];
            if (isStale == 0) continue;
            MakeFar(PixelsOf(column, row));
            isStale = 0;
            --Tiles().staleCount;
        }
    }
}

void DepthChanged(const Rect& rect) {
    const TileRange range = TilesOf(rect);
    for (int32_t row = range.top; row < range.bottom; ++row) {
        const auto first = Tiles().isChanged.begin() + static_cast<ptrdiff_t>(IndexOf(range.left, row));
        std::fill_n(first, Width(range), uint8_t{1});
    }
}

static float FarthestOfWhole(const Rect& pixels) {
    __m128 farthest = _mm_setzero_ps();
    for (int32_t y = pixels.top; y < pixels.bottom; ++y) {
        const float* row = DepthRow(pixels.left, y);
        farthest = _mm_max_ps(farthest, _mm_max_ps(_mm_loadu_ps(row), _mm_loadu_ps(row + 4)));
    }
    farthest = _mm_max_ps(farthest, _mm_movehl_ps(farthest, farthest));
    return _mm_cvtss_f32(_mm_max_ss(farthest, _mm_shuffle_ps(farthest, farthest, 1)));
}

static float FarthestOf(const Rect& pixels) {
    if (Width(pixels) == kTileWidth) return FarthestOfWhole(pixels);
    float farthest = 0;
    for (int32_t y = pixels.top; y < pixels.bottom; ++y) {
        const float* row = DepthRow(pixels.left, y);
        farthest = std::max(farthest, *std::max_element(row, row + Width(pixels)));
    }
    return farthest;
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
