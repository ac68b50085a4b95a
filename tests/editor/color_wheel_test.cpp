#include "editor/color_wheel.h"

#include "support/capture.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <vector>

constexpr Pixel kBack{0x102030};

TEST_CASE("hue, saturation and value become a colour with red in the low byte, truncated") {
    struct {
        float hue, saturation, value;
        uint32_t color;
    } cases[] = {
        {0, 1, 1, 0x0000FF},            // red
        {0.125f, 1, 1, 0x00BFFF},       // sector 0: green is t = 0.75
        {0.25f, 1, 1, 0x00FF7F},        // sector 1: red is q = 0.5, which is 127.5
        {0.375f, 1, 1, 0x3FFF00},       // sector 2: blue is t = 0.25
        {0.5f, 1, 1, 0xFFFF00},         // sector 3: green is q = 1
        {0.625f, 1, 1, 0xFF3F00},       // sector 3: green is q = 0.25
        {0.75f, 1, 1, 0xFF007F},        // sector 4: red is t = 0.5
        {0.875f, 1, 1, 0xBF00FF},       // sector 5: blue is q = 0.75
        {0.25f, 0.5f, 0.5f, 0x3F7F5F},  // p 0.25, v 0.5, q 0.375
        {0.625f, 0, 1, 0xFFFFFF},      {0.625f, 1, 0, 0x000000},
    };
    for (const auto& [hue, saturation, value, color] : cases) {
        CAPTURE(hue);
        CHECK(HsvToColor(hue, saturation, value) == color);
    }
}

TEST_CASE("a hue counts modulo 1") {
    CHECK(HsvToColor(1, 1, 1) == 0x0000FF);
    CHECK(HsvToColor(3.25f, 1, 1) == 0x00FF7F);
    CHECK(HsvToColor(-0.25f, 1, 1) == 0xFF007F);
    CHECK(HsvToColor(-1e-9f, 1, 1) == 0x0000FF);  // the part after the point rounds to a whole turn
}

TEST_CASE("numbers that are none still give a colour") {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (const float odd : {nan, inf, -inf, 1e30f}) {
        CHECK(HsvToColor(odd, 1, 1) <= 0xFFFFFF);
        CHECK(HsvToColor(0.3f, odd, 1) <= 0xFFFFFF);
        CHECK(HsvToColor(0.3f, 1, odd) <= 0xFFFFFF);
    }
}

TEST_CASE("the wheel shows hue around its centre, from red at the left, and saturation from it to the edge") {
    StartPicture(101, 101, kBack);
    DrawColorWheel({50, 50}, 22, 0x0000FF);  // red: the mark is at the left
    CHECK(PixelAt(50, 50) == Pixel{0xFFFFFF});
    CHECK(PixelAt(50, 28) == Pixel{0x00FF7F});
    CHECK(PixelAt(72, 50) == Pixel{0xFFFF00});
    CHECK(PixelAt(50, 72) == Pixel{0xFF007F});
    CHECK(PixelAt(61, 50) == Pixel{0xFFFF7F});  // half way
    CHECK(PixelAt(73, 50) == kBack);
    CHECK(PixelAt(72, 51) == kBack);  // 22.02 away
    CHECK(PixelAt(66, 66) == kBack);
    DrawColorWheel({50, 50}, 22, 0xFFFF00);  // now the left is free
    CHECK(PixelAt(28, 50) == Pixel{0x0000FF});
}

TEST_CASE("the wheel covers every pixel within its radius and none beyond") {
    StartPicture(121, 121, kBack);
    DrawColorWheel({60, 60}, 54, 0xFFFFFF);  // white: the mark lies at the centre
    for (int32_t y = 0; y < 121; ++y) {
        for (int32_t x = 0; x < 121; ++x) {
            const int32_t dx = x - 60, dy = y - 60;
            const bool inside = dx * dx + dy * dy <= 54 * 54;
            REQUIRE((PixelAt(x, y) != kBack) == inside);
        }
    }
}

// Every pixel by itself.
static void DrawWheelPlainly(Point centre, int32_t radius) {
    const Rect square{centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius};
    for (int32_t dy = -radius; dy <= radius; ++dy) {
        for (int32_t dx = -radius; dx <= radius; ++dx) {
            const auto x = static_cast<float>(dx), y = static_cast<float>(dy);
            if (std::sqrt(x * x + y * y) > static_cast<float>(radius)) continue;
            const Point p{centre.x + dx, centre.y + dy};
            FillRect({p.x, p.y, p.x + 1, p.y + 1}, Pixel{ColorOnWheel(p, square)});
        }
    }
}

