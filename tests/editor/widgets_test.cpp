#include "editor/widgets.h"

#include "support/capture.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <array>
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
    const auto [arrow, remove] = DrawSectionHeader(20, 10, 300, L"Rigidbody", true, true);
    CHECK(arrow == Rect{24, 12, 42, 34});
    CHECK(remove == Rect{44, 12, 68, 34});
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
    CHECK(DrawValueRow(10, 20, L"Mass", L"1.50") == Rect{130, 18, 296, 42});  // two more rows can be clicked
    CheckValueBox({130, 18, 296, 40});
    CHECK(headless.texts == std::vector<DrawnText>{{20, 20, L"Mass", TextColor{0xBEB8B2}, 14, 400},
                                                   {138, 21, L"1.50", TextColor{0xDEDAD6}, 13, 400}});
}

// The headless text output gives a character of this height 6 pixels: 26 of them reach 156 pixels, to the
// bevel.
TEST_CASE("a value row cuts its value at the edge of the box, and a path in its middle") {
    const std::wstring fits(26, L'n'), tooLong(27, L'n');
    StartPicture(340, 60, kBack);
    DrawValueRow(10, 20, L"", fits);
    CHECK(headless.texts.back().text == fits);
    DrawValueRow(10, 20, L"", tooLong);
    CHECK(headless.texts.back().text == std::wstring(23, L'n') + L"...");
    CHECK(ValueRowPath(L"Files\\Prefabs\\Gold.prefab") == L"Files\\Prefabs\\Gold.prefab");  // 25
    // 23 units beside the dots: 12 from the start, 11 from the end.
    CHECK(ValueRowPath(L"Files\\Prefabs\\Golden Coin.prefab") == L"Files\\Prefab...Coin.prefab");
}

TEST_CASE("a vector row shows three components with two decimals, each in a box of its own") {
    StartPicture(340, 60, kBack);
    const std::array<Rect, 3> boxes = DrawVectorRow(10, 20, L"Position", {1, -2.5f, 1234.567f});
    CHECK(boxes[0] == Rect{126, 18, 170, 40});
    CHECK(boxes[1] == Rect{187, 18, 231, 40});
    CHECK(boxes[2] == Rect{248, 18, 292, 40});
    for (const Rect& box : boxes) CheckValueBox(box);
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

TEST_CASE("a slider is filled up to its value, where the knob stands") {
    StartPicture(340, 60, kBack);
    CHECK(DrawSliderRow(10, 20, L"Gloss", 0.5f) == Rect{98, 21, 254, 40});
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
    DrawButton({-5, -5, 25, 15}, Pixel{1}, Pixel{2}, true);
    DrawTab({15, 5, 200, 50}, L"x", true);
    DrawSectionHeader(-10, -10, 500, L"x", true, true);
    DrawValueRow(-130, 0, L"x", L"y");
    DrawVectorRow(5, 9, L"x", {});
    DrawSliderRow(-90, -8, L"x", 0.5f);
}
