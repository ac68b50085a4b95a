#include "editor/widgets.h"

#include "support/capture.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <vector>

constexpr Pixel kBack{0x102030};

TEST_CASE("a button has its edge colour on top and left and dark edges on the bottom and the right") {
    StartPicture(40, 30, kBack);
    DrawButton({10, 5, 30, 15}, Pixel{0x36312F}, Pixel{0x494340}, false);
    CHECK(PixelAt(20, 10) == Pixel{0x36312F});
    CHECK(PixelAt(20, 5) == Pixel{0x494340});
    CHECK(PixelAt(20, 6) == Pixel{0x36312F});  // no second line
    CHECK(PixelAt(20, 14) == Pixel{0x161413});
    CHECK(PixelAt(10, 5) == Pixel{0x494340});
    CHECK(PixelAt(10, 14) == Pixel{0x494340});  // the left column comes after the bottom line
    CHECK(PixelAt(29, 5) == Pixel{0x161413});   // and the right column after the top line
    CHECK(PixelAt(29, 10) == Pixel{0x161413});
    CHECK(CountOf(kBack) == 40 * 30 - 20 * 10);
    CHECK(headless.texts.empty());
}

TEST_CASE("a button's shadow lies two pixels to its lower right, a darker one four and five") {
    StartPicture(40, 30, kBack);
    DrawButton({10, 5, 30, 15}, Pixel{0xE18E43}, Pixel{0xD2792D}, true);
    CHECK(PixelAt(20, 10) == Pixel{0xE18E43});
    CHECK(PixelAt(31, 16) == Pixel{0x181514});
    CHECK(PixelAt(30, 7) == Pixel{0x181514});
    CHECK(PixelAt(30, 6) == kBack);
    CHECK(PixelAt(12, 16) == Pixel{0x181514});
    CHECK(PixelAt(11, 16) == kBack);
    CHECK(PixelAt(33, 19) == Pixel{0x131110});
    CHECK(PixelAt(33, 10) == Pixel{0x131110});
    CHECK(PixelAt(33, 9) == kBack);
    CHECK(PixelAt(34, 19) == kBack);
    CHECK(PixelAt(33, 20) == kBack);
}

TEST_CASE("the active tab stands out by fill, edges, a mark at its left and a brighter title") {
    StartPicture(120, 60, kBack);
    DrawTab({16, 10, 106, 38}, L"Files", true);
    CHECK(PixelAt(50, 20) == Pixel{0x805C30});
    CHECK(PixelAt(50, 10) == Pixel{0xE6AA50});
    CHECK(PixelAt(50, 11) == Pixel{0x443B36});
    CHECK(PixelAt(50, 37) == Pixel{0x14100D});
    CHECK(PixelAt(105, 20) == Pixel{0x14100D});
    for (int32_t x = 16; x < 19; ++x) CHECK(PixelAt(x, 20) == Pixel{0x5CD2FF});
    CHECK(PixelAt(19, 20) == Pixel{0x805C30});
    CHECK(headless.texts == std::vector<DrawnText>{{24, 14, L"Files", TextColor{0xFCF8F4}, 14, 600}});
}

TEST_CASE("an idle tab has no mark") {
    StartPicture(120, 60, kBack);
    DrawTab({16, 10, 106, 38}, L"Console", false);
    CHECK(PixelAt(50, 20) == Pixel{0x342C27});
    CHECK(PixelAt(50, 10) == Pixel{0x564A42});
    CHECK(PixelAt(16, 20) == Pixel{0x564A42});
    CHECK(PixelAt(17, 20) == Pixel{0x342C27});
    CHECK(PixelAt(50, 11) == Pixel{0x443B36});
    CHECK(PixelAt(50, 37) == Pixel{0x14100D});
    CHECK(PixelAt(105, 20) == Pixel{0x14100D});
    CHECK(CountOf(kBack) == 120 * 60 - 90 * 28);
    CHECK(headless.texts == std::vector<DrawnText>{{24, 14, L"Console", TextColor{0xE6DED6}, 14, 600}});
}