TEST_CASE("a wheel is the same wherever and however often it is drawn, up to the edges of the window") {
    for (const int32_t radius : {0, 1, 2, 22, 52, 54, 22}) {
        for (const Point centre :
             {Point{60, 60}, Point{0, 0}, Point{119, 3}, Point{-20, 130}, Point{300, 60}}) {
            CAPTURE(radius);
            CAPTURE(centre.x);
            StartPicture(120, 125, kBack);
            DrawWheelPlainly(centre, radius);
            const std::vector<Pixel> expected = headless.pixels;
            StartPicture(120, 125, kBack);
            DrawColorWheel(centre, radius, 0xFFFFFF);  // white: the mark lies at the centre
            int32_t different = 0;
            for (int32_t y = 0; y < 125; ++y) {
                for (int32_t x = 0; x < 120; ++x) {
                    const bool isMark = std::abs(x - centre.x) <= 4 && std::abs(y - centre.y) <= 4;
                    different += !isMark && PixelAt(x, y) != expected[static_cast<size_t>(y * 120 + x)];
                }
            }
            CHECK(different == 0);
        }
    }
}

TEST_CASE("the wheel marks the current colour with a white square of seven pixels in a dark rim") {
    struct {
        uint32_t color;
        int32_t x, y;  // from the centre of a wheel of radius 22
    } cases[] = {
        {0x0000FF, -22, 0}, {0x00FF7F, 0, -22}, {0xFFFF00, 22, 0},
        {0xFF007F, 0, 22},  {0x7F7FFF, -11, 0},  // saturation 128 of 255
        {0x000080, -22, 0},                      // a dark red is still a full red
        {0xFFFFFF, 0, 0},   {0x000000, 0, 0},   {0x777777, 0, 0},
    };
    for (const auto& [color, x, y] : cases) {
        StartPicture(101, 101, kBack);
        DrawColorWheel({50, 50}, 22, color);
        CAPTURE(color);
        const Point mark{50 + x, 50 + y};
        for (int32_t i = -3; i <= 3; ++i) {
            CHECK(PixelAt(mark.x + i, mark.y - 3) == Pixel{0xFFFFFF});
            CHECK(PixelAt(mark.x + i, mark.y + 3) == Pixel{0xFFFFFF});
            CHECK(PixelAt(mark.x - 3, mark.y + i) == Pixel{0xFFFFFF});
            CHECK(PixelAt(mark.x + 3, mark.y + i) == Pixel{0xFFFFFF});
        }
        for (const int32_t reach : {2, 4}) {
            CHECK(PixelAt(mark.x - reach, mark.y) == Pixel{0x14100D});
            CHECK(PixelAt(mark.x + reach, mark.y) == Pixel{0x14100D});
            CHECK(PixelAt(mark.x, mark.y - reach) == Pixel{0x14100D});
            CHECK(PixelAt(mark.x, mark.y + reach) == Pixel{0x14100D});
        }
    }
}

TEST_CASE("a point of the wheel picks the colour that is shown there") {
    const Rect square{100, 200, 144, 244};  // radius 22 around (122, 222)
    CHECK(ColorOnWheel({144, 222}, square) == 0xFFFF00);
    CHECK(ColorOnWheel({122, 200}, square) == 0x00FF7F);
    CHECK(ColorOnWheel({100, 222}, square) == 0x0000FF);
    CHECK(ColorOnWheel({122, 243}, square) == 0xFF0B85);  // saturation 21 / 22: p 11.59, t 133.3
    CHECK(ColorOnWheel({133, 222}, square) == 0xFFFF7F);
    CHECK(ColorOnWheel({122, 222}, square) == 0xFFFFFF);
    StartPicture(300, 300);
    DrawColorWheel({122, 222}, 22, 0x0000FF);
    for (int32_t y = 205; y < 240; ++y) {
        for (int32_t x = 112; x < 135; ++x) {  // right of the mark
            REQUIRE(PixelAt(x, y) == Pixel{ColorOnWheel({x, y}, square)});
        }
    }
}

TEST_CASE("a corner of the wheel's square picks the colour of the edge") {
    const Rect square{0, 0, 44, 44};
    CHECK(ColorOnWheel({88, 22}, square) == 0xFFFF00);
    CHECK(ColorOnWheel({0, 0}, square) == ColorOnWheel({-100, -100}, square));
}

TEST_CASE("a wheel without size picks as if its radius were one pixel") {
    CHECK(ColorOnWheel({11, 10}, {10, 10, 10, 10}) == 0xFFFF00);
    CHECK(ColorOnWheel({10, 10}, {10, 10, 10, 10}) == 0xFFFFFF);
}

TEST_CASE("a wheel is clicked in the square around it, drawn or not") {
    StartPicture(120, 120, kBack);
    CHECK(DrawColorWheel({50, 60}, 22, 0) == Rect{28, 38, 72, 82});
    frameBuffer = {};
    CHECK(DrawColorWheel({50, 60}, 52, 0) == Rect{-2, 8, 102, 112});
}

TEST_CASE("a wheel beyond the window's edges is cut and nothing more") {
    StartPicture(20, 10, kBack);
    DrawColorWheel({0, 0}, 54, 0x123456);
    DrawColorWheel({-500, 900}, 54, 0x123456);
}
