#include "blueprint/visible_nodes.h"

#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <set>
#include <utility>

TEST_CASE("what lies outside the area counts as covered, nothing inside at first") {
    const CanvasCover cover = StartCover({230, 44, 520, 200});
    CHECK_FALSE(IsCovered(cover, {230, 44, 231, 45}));
    CHECK_FALSE(IsCovered(cover, {519, 199, 520, 200}));
    CHECK_FALSE(IsCovered(cover, {0, 0, 1000, 1000}));
    CHECK(IsCovered(cover, {0, 44, 230, 200}));
    CHECK(IsCovered(cover, {520, 44, 900, 200}));
    CHECK(IsCovered(cover, {230, 0, 520, 44}));
    CHECK(IsCovered(cover, {230, 200, 520, 900}));
    CHECK(IsCovered(cover, {300, 100, 300, 200}));
}

TEST_CASE("an empty area is covered") {
    for (const Rect& area : {Rect{}, Rect{230, 44, 520, 44}, Rect{230, 44, 150, 600}}) {
        CanvasCover cover = StartCover(area);
        CHECK(IsCovered(cover, {-9, -9, 999, 999}));
        Cover(cover, {-9, -9, 999, 999});
    }
}

TEST_CASE("random rectangles are covered exactly when each of their pixels is") {
    RandomSource random(20261121);
    for (int32_t run = 0; run < 200; ++run) {
        CAPTURE(run);
        const Rect area{7, -3, 7 + random.IntBetween(1, 200), random.IntBetween(1, 12)};
        CanvasCover cover = StartCover(area);
        std::set<std::pair<int32_t, int32_t>> pixels;
        for (int32_t step = 0; step < 20; ++step) {
            const int32_t left = random.IntBetween(-20, 220), top = random.IntBetween(-8, 14);
            const Rect rect{left, top, left + random.IntBetween(1, 130), top + random.IntBetween(1, 8)};
            bool expected = true;
            for (int32_t y = rect.top; y < rect.bottom; ++y) {
                for (int32_t x = rect.left; x < rect.right; ++x) {
                    if (Contains(area, {x, y})) expected = expected && pixels.contains({x, y});
                }
            }
            CHECK(IsCovered(cover, rect) == expected);
            if (random.OneIn(2)) continue;
            Cover(cover, rect);
            for (int32_t y = rect.top; y < rect.bottom; ++y) {
                for (int32_t x = rect.left; x < rect.right; ++x) pixels.insert({x, y});
            }
        }
    }
}
