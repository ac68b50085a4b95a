#include "viewport/viewport_overlay.h"

#include "platform/files.h"
#include "render/raster/camera.h"
#include "support/picture.h"
#include "support/source_path.h"

#include "doctest/doctest.h"

#include <cmath>

static Matrix4 LookingFrom(const CameraPose& camera) {
    return MultiplyMatrix(ProjectionMatrix(frameBuffer.width, frameBuffer.height), ViewMatrix(camera));
}

static CanvasImage SomeImage() {
    const CanvasImage image = LoadCanvasImage(SourcePath(L"CMakeLists.txt"));
    REQUIRE(image >= 0);
    return image;
}

TEST_CASE("the grid draws nineteen lines along each axis, those through the middle in their own colour") {
    StartPicture(1200, 1000);
    const Matrix4 vp = LookingFrom({{0, 20, -25}, 0, -0.8f});
    DrawGrid(vp);
    // Where lines end, and only the line through the middle has its colour.
    const auto at = [&vp](Vec3 world) {
        Point pixel;
        REQUIRE(ProjectToPixel(vp, world, frameBuffer.viewport, pixel));
        return PixelAt(pixel.x, pixel.y);
    };
    for (int32_t i = -9; i <= 9; ++i) {
        const auto line = static_cast<float>(i);
        const Pixel color = i == 0 ? Pixel{0x7A875D} : Pixel{0x5B5E46};
        CAPTURE(i);
        CHECK(at({line, -1.02f, 11}) == color);  // beyond z = 9 only the lines along z go on
        if (i != 0) CHECK(at({-9, -1.01f, line}) == color);
    }
    CHECK(at({-9, -1.01f, 0}) == Pixel{0x7A875D});
    CHECK(at({9, -1.01f, 0}) == Pixel{0x7A875D});
    CHECK(at({9, -1.02f, -9}) == Pixel{0x5B5E46});
}

TEST_CASE("the grid's lines stop at -9 and 9 across, at -9 and 11 ahead") {
    StartPicture(1200, 1000);
    const Matrix4 vp = LookingFrom({{0, 20, -25}, 0, -0.8f});
    DrawGrid(vp);
    // Half a unit beyond the ends, on the lines and between them.
    for (int32_t i = -10; i <= 12; ++i) {
        const auto line = static_cast<float>(i);
        for (const Vec3& beyond :
             {Vec3{line, -1.02f, 11.5f}, Vec3{line, -1.02f, -9.5f}, Vec3{9.5f, -1.01f, line},
              Vec3{-9.5f, -1.01f, line}, Vec3{10, -1.02f, line + 0.5f}, Vec3{-10, -1.02f, line + 0.5f}}) {
            Point pixel;
            REQUIRE(ProjectToPixel(vp, beyond, frameBuffer.viewport, pixel));
            CHECK(PixelAt(pixel.x, pixel.y) == Pixel{0});
        }
        // Across there is no line at z = 10.
        if (i >= -9 && i < 9) {
            Point pixel;
            REQUIRE(ProjectToPixel(vp, {line + 0.5f, -1.01f, 10}, frameBuffer.viewport, pixel));
            CHECK(PixelAt(pixel.x, pixel.y) == Pixel{0});
        }
    }
}

TEST_CASE("the grid's lines along z lie at -1.02, those along x at -1.01") {
    // The eye looks along z from between both heights: those above it lie above the middle row.
    StartPicture(1200, 1000);
    DrawGrid(LookingFrom({{0, -1.015f, -9.5f}, 0, 0}));
    // The first line across is half a unit away, 0.005 / 0.5 * 500 / tan 35 degrees = 7.14 pixels above.
    for (int32_t x = 0; x < 1200; ++x) CHECK(PixelAt(x, 492) == Pixel{0x5B5E46});
    // The lines ahead begin there as far below.
    CHECK(PixelAt(600, 507) == Pixel{0x7A875D});
    for (int32_t y = 0; y < 1000; ++y) {
        if (y >= 492 && y <= 507) continue;
        for (int32_t x = 0; x < 1200; ++x) REQUIRE(PixelAt(x, y) == Pixel{0});
    }
}

TEST_CASE("a camera that looks straight up or down sees no line of the grid") {
    for (float pitch : {1.57079633f, -1.57079633f}) {
        StartPicture(101, 81);
        DrawGrid(LookingFrom({{0, 0, 0}, 0.3f, pitch}));
        // Every place lies in the middle then, and so does every line.
        CHECK(CountOf(Pixel{0}) >= 101 * 81 - 1);
    }
}

TEST_CASE("a grid line with one end behind the camera vanishes whole") {
    StartPicture(100, 80);
    DrawGrid(LookingFrom({{0, 0, 0}, 0, 0}));
    // From the middle of the grid every line along z begins behind; of those along x only the ones ahead
    // remain.
    CHECK(CountOf(Pixel{0x7A875D}) == 0);
    CHECK(CountOf(Pixel{0x5B5E46}) > 0);
    StartPicture(100, 80);
    DrawGrid(LookingFrom({{0, 0, 12}, 0, 0}));
    CHECK(CountOf(Pixel{0x5B5E46}) == 0);
}

