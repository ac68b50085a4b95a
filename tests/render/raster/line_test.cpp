#include "render/raster/line.h"

#include "support/capture.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

constexpr Pixel kLine{0xFFFFFF};

static bool IsLine(int32_t x, int32_t y) { return PixelAt(x, y) == kLine; }

// The pixels between two ends, both included: the longer way is walked pixel by pixel, the other one lies at
// the exact line, rounded, and a half goes on toward the end.
static std::vector<Point> PixelsBetween(Point from, Point to) {
    const int32_t dx = to.x - from.x, dy = to.y - from.y;
    const int32_t steps = std::max(std::abs(dx), std::abs(dy));
    const auto part = [steps](int32_t step, int32_t way) {
        if (steps == 0) return 0;
        const int32_t rounded = (2 * step * std::abs(way) + steps) / (2 * steps);
        return way < 0 ? -rounded : rounded;
    };
    std::vector<Point> pixels;
    for (int32_t i = 0; i <= steps; ++i) pixels.push_back({from.x + part(i, dx), from.y + part(i, dy)});
    return pixels;
}

// True when the picture shows exactly these pixels, as far as they lie in the viewport.
static bool ShowsOnly(const std::vector<Point>& pixels) {
    std::vector<Pixel> expected(headless.pixels.size());
    for (Point p : pixels) {
        if (!Contains(frameBuffer.viewport, p)) continue;
        expected[static_cast<size_t>(p.y) * static_cast<size_t>(frameBuffer.width) +
                 static_cast<size_t>(p.x)] = kLine;
    }
    return headless.pixels == expected;
}

TEST_CASE("a line contains both its ends and one pixel for every column between, a half rounded onward") {
    StartPicture(20, 20);
    DrawLine({2, 3}, {12, 8}, kLine, frameBuffer);
    // y = 3 + (x - 2) / 2 lies half way between two rows in the columns 3, 5, 7, 9 and 11.
    CHECK(ShowsOnly(
        {{2, 3}, {3, 4}, {4, 4}, {5, 5}, {6, 5}, {7, 6}, {8, 6}, {9, 7}, {10, 7}, {11, 8}, {12, 8}}));
}

TEST_CASE("a steep line contains one pixel for every row, a half rounded onward") {
    StartPicture(20, 20);
    DrawLine({3, 2}, {8, 12}, kLine, frameBuffer);
    CHECK(ShowsOnly(
        {{3, 2}, {4, 3}, {4, 4}, {5, 5}, {5, 6}, {6, 7}, {6, 8}, {7, 9}, {7, 10}, {8, 11}, {8, 12}}));
}

TEST_CASE("a half is rounded toward the end in every direction, so a line back may take other pixels") {
    StartPicture(20, 20);
    DrawLine({12, 8}, {2, 3}, kLine, frameBuffer);
    CHECK(IsLine(11, 7));
    CHECK(IsLine(3, 3));
    CHECK_FALSE(IsLine(11, 8));
    CHECK_FALSE(IsLine(3, 4));
}

TEST_CASE("a point is a line of one pixel") {
    StartPicture(5, 5);
    DrawLine({2, 2}, {2, 2}, kLine, frameBuffer);
    CHECK(CountOf(kLine) == 1);
    CHECK(IsLine(2, 2));
}

