#include "render/depth_tiles.h"

#include "render/frame_buffer.h"

#include <immintrin.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>

static_assert(kTileWidth % 4 == 0);  // whole vectors

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

// Four bytes each.
template <typename Value>
static void FillTile(std::vector<Value>& values, const Rect& pixels, Value value) {
    const __m128i four = _mm_set1_epi32(std::bit_cast<int32_t>(value));
    for (int32_t y = pixels.top; y < pixels.bottom; ++y) {
        Value* row = RowOf(values, pixels.left, y);
        if (Width(pixels) == kTileWidth) {
            for (int32_t x = 0; x < kTileWidth; x += 4)
                _mm_storeu_si128(reinterpret_cast<__m128i*>(row + x), four);
        } else {
            std::fill_n(row, Width(pixels), value);
        }
    }
}

template <typename Visit>
static void VisitTiles(const Rect& rect, Visit visit) {
    const TileRange range = TilesOf(rect);
    for (int32_t row = range.top; row < range.bottom; ++row) {
        for (int32_t column = range.left; column < range.right; ++column) visit(column, row);
    }
}

static void WriteClearedDepths(const Rect& rect) {
    VisitTiles(rect, [](int32_t column, int32_t row) {
        uint8_t& isStale = Tiles().isStale[IndexOf(column, row)];
        if (isStale == 0) return;
        FillTile(frameBuffer.depth, PixelsOf(column, row), kFarDepth);
        isStale = 0;
        --Tiles().staleCount;
    });
}

// Nobody's number is the least: it wins every tie.
static void WriteClearedOwners(const Rect& rect) {
    VisitTiles(rect, [](int32_t column, int32_t row) {
        uint8_t& isStale = frameBuffer.owners.areStale[IndexOf(column, row)];
        if (isStale == 0) return;
        FillTile(frameBuffer.owners.numbers, PixelsOf(column, row), std::numeric_limits<int32_t>::min());
        isStale = 0;
    });
}

void PrepareDepth(const Rect& rect) {
    if (Tiles().staleCount > 0) WriteClearedDepths(rect);
    if (frameBuffer.owners.areKept) WriteClearedOwners(rect);
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

static float FarthestOfWhole(const Rect& pixels) {
    __m128 farthest = _mm_setzero_ps();
    for (int32_t y = pixels.top; y < pixels.bottom; ++y) {
        const float* row = RowOf(frameBuffer.depth, pixels.left, y);
        for (int32_t x = 0; x < kTileWidth; x += 4) farthest = _mm_max_ps(farthest, _mm_loadu_ps(row + x));
    }
    farthest = _mm_max_ps(farthest, _mm_movehl_ps(farthest, farthest));
    return _mm_cvtss_f32(_mm_max_ss(farthest, _mm_shuffle_ps(farthest, farthest, 1)));
}

static float FarthestOf(const Rect& pixels) {
    if (Width(pixels) == kTileWidth) return FarthestOfWhole(pixels);
    float farthest = 0;
    for (int32_t y = pixels.top; y < pixels.bottom; ++y) {
        const float* row = RowOf(frameBuffer.depth, pixels.left, y);
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