TEST_CASE("an icon is 24 pixels around its place, or 28 within a frame of 3 when selected") {
    StartPicture(101, 81);
    const CanvasImage icon = SomeImage();
    const Matrix4 vp = LookingFrom({{0, 0, 0}, 0, 0});
    DrawObjectIcon(icon, {0, 0, 5}, vp, false);
    REQUIRE(headless.images.size() == 1);
    CHECK(headless.images[0].rect == Rect{38, 28, 62, 52});  // the middle, 50.5 and 40.5, is truncated
    CHECK(CountOf(Pixel{0x78E2FF}) == 0);

    DrawObjectIcon(icon, {0, 0, 5}, vp, true);
    REQUIRE(headless.images.size() == 2);
    CHECK(headless.images[1].rect == Rect{36, 26, 64, 54});
    CHECK(CountOf(Pixel{0x78E2FF}) == 34 * 34);
    CHECK(PixelAt(33, 23) == Pixel{0x78E2FF});
    CHECK(PixelAt(66, 56) == Pixel{0x78E2FF});
    CHECK(PixelAt(67, 57) == Pixel{0});
}

TEST_CASE("a missing icon and a place behind the camera draw nothing") {
    StartPicture(101, 81);
    const Matrix4 vp = LookingFrom({{0, 0, 0}, 0, 0});
    DrawObjectIcon(-1, {0, 0, 5}, vp, true);
    DrawObjectIcon(SomeImage(), {0, 0, -5}, vp, true);
    CHECK(headless.images.empty());
    CHECK(CountOf(Pixel{0}) == 101 * 81);
}

TEST_CASE("a text stands with its corner at its place, in weight 600 and its own colour") {
    StartPicture(101, 81);
    const Matrix4 vp = LookingFrom({{0, 0, 0}, 0, 0});
    GameObject object{.hasColor = false, .color = 0x123456, .isText = true, .text = L"Ahoj"};
    DrawTextObject(object, {0, 0, 5}, vp, false);
    object.hasColor = true;
    object.text = L"";
    DrawTextObject(object, {0, 0, 5}, vp, false);
    REQUIRE(headless.texts.size() == 2);
    CHECK(headless.texts[0] == DrawnText{50, 40, L"Ahoj", TextColor{0xFCF8F5}, 18, 600});
    CHECK(headless.texts[1] == DrawnText{50, 40, L"Text", TextColor{0x123456}, 18, 600});
    CHECK(CountOf(Pixel{0}) == 101 * 81);
}

TEST_CASE("of a text's colour only the three lower bytes count") {
    StartPicture(101, 81);
    const GameObject object{.hasColor = true, .color = 0xAB123456, .isText = true};
    DrawTextObject(object, {0, 0, 5}, LookingFrom({{0, 0, 0}, 0, 0}), false);
    REQUIRE(headless.texts.size() == 1);
    CHECK(headless.texts[0].color == TextColor{0x123456});
}

TEST_CASE("a text behind the camera is not drawn") {
    StartPicture(101, 81);
    DrawTextObject({.isText = true}, {0, 0, -5}, LookingFrom({{0, 0, 0}, 0, 0}), true);
    CHECK(headless.texts.empty());
    CHECK(CountOf(Pixel{0}) == 101 * 81);
}

TEST_CASE("a text's height is its size by its mean scale, at least 0.4, within 8 and 128 pixels") {
    struct {
        Vec3 scale;
        float size;
        int32_t height;
    } cases[] = {
        {{1, 1, 1}, 18, 18},          {{2, 2, 2}, 18, 36},   {{-1, 2, -3}, 10, 20},
        {{0.1f, 0.1f, 0.1f}, 60, 24}, {{1, 1, 1}, 7.9f, 8},  {{1, 1, 1}, 20.9f, 20},
        {{0, 0, 0}, 100, 40},         {{9, 9, 9}, 180, 128}, {{1e38f, 1e38f, 1e38f}, 180, 128},
    };
    for (const auto& [scale, size, height] : cases) {
        CHECK(TextObjectHeight({.scale = scale, .textSize = size}) == height);
    }
    CHECK(TextObjectHeight({.scale{std::nanf(""), 1, 1}}) == 8);
}

TEST_CASE("a selected text stands on a box as wide as its letters ask, within 72 and 260 pixels") {
    struct {
        std::wstring text;
        float size;
        int32_t width;
    } cases[] = {
        {L"a", 18, 72},
        {L"0123456789", 18, 10 * 18 / 2 + 18},
        {L"012345678", 19, 85 + 18},  // 171 / 2
        {std::wstring(40, L'x'), 18, 260},
    };
    for (const auto& [text, size, width] : cases) {
        StartPicture(701, 81);
        DrawTextObject({.isText = true, .text = text, .textSize = size}, {0, 0, 5},
                       LookingFrom({{0, 0, 0}, 0, 0}), true);
        // From (350 - 7, 40 - 5) to (350 + width, 40 + 9 + size), light along the top and the left, dark
        // along the bottom and the right.
        const int32_t right = 350 + width - 1, bottom = 40 + 9 + static_cast<int32_t>(size) - 1;
        CHECK(PixelAt(343, 35) == Pixel{0x56D6FF});
        CHECK(PixelAt(right - 1, 35) == Pixel{0x56D6FF});
        CHECK(PixelAt(343, bottom) == Pixel{0x56D6FF});
        CHECK(PixelAt(345, 38) == Pixel{0x312924});
        CHECK(PixelAt(344, bottom) == Pixel{0x14100D});
        CHECK(PixelAt(right, 40) == Pixel{0x14100D});
        CHECK(CountOf(Pixel{0}) == 701 * 81 - (width + 7) * (bottom + 1 - 35));
    }
}