TEST_CASE("a line never leaves the viewport") {
    StartPicture(40, 40);
    frameBuffer.viewport = {10, 12, 30, 32};
    DrawLine({-1000, 20}, {1000, 22}, kLine, frameBuffer);
    DrawLine({20, -1000}, {22, 1000}, kLine, frameBuffer);
    DrawLine({-500, -500}, {500, 500}, kLine, frameBuffer);
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
    DrawLine({-9950, -950}, {10050, 1050}, kLine, frameBuffer);
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

TEST_CASE("a line with both ends beyond the same side draws nothing") {
    StartPicture(20, 20);
    DrawLine({-65, 5}, {-65, 15}, kLine, frameBuffer);
    DrawLine({-500, -100}, {-66, 300}, kLine, frameBuffer);
    DrawLine({5, 85}, {15, 90}, kLine, frameBuffer);
    CHECK(CountOf(kLine) == 0);
}

TEST_CASE("a line is clipped 64 pixels outside the viewport, and not before") {
    // An end 64 pixels outside stays. One pixel farther out it is clipped, and the other coordinate, which
    // moves by less than a pixel, stays as it was: the line from there takes other pixels than the whole
    // one.
    struct {
        Point from, to, cut;
    } cases[] = {
        {{-64, -20}, {19, 3}, {-64, -20}}, {{-65, -20}, {19, 1}, {-64, -20}},
        {{84, -20}, {0, 1}, {84, -20}},    {{85, -20}, {0, 7}, {84, -20}},
        {{-20, -64}, {3, 19}, {-20, -64}}, {{-20, -65}, {1, 19}, {-20, -64}},
        {{-20, 84}, {1, 0}, {-20, 84}},    {{-20, 85}, {7, 0}, {-20, 84}},
    };
    for (const auto& [from, to, cut] : cases) {
        CAPTURE(from.x);
        CAPTURE(from.y);
        StartPicture(20, 20);
        DrawLine(from, to, kLine, frameBuffer);
        CHECK(ShowsOnly(PixelsBetween(cut, to)));
        if (cut != from) CHECK_FALSE(ShowsOnly(PixelsBetween(from, to)));
    }
}

TEST_CASE("a horizontal line is still drawn when either end is clipped") {
    StartPicture(20, 20);
    DrawLine({-5000, 7}, {5000, 7}, kLine, frameBuffer);
    CHECK(CountOf(kLine) == 20);
    CHECK(IsLine(0, 7));
    CHECK(IsLine(19, 7));
}

TEST_CASE("a vertical line across the top and the bottom is still drawn") {
    StartPicture(20, 20);
    DrawLine({7, -5000}, {7, 5000}, kLine, frameBuffer);
    CHECK(CountOf(kLine) == 20);
    CHECK(IsLine(7, 0));
    CHECK(IsLine(7, 19));
}

TEST_CASE("clipped ends lie where the truncated quotient puts them") {
    struct {
        LineSegment line, cut;
    } cases[] = {
        {{{-40, -10}, {20, 10}}, {{-10, 0}, {20, 10}}},  // -10 + 30 * 20 / 60
        {{{0, 0}, {100, 50}}, {{0, 0}, {30, 15}}},
        {{{0, 0}, {7, 100}}, {{0, 0}, {2, 40}}},    // 40 * 7 / 100 = 2.8
        {{{0, 0}, {-7, 100}}, {{0, 0}, {-2, 40}}},  // -2.8 is truncated to -2
        {{{7, -100}, {0, 0}}, {{2, -20}, {0, 0}}},  // 7 + trunc(80 * -7 / 100) = 7 - 5
        // Beyond two edges: above and below come first, here (-11, -20), then y = -20 + trunc(19 / 11).
        {{{-11, -21}, {0, -1}}, {{-10, -19}, {0, -1}}},
        {{{31, 41}, {20, 21}}, {{30, 39}, {20, 21}}},    // (31, 40), then y = 40 + trunc(-19 / 11)
        {{{0, -1}, {-11, -21}}, {{0, -1}, {-10, -20}}},  // the second end: x = trunc(-19 * 11 / 20)
    };
    const Rect bounds{-10, -20, 30, 40};
    for (auto& [line, cut] : cases) {
        LineSegment clipped = line;
        CHECK(ClipLine(clipped, bounds));
        CHECK(clipped == cut);
    }
}

TEST_CASE("a line between the farthest integers neither overflows nor hangs") {
    StartPicture(64, 64);
    const int32_t far[] = {INT32_MIN, -100000, 0, 32, 100000, INT32_MAX};
    for (int32_t x0 : far) {
        for (int32_t y0 : far) {
            for (int32_t x1 : far) {
                for (int32_t y1 : far) DrawLine({x0, y0}, {x1, y1}, kLine, frameBuffer);
            }
        }
    }
    CHECK(IsLine(32, 32));
}

TEST_CASE("random lines take the pixels next to the exact line, as far as they lie in the viewport") {
    constexpr uint32_t kSeed = 7;
    INFO("seed ", kSeed);
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<int32_t> near(-60, 110);  // within 64 pixels, so that no end is cut
    for (int i = 0; i < 500; ++i) {
        const Point from{near(random), near(random)}, to{near(random), near(random)};
        StartPicture(50, 50);
        DrawLine(from, to, kLine, frameBuffer);
        CAPTURE(i);
        CHECK(ShowsOnly(PixelsBetween(from, to)));
    }
}

TEST_CASE("a text drawn before a line is finished first") {
    StartPicture(20, 20);
    DrawText(0, 0, L"a", TextColor{0}, 13, 400);
    DrawLine({2, 3}, {12, 8}, kLine, frameBuffer);
    CHECK(headless.flushes == 1);
}
