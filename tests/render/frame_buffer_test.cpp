#include "render/frame_buffer.h"

#include "support/picture.h"
#include "support/source_path.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <vector>

constexpr Pixel kBack{0x102030}, kFill{0xABCDEF};
constexpr Pixel kBoxFill{0x211B18}, kLight{0x4A3E36}, kSecond{0x443B36}, kDark{0x14100D};

TEST_CASE("a rectangle fills from left and top up to right and bottom") {
    StartPicture(10, 8, kBack);
    FillRect({2, 3, 5, 7}, kFill);
    CHECK(CountOf(kFill) == 12);
    CHECK(PixelAt(2, 3) == kFill);
    CHECK(PixelAt(4, 6) == kFill);
    CHECK(PixelAt(1, 3) == kBack);
    CHECK(PixelAt(5, 3) == kBack);
    CHECK(PixelAt(2, 2) == kBack);
    CHECK(PixelAt(2, 7) == kBack);
}

TEST_CASE("an inverted or empty rectangle draws nothing") {
    StartPicture(10, 8, kBack);
    for (const Rect& rect : {Rect{5, 1, 4, 6}, Rect{1, 6, 5, 6}, Rect{1, 7, 5, 2}, Rect{3, 3, 3, 8},
                             Rect{20, 1, 30, 5}, Rect{-9, 1, -2, 5}, Rect{1, 9, 5, 12}, Rect{1, -5, 5, -1}}) {
        FillRect(rect, kFill);
    }
    CHECK(CountOf(kFill) == 0);
}