TEST_CASE("a section header shows whether its section is open and its component enabled") {
    StartPicture(340, 60, kBack);
    DrawSectionHeader(20, 10, 300, L"Rigidbody", true, true);
    CHECK(PixelAt(100, 10) == Pixel{0x312924});
    CHECK(PixelAt(100, 34) == Pixel{0x312924});
    CHECK(PixelAt(100, 35) == Pixel{0x161210});
    CHECK(PixelAt(299, 20) == Pixel{0x312924});
    for (int32_t x = 20; x < 23; ++x) CHECK(PixelAt(x, 20) == Pixel{0x86B04C});
    CHECK(PixelAt(23, 20) == Pixel{0x312924});
    CHECK(CountOf(kBack) == 340 * 60 - 280 * 26);
    CHECK(headless.texts == std::vector<DrawnText>{
                                {28, 15, L"v", TextColor{0xD7CFC6}, 13, 600},
                                {44, 15, L"[x]", TextColor{0xD2E6D2}, 13, 600},
                                {74, 14, L"Rigidbody", TextColor{0xE0E2E0}, 15, 600},
                                {252, 15, L"?", TextColor{0xD7CFC6}, 13, 600},
                                {276, 15, L":", TextColor{0xD7CFC6}, 13, 600},
                            });
}

TEST_CASE("a closed section points right, and a disabled component is dull and unchecked") {
    StartPicture(340, 60, kBack);
    DrawSectionHeader(20, 10, 300, L"Shape", false, false);
    CHECK(PixelAt(20, 20) == Pixel{0x6C625C});
    REQUIRE(headless.texts.size() == 5);
    CHECK(headless.texts[0] == DrawnText{28, 15, L">", TextColor{0xD7CFC6}, 13, 600});
    CHECK(headless.texts[1] == DrawnText{44, 15, L"[ ]", TextColor{0x9C9691}, 13, 600});
}

// Checks the box that shows a value, whose top left corner is given.
static void CheckValueBox(const Rect& box) {
    CHECK(PixelAt(box.left + 5, box.top) == Pixel{0x4C423A});
    CHECK(PixelAt(box.left + 5, box.top + 1) == Pixel{0x443B36});
    CHECK(PixelAt(box.left + 5, box.top + 5) == Pixel{0x251F1B});
    CHECK(PixelAt(box.left + 5, box.bottom - 1) == Pixel{0x14100D});
    CHECK(PixelAt(box.left, box.top + 5) == Pixel{0x4C423A});
    CHECK(PixelAt(box.right - 1, box.top + 5) == Pixel{0x14100D});
    CHECK(PixelAt(box.left - 1, box.top + 5) == kBack);
    CHECK(PixelAt(box.right, box.top + 5) == kBack);
    CHECK(PixelAt(box.left + 5, box.top - 1) == kBack);
    CHECK(PixelAt(box.left + 5, box.bottom) == kBack);
}

TEST_CASE("a value row is a label and a box with the value") {
    StartPicture(340, 60, kBack);
    DrawValueRow(10, 20, L"Mass", L"1.50");
    CheckValueBox({130, 18, 296, 40});
    CHECK(headless.texts == std::vector<DrawnText>{{20, 20, L"Mass", TextColor{0xBEB8B2}, 14, 400},
                                                   {138, 21, L"1.50", TextColor{0xDEDAD6}, 13, 400}});
}

TEST_CASE("a vector row shows three components with two decimals, each box a zone of its own") {
    StartPicture(340, 60, kBack);
    HitZoneList zones{{{1, 2, 3, 4}, 9}};
    DrawVectorRow(10, 20, L"Position", {1, -2.5f, 1234.567f}, 20, zones);
    const Rect boxes[] = {{126, 18, 170, 40}, {187, 18, 231, 40}, {248, 18, 292, 40}};
    REQUIRE(zones.size() == 4);
    CHECK(zones[0].action == 9);
    for (int32_t i = 0; i < 3; ++i) {
        CheckValueBox(boxes[i]);
        CHECK(zones[static_cast<size_t>(i) + 1].rect == boxes[i]);
        CHECK(zones[static_cast<size_t>(i) + 1].action == 20 + i);
    }
    CHECK(headless.texts == std::vector<DrawnText>{
                                {20, 20, L"Position", TextColor{0xBEB8B2}, 14, 400},
                                {112, 20, L"X", TextColor{0xCAC4BE}, 13, 600},
                                {130, 21, L"1.00", TextColor{0xDEDAD6}, 13, 400},
                                {173, 20, L"Y", TextColor{0xCAC4BE}, 13, 600},
                                {191, 21, L"-2.50", TextColor{0xDEDAD6}, 13, 400},
                                {234, 20, L"Z", TextColor{0xCAC4BE}, 13, 600},
                                {252, 21, L"1234.57", TextColor{0xDEDAD6}, 13, 400},
                            });
}

