#include "editor/panel_frames.h"

#include "state/editor_state.h"
#include "support/capture.h"
#include "support/gestures.h"
#include "support/picture.h"

#include "doctest/doctest.h"

constexpr Pixel kBack{0x102030};

static EditorLayout StartFrames(int32_t width, int32_t height) {
    editorState = EditorState{};
    StartPicture(width, height, kBack);
    return LayoutEditor(editorState.panels, width, height);
}

TEST_CASE("the top bar is 42 pixels high with light edges above and left, dark ones below and right") {
    DrawPanelFrames(StartFrames(1360, 820));
    CHECK(PixelAt(700, 0) == Pixel{0x4A3E36});
    CHECK(PixelAt(700, 1) == Pixel{0x443B36});
    CHECK(PixelAt(700, 2) == Pixel{0x1F1A17});
    CHECK(PixelAt(700, 40) == Pixel{0x1F1A17});
    CHECK(PixelAt(700, 41) == Pixel{0x14100D});
    CHECK(PixelAt(700, 42) == kBack);  // the viewport is drawn by others
    CHECK(PixelAt(0, 41) == Pixel{0x4A3E36});
    CHECK(PixelAt(1359, 0) == Pixel{0x14100D});
}

TEST_CASE("the three panels have their own fills and the same edges") {
    DrawPanelFrames(StartFrames(1360, 820));
    struct {
        int32_t left, top, bottom;
        Pixel fill;
    } panels[] = {
        {0, 42, 688, Pixel{0x251F1C}}, {1040, 42, 688, Pixel{0x251F1C}}, {0, 688, 820, Pixel{0x211B18}}};
    for (const auto& [left, top, bottom, fill] : panels) {
        CAPTURE(left);
        CAPTURE(top);
        const int32_t x = left + 100;
        CHECK(PixelAt(x, top + 1) == Pixel{0x443B36});
        CHECK(PixelAt(x, top + 2) == fill);
        CHECK(PixelAt(x, bottom - 3) == fill);
        if (bottom == 820) CHECK(PixelAt(x, 819) == Pixel{0x14100D});
    }
    CHECK(PixelAt(100, 42) == Pixel{0x4A3E36});
    CHECK(PixelAt(1140, 42) == Pixel{0x4A3E36});
    CHECK(PixelAt(0, 300) == Pixel{0x4A3E36});
    CHECK(PixelAt(0, 700) == Pixel{0x4A3E36});
    CHECK(PixelAt(1359, 300) == Pixel{0x14100D});
    CHECK(PixelAt(1359, 700) == Pixel{0x14100D});
}

TEST_CASE("a splitter is a line of two pixels over the edge between two panels") {
    DrawPanelFrames(StartFrames(1360, 820));
    const Pixel line{0x544941};
    CHECK(PixelAt(228, 300) == Pixel{0x251F1C});
    CHECK(PixelAt(229, 300) == line);
    CHECK(PixelAt(230, 300) == line);
    CHECK(PixelAt(231, 300) == kBack);
    CHECK(PixelAt(1038, 300) == kBack);
    CHECK(PixelAt(1039, 300) == line);
    CHECK(PixelAt(1040, 300) == line);
    CHECK(PixelAt(1041, 300) == Pixel{0x251F1C});
    CHECK(PixelAt(600, 686) == kBack);
    CHECK(PixelAt(600, 687) == line);
    CHECK(PixelAt(600, 688) == line);
    CHECK(PixelAt(600, 689) == Pixel{0x443B36});
    CHECK(PixelAt(0, 687) == line);
    CHECK(PixelAt(1359, 688) == line);
    CHECK(PixelAt(229, 42) == line);
    CHECK(PixelAt(229, 41) == Pixel{0x14100D});
}

TEST_CASE("the splitter that is dragged has the accent colour, and only that one") {
    const Point places[] = {{230, 300}, {1040, 300}, {600, 688}};
    for (int32_t edge = 0; edge <= 3; ++edge) {
        const EditorLayout layout = StartFrames(1360, 820);
        if (edge > 0) Hold<PanelResize>({.edge = static_cast<PanelEdge>(edge - 1)});
        DrawPanelFrames(layout);
        for (int32_t i = 0; i < 3; ++i) {
            CAPTURE(edge);
            CAPTURE(i);
            CHECK(PixelAt(places[i].x, places[i].y) == (edge == i + 1 ? Pixel{0xE6AA50} : Pixel{0x544941}));
        }
    }
}

TEST_CASE("a window too narrow for side panels keeps their splitters at its sides") {
    editorState = EditorState{};
    StartPicture(200, 300, kBack);
    DrawPanelFrames(LayoutEditor(FitPanelsToWindow({}, 200, 300), 200, 300));
    CHECK(PixelAt(0, 100) == Pixel{0x544941});
    CHECK(PixelAt(1, 100) == kBack);
    CHECK(PixelAt(198, 100) == kBack);
    CHECK(PixelAt(199, 100) == Pixel{0x544941});
}

TEST_CASE("the frames of a window of any size stay within it") {
    const struct {
        int32_t width, height;
    } windows[] = {{1, 1}, {1, 400}, {400, 1}, {50, 50}, {300, 200}, {4000, 3000}};
    for (const auto& [width, height] : windows) DrawPanelFrames(StartFrames(width, height));
    CHECK(PixelAt(3999, 2999) == Pixel{0x14100D});
}