TEST_CASE("a rectangle is clipped to the buffer and not to the viewport") {
    StartPicture(10, 8, kBack);
    frameBuffer.viewport = {3, 3, 5, 5};
    FillRect({-100, -100, 2, 2}, kFill);
    CHECK(CountOf(kFill) == 4);
    FillRect({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, kFill);
    CHECK(CountOf(kFill) == 80);
}

TEST_CASE("clearing fills every pixel and makes every depth far") {
    StartPicture(7, 5);
    std::fill(frameBuffer.depth.begin(), frameBuffer.depth.end(), 0.25f);
    Clear(kFill);
    CHECK(CountOf(kFill) == 35);
    PrepareDepth({0, 0, frameBuffer.width, frameBuffer.height}, frameBuffer);
    CHECK(frameBuffer.depth == PixelValues<float>(35, 1.0f));
}

TEST_CASE("resizing to one pixel and back makes a new buffer both times, with every depth far") {
    StartPicture(40, 30, kBack);
    const int32_t made = headless.canvasesMade;
    frameBuffer.depth[5] = 0.5f;
    CHECK(EnsureSize(1, 1));
    CHECK(headless.canvasesMade == made + 1);
    PrepareDepth({0, 0, 1, 1}, frameBuffer);
    CHECK(frameBuffer.depth == PixelValues<float>(1, 1.0f));
    frameBuffer.depth[0] = 0.5f;
    CHECK(EnsureSize(40, 30));
    CHECK(headless.canvasesMade == made + 2);
    PrepareDepth({0, 0, 40, 30}, frameBuffer);
    CHECK(frameBuffer.depth == PixelValues<float>(1200, 1.0f));
    CHECK(frameBuffer.viewport == Rect{0, 0, 40, 30});
}

TEST_CASE("a frame of the same size keeps the buffer") {
    StartPicture(40, 30);
    const int32_t made = headless.canvasesMade;
    CHECK(EnsureSize(40, 30));
    CHECK(headless.canvasesMade == made);
}

TEST_CASE("a minimised window keeps the old buffer and its picture") {
    StartPicture(40, 30, kBack);
    for (auto [width, height] : {std::pair{0, 0}, {0, 30}, {40, 0}, {-5, 7}})
        CHECK(EnsureSize(width, height));
    CHECK(frameBuffer.width == 40);
    CHECK(frameBuffer.height == 30);
    CHECK(CountOf(kBack) == 1200);
}

TEST_CASE("without memory for the pixels every primitive draws nothing, and the next frame tries again") {
    StartPicture(8, 8);
    headless.canvasFails = true;
    CHECK_FALSE(EnsureSize(9, 9));
    Clear(kFill);
    FillRect({0, 0, 9, 9}, kFill);
    DrawText(0, 0, L"unseen", TextColor{0}, 13, 400);
    DrawImage(0, {0, 0, 9, 9});
    Present();
    CHECK(headless.texts.empty());
    CHECK(headless.presents == 0);
    headless.canvasFails = false;
    CHECK(EnsureSize(9, 9));
    CHECK(frameBuffer.depth.size() == 81);
}

TEST_CASE("before any size is known there is nothing to draw into") {
    headless = HeadlessPlatform{};
    ReleaseFrameBuffer();
    CHECK_FALSE(EnsureSize(0, 0));
}

TEST_CASE("text reaches the system with its place, colour, height and weight unchanged") {
    StartPicture(50, 20);
    DrawText(3, 4, L"Ahoj", TextColor{0x78E2FF}, 16, 600);
    REQUIRE(headless.texts.size() == 1);
    CHECK(headless.texts[0] == DrawnText{3, 4, L"Ahoj", TextColor{0x78E2FF}, 16, 600});
}

TEST_CASE("a released frame buffer is like one that never had a size") {
    StartPicture(50, 20);
    frameBuffer.viewport = {1, 2, 3, 4};
    DrawText(0, 0, L"a", TextColor{0}, 13, 400);
    ReleaseFrameBuffer();
    CHECK(frameBuffer.pixels == nullptr);
    CHECK(frameBuffer.width == 0);
    CHECK(frameBuffer.height == 0);
    CHECK(frameBuffer.depth.empty());
    CHECK(frameBuffer.viewport == Rect{});
    CHECK_FALSE(frameBuffer.systemDrew);
    CHECK(headless.pixels.empty());
}

TEST_CASE("what the system drew is finished before the program touches the pixels, and only then") {
    StartPicture(50, 20);
    CHECK(headless.flushes == 0);
    DrawText(0, 0, L"a", TextColor{0}, 13, 400);
    DrawText(0, 0, L"b", TextColor{0}, 13, 400);
    CHECK(headless.flushes == 0);
    FillRect({0, 0, 1, 1}, kFill);
    CHECK(headless.flushes == 1);
    FillRect({0, 0, 1, 1}, kFill);
    CHECK(headless.flushes == 1);
}

TEST_CASE("a text is finished before rows of pixels are copied over it") {
    StartPicture(50, 20);
    DrawText(0, 0, L"a", TextColor{0}, 13, 400);
    const PixelRows rows{{kFill, kFill}};
    DrawPixelRows({5, 5}, rows);
    CHECK(headless.flushes == 1);
    CHECK(PixelAt(4, 5) == kFill);
}

TEST_CASE("an image is finished before the program touches the pixels, like a text") {
    StartPicture(50, 20);
    DrawImage(LoadCanvasImage(SourcePath(L"CMakeLists.txt")), {0, 0, 9, 9});
    CHECK(headless.images.size() == 1);
    FillRect({0, 0, 1, 1}, kFill);
    CHECK(headless.flushes == 1);
}

TEST_CASE(
    "a panel box has light top and left edges, dark bottom and right ones, and a second line below the top") {
    StartPicture(12, 12, kBack);
    DrawPanelBox({1, 1, 11, 9}, kBoxFill, kLight);
    CHECK(PixelAt(5, 1) == kLight);
    CHECK(PixelAt(5, 2) == kSecond);
    CHECK(PixelAt(5, 3) == kBoxFill);
    CHECK(PixelAt(5, 8) == kDark);
    CHECK(PixelAt(1, 1) == kLight);
    CHECK(PixelAt(1, 2) == kLight);  // the left column is drawn after the lines
    CHECK(PixelAt(1, 8) == kLight);
    CHECK(PixelAt(10, 1) == kDark);
    CHECK(PixelAt(10, 8) == kDark);
    CHECK(CountOf(kBack) == 12 * 12 - 80);
}

TEST_CASE("where the edges of a small panel box meet, the one drawn last is visible") {
    // In the order top, second line, bottom, left, right. The second line of a box one pixel high lies below
    // it.
    struct {
        Rect box;
        std::vector<Pixel> column, row;  // down its middle and along its first row
    } cases[] = {
        {{1, 1, 6, 3}, {kLight, kDark}, {kLight, kLight, kLight, kLight, kDark}},
        {{1, 1, 6, 2}, {kDark, kSecond}, {kLight, kDark, kDark, kDark, kDark}},
        {{1, 1, 2, 6}, {kDark, kDark, kDark, kDark, kDark}, {kDark}},
        {{1, 1, 3, 6}, {kDark, kDark, kDark, kDark, kDark}, {kLight, kDark}},
    };
    for (const auto& [box, column, row] : cases) {
        StartPicture(12, 12, kBack);
        DrawPanelBox(box, kBoxFill, kLight);
        const int32_t middle = (box.left + box.right) / 2;
        for (size_t i = 0; i < column.size(); ++i) {
            CHECK(PixelAt(middle, box.top + static_cast<int32_t>(i)) == column[i]);
        }
        for (size_t i = 0; i < row.size(); ++i) {
            CHECK(PixelAt(box.left + static_cast<int32_t>(i), box.top) == row[i]);
        }
        CHECK(PixelAt(middle, box.top + static_cast<int32_t>(column.size())) == kBack);
    }
}