TEST_CASE("a vector row without a first action registers nothing") {
    StartPicture(340, 60, kBack);
    HitZoneList zones;
    DrawVectorRow(10, 20, L"Velocity", {}, -1, zones);
    CHECK(zones.empty());
    DrawVectorRow(10, 20, L"Velocity", {}, 0, zones);
    CHECK(zones.size() == 3);
}

TEST_CASE("a slider is filled up to its value, where the knob stands") {
    StartPicture(340, 60, kBack);
    DrawSliderRow(10, 20, L"Gloss", 0.5f);
    CHECK(PixelAt(97, 30) == kBack);
    CHECK(PixelAt(98, 30) == Pixel{0xE6AA50});
    CHECK(PixelAt(172, 30) == Pixel{0xE6AA50});
    CHECK(PixelAt(176, 30) == Pixel{0xFCF8F4});  // 98 + 78
    CHECK(PixelAt(180, 30) == Pixel{0x413832});
    CHECK(PixelAt(253, 30) == Pixel{0x413832});
    CHECK(PixelAt(254, 30) == kBack);
    CHECK(headless.texts == std::vector<DrawnText>{{20, 20, L"Gloss", TextColor{0xBEB8B2}, 14, 400},
                                                   {262, 20, L"0.50", TextColor{0xDEDAD6}, 13, 400}});
}

TEST_CASE("a slider's filled part is truncated to whole pixels, its value limited to 0 and 1") {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct {
        float value;
        int32_t end;  // of the filled part
        const wchar_t* text;
    } cases[] = {{0, 98, L"0.00"},  {1, 254, L"1.00"}, {0.999f, 253, L"1.00"}, {0.126f, 117, L"0.13"},
                 {-3, 98, L"0.00"}, {7, 254, L"1.00"}, {nan, 98, L"0.00"}};
    for (const auto& [value, end, text] : cases) {
        StartPicture(340, 60, kBack);
        DrawSliderRow(10, 20, L"", value);
        CAPTURE(value);
        CHECK(PixelAt(end - 3, 30) == Pixel{0xFCF8F4});  // the knob's six columns
        CHECK(PixelAt(end + 2, 30) == Pixel{0xFCF8F4});
        CHECK(PixelAt(end - 4, 30) != Pixel{0xFCF8F4});
        CHECK(PixelAt(end + 3, 30) != Pixel{0xFCF8F4});
        CHECK(CountOf(Pixel{0x413832}) == 6 * (254 - std::min(end + 3, 254)));
        REQUIRE(headless.texts.size() == 2);
        CHECK(headless.texts[1].text == text);
    }
}

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

TEST_CASE("a bar's fraction is 0 at its left end and one pixel short of 1 on its last pixel") {
    const Rect bar{100, 0, 256, 20};
    CHECK(BarFraction(100, bar) == 0);
    CHECK(BarFraction(178, bar) == 0.5f);
    CHECK(BarFraction(255, bar) == 155.0f / 156.0f);
    CHECK(BarFraction(256, bar) == 1);
    CHECK(BarFraction(99, bar) == 0);
    CHECK(BarFraction(5000, bar) == 1);
}

TEST_CASE("a bar narrower than two pixels counts as one pixel wide") {
    for (const Rect& bar : {Rect{10, 0, 11, 5}, Rect{10, 0, 10, 5}, Rect{10, 0, -40, 5}}) {
        CHECK(BarFraction(10, bar) == 0);
        CHECK(BarFraction(11, bar) == 1);
    }
    CHECK(BarFraction(11, {10, 0, 12, 5}) == 0.5f);
}

TEST_CASE("widgets beyond the window's edges are cut and nothing more") {
    StartPicture(20, 10, kBack);
    HitZoneList zones;
    DrawButton({-5, -5, 25, 15}, Pixel{1}, Pixel{2}, true);
    DrawTab({15, 5, 200, 50}, L"x", true);
    DrawSectionHeader(-10, -10, 500, L"x", true, true);
    DrawValueRow(-130, 0, L"x", L"y");
    DrawVectorRow(5, 9, L"x", {}, 1, zones);
    DrawSliderRow(-90, -8, L"x", 0.5f);
    DrawColorWheel({0, 0}, 54, 0x123456);
    DrawColorWheel({-500, 900}, 54, 0x123456);
    CHECK(zones.size() == 3);
}
