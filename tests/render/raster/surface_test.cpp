#include "render/raster/surface.h"

#include "support/picture.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <vector>

static Rect RandomRect(RandomSource& random, const Rect& inside) {
    const int32_t left = random.IntBetween(inside.left, inside.right - 1);
    const int32_t top = random.IntBetween(inside.top, inside.bottom - 1);
    return {left, top, random.IntBetween(left + 1, inside.right), random.IntBetween(top + 1, inside.bottom)};
}

static float& DepthOf(PixelValues<float>& depth, int32_t x, int32_t y) {
    return depth[static_cast<size_t>(y) * static_cast<size_t>(frameBuffer.width) + static_cast<size_t>(x)];
}

static float GreatestIn(PixelValues<float>& depth, const Rect& rect) {
    float greatest = 0;
    for (int32_t y = rect.top; y < rect.bottom; ++y) {
        for (int32_t x = rect.left; x < rect.right; ++x) greatest = std::max(greatest, DepthOf(depth, x, y));
    }
    return greatest;
}

// Whole tiles of the area around a rectangle.
static Rect TilesAround(const Rect& rect, const Rect& area) {
    const auto down = [](int32_t value, int32_t from, int32_t size) {
        return from + (value - from) / size * size;
    };
    const auto up = [down](int32_t value, int32_t from, int32_t size, int32_t most) {
        return std::min(most, down(value + size - 1, from, size));
    };
    return {down(rect.left, area.left, kTileWidth), down(rect.top, area.top, kTileHeight),
            up(rect.right, area.left, kTileWidth, area.right),
            up(rect.bottom, area.top, kTileHeight, area.bottom)};
}

TEST_CASE("depths cleared by tiles match those of a buffer cleared whole, and none exceeds the farthest") {
    constexpr uint32_t kSeed = 2718;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    for (int round = 0; round < 300; ++round) {
        CAPTURE(round);
        StartPicture(random.IntBetween(1, 60), random.IntBetween(1, 50));
        const Rect area = RandomRect(random, frameBuffer.viewport);
        PixelValues<float> plain = frameBuffer.depth;
        for (int step = 0; step < 30; ++step) {
            if (random.OneIn(6)) {
                ClearDepth(area, frameBuffer);
                for (int32_t y = area.top; y < area.bottom; ++y) {
                    for (int32_t x = area.left; x < area.right; ++x) DepthOf(plain, x, y) = kFarDepth;
                }
            }
            const Rect rect = RandomRect(random, area);
            PrepareDepth(rect, frameBuffer);
            const DepthTiles& tiles = frameBuffer.depthTiles;
            REQUIRE(std::ranges::count(tiles.isStale, 1) == static_cast<ptrdiff_t>(tiles.staleCount));
            const float nearer = random.Between(0.1f, 1);
            for (int32_t y = rect.top; y < rect.bottom; ++y) {
                for (int32_t x = rect.left; x < rect.right; ++x) {
                    REQUIRE(DepthOf(frameBuffer.depth, x, y) == DepthOf(plain, x, y));
                    if (random.OneIn(8)) continue;
                    float& depth = DepthOf(plain, x, y);
                    depth = DepthOf(frameBuffer.depth, x, y) = std::min(depth, nearer);
                }
            }
            DepthChanged(rect, frameBuffer);
            const Rect asked = RandomRect(random, frameBuffer.viewport);
            const Rect known{std::max(asked.left, area.left), std::max(asked.top, area.top),
                             std::min(asked.right, area.right), std::min(asked.bottom, area.bottom)};
            if (step == 0 || Width(known) <= 0 || Height(known) <= 0) continue;
            if (frameBuffer.depthTiles.area == area)
                REQUIRE(FarthestDepth(known, frameBuffer) == GreatestIn(plain, TilesAround(known, area)));
        }
    }
}

TEST_CASE("after clearing, only tiles that are prepared are written") {
    StartPicture(40, 40);
    std::ranges::fill(frameBuffer.depth, 0.25f);
    ClearDepth({0, 0, 40, 40}, frameBuffer);
    PrepareDepth({9, 9, 10, 10}, frameBuffer);
    CHECK(std::ranges::count(frameBuffer.depth, kFarDepth) == kTileWidth * kTileHeight);
    CHECK(DepthAt(8, 8) == kFarDepth);
    CHECK(DepthAt(15, 15) == kFarDepth);
    CHECK(FarthestDepth({0, 0, 40, 40}, frameBuffer) == kFarDepth);
}

TEST_CASE("a rectangle beside the area, or an empty one, has no depth") {
    StartPicture(40, 40);
    ClearDepth({10, 10, 20, 20}, frameBuffer);
    PrepareDepth({30, 30, 35, 35}, frameBuffer);
    DepthChanged({-9, -9, 0, 0}, frameBuffer);
    CHECK(FarthestDepth({30, 30, 35, 35}, frameBuffer) == 0);
    CHECK(FarthestDepth({15, 15, 15, 15}, frameBuffer) == 0);
}
