#include "render/line.h"

#include "support/picture.h"

#include "doctest/doctest.h"

#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

constexpr Pixel kLine{0xFFFFFF};

static bool IsLine(int32_t x, int32_t y) { return PixelAt(x, y) == kLine; }

TEST_CASE("a line contains both its ends and every column between") {
    StartPicture(20, 20);
    DrawLine({2, 3}, {12, 8}, kLine);
    CHECK(IsLine(2, 3));
    CHECK(IsLine(12, 8));
    CHECK(CountOf(kLine) == 11);  // one pixel per column
    CHECK(IsLine(4, 4));          // half way between two rows of the exact line, y = 3 + (x - 2) / 2
    CHECK(IsLine(6, 5));
}

TEST_CASE("a point is a line of one pixel") {
    StartPicture(5, 5);
    DrawLine({2, 2}, {2, 2}, kLine);
    CHECK(CountOf(kLine) == 1);
    CHECK(IsLine(2, 2));
}

TEST_CASE("a line never leaves the viewport") {
    StartPicture(40, 40);
    frameBuffer.viewport = {10, 12, 30, 32};
    DrawLine({-1000, 20}, {1000, 22}, kLine);
    DrawLine({20, -1000}, {22, 1000}, kLine);
    DrawLine({-500, -500}, {500, 500}, kLine);
    for (int32_t y = 0; y < 40; ++y) {
        for (int32_t x = 0; x < 40; ++x) {
            if (!Contains(frameBuffer.viewport, {x, y})) CHECK_FALSE(IsLine(x, y));
        }
    }
    // The cut ends rise by less than a pixel, which is truncated away.
    CHECK(IsLine(10, 20));
    CHECK(IsLine(29, 20));
    CHECK(IsLine(20, 12));
    CHECK(IsLine(20, 31));
    CHECK(IsLine(15, 15));
}

TEST_CASE("a line from far outside keeps the slope of the unclipped line") {
    StartPicture(100, 100);
    // y = 50 + (x - 50) / 10 exactly, ends far outside on both sides.
    DrawLine({-9950, -950}, {10050, 1050}, kLine);
    const auto rowIn = [](int32_t x) {
        for (int32_t y = 0; y < 100; ++y) {
            if (IsLine(x, y)) return y;
        }
        return -1000;
    };
    // Each cut may truncate almost a pixel away, the second one from the first, and the walk rounds by a
    // half.
    for (int32_t x = 0; x < 100; ++x) CHECK(std::abs(rowIn(x) - (50 + (x - 50) / 10.0)) <= 2.5);
    CHECK(std::abs(rowIn(99) - rowIn(0) - 9.9) <= 1.1);
}

TEST_CASE("a line with both ends beyond the same side of the grown viewport draws nothing") {
    StartPicture(20, 20);
    DrawLine({-65, 5}, {-65, 15}, kLine);
    DrawLine({-500, -100}, {-66, 300}, kLine);
    DrawLine({5, 85}, {15, 90}, kLine);
    CHECK(CountOf(kLine) == 0);
}

TEST_CASE("a horizontal line cut at either end still draws") {
    StartPicture(20, 20);
    DrawLine({-5000, 7}, {5000, 7}, kLine);
    CHECK(CountOf(kLine) == 20);
    CHECK(IsLine(0, 7));
    CHECK(IsLine(19, 7));
}

TEST_CASE("a vertical line across the top and the bottom still draws") {
    StartPicture(20, 20);
    DrawLine({7, -5000}, {7, 5000}, kLine);
    CHECK(CountOf(kLine) == 20);
    CHECK(IsLine(7, 0));
    CHECK(IsLine(7, 19));
}

TEST_CASE("cut ends lie where the quotient, truncated, puts them") {
    struct {
        LineSegment line, cut;
    } cases[] = {
        {{{-40, -10}, {20, 10}}, {{-10, 0}, {20, 10}}},  // -10 + 30 * 20 / 60
        {{{0, 0}, {100, 50}}, {{0, 0}, {30, 15}}},
        {{{0, 0}, {7, 100}}, {{0, 0}, {2, 40}}},    // 40 * 7 / 100 = 2.8
        {{{0, 0}, {-7, 100}}, {{0, 0}, {-2, 40}}},  // -2.8 is truncated to -2
        {{{7, -100}, {0, 0}}, {{2, -20}, {0, 0}}},  // 7 + trunc(80 * -7 / 100) = 7 - 5
    };
    const Rect bounds{-10, -20, 30, 40};
    for (auto& [line, cut] : cases) {
        LineSegment clipped = line;
        CHECK(ClipLine(clipped, bounds));
        CHECK(clipped == cut);
    }
}

TEST_CASE("ends as far apart as integers allow neither overflow nor hang") {
    StartPicture(64, 64);
    const int32_t far[] = {INT32_MIN, -100000, 0, 32, 100000, INT32_MAX};
    for (int32_t x0 : far) {
        for (int32_t y0 : far) {
            for (int32_t x1 : far) {
                for (int32_t y1 : far) DrawLine({x0, y0}, {x1, y1}, kLine);
            }
        }
    }
    CHECK(IsLine(32, 32));
}

TEST_CASE("a clipped line lights the pixels of the unclipped line when no end is cut") {
    std::mt19937 random(7);
    std::uniform_int_distribution<int32_t> inside(-60, 110);
    for (int i = 0; i < 500; ++i) {
        const Point a{inside(random), inside(random)}, b{inside(random), inside(random)};
        StartPicture(50, 50);
        DrawLine(a, b, kLine);
        // The same walk on a buffer that holds the whole line.
        std::vector<Point> seen;
        for (int32_t y = 0; y < 50; ++y) {
            for (int32_t x = 0; x < 50; ++x) {
                if (IsLine(x, y)) seen.push_back({x, y});
            }
        }
        StartPicture(171, 171);
        DrawLine({a.x + 60, a.y + 60}, {b.x + 60, b.y + 60}, kLine);
        std::vector<Point> whole;
        for (int32_t y = 0; y < 50; ++y) {
            for (int32_t x = 0; x < 50; ++x) {
                if (IsLine(x + 60, y + 60)) whole.push_back({x, y});
            }
        }
        CHECK(seen == whole);
    }
}
