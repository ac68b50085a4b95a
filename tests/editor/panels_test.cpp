#include "editor/panels.h"

#include "state/editor_state.h"
#include "support/capture.h"
#include "support/gestures.h"
#include "support/picture.h"

#include "doctest/doctest.h"
#include "platform/canvas.h"

constexpr Pixel kBack{0x102030};

static EditorLayout StartFrames(int32_t width, int32_t height) {
    editorState = EditorState{};
    StartPicture(width, height, kBack);
    return LayoutEditor(editorState.panels, width, height);
}

static void DrawFrames(const EditorLayout& layout) {
    DrawPanelFrames(layout);
    DrawBottomFrame(layout);
}

TEST_CASE("the top bar is 42 pixels high with light edges above and left, dark ones below and right") {
    DrawFrames(StartFrames(1360, 820));
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
    DrawFrames(StartFrames(1360, 820));
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
    DrawFrames(StartFrames(1360, 820));
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
        DrawFrames(layout);
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
    DrawFrames(LayoutEditor(FitPanelsToWindow({}, 200, 300), 200, 300));
    CHECK(PixelAt(0, 100) == Pixel{0x544941});
    CHECK(PixelAt(1, 100) == kBack);
    CHECK(PixelAt(198, 100) == kBack);
    CHECK(PixelAt(199, 100) == Pixel{0x544941});
}

TEST_CASE("the frames of a window of any size stay within it") {
    const struct {
        int32_t width, height;
    } windows[] = {{1, 1}, {1, 400}, {400, 1}, {50, 50}, {300, 200}, {4000, 3000}};
    for (const auto& [width, height] : windows) DrawFrames(StartFrames(width, height));
    CHECK(PixelAt(3999, 2999) == Pixel{0x14100D});
}

// The bottom panel, in a window of 800 x 820.

static EditorLayout StartPanel(BottomTab page) {
    editorState = EditorState{};
    editorState.bottomTab = page;
    StartPicture(800, 820, kBack);
    return LayoutEditor(editorState.panels, 800, 820);  // the panel begins at 688
}

TEST_CASE("the Console page shows the last message and one line of help") {
    const EditorLayout layout = StartPanel(BottomTab::Console);
    editorState.statusMessage = L"Scena ulozena.";
    DrawBottomPanel(layout);
    CHECK(headless.texts ==
          std::vector<DrawnText>{
              {24, 702, L"Files", TextColor{0xE6DED6}, 14, 600},
              {120, 702, L"Console", TextColor{0xFCF8F4}, 14, 600},
              {18, 738, L"Scena ulozena.", TextColor{0xD2C6BE}, 15, 400},
              {18, 766, L"Mys: tahni za hrany panelu pro resize, leve tahni za barevnou osu gizma pro posun.",
               TextColor{0xD2C6BE}, 15, 400},
          });
    CHECK(PixelAt(60, 710) == Pixel{0x342C27});
    CHECK(PixelAt(112, 710) == Pixel{0x5CD2FF});
    CHECK(PixelAt(180, 710) == Pixel{0x805C30});
    CHECK(CountOf(kBack) == 800 * 820 - (90 + 104) * 28);  // nothing runs on below the lines
}

TEST_CASE("the Files page shows the message beside the tabs") {
    const EditorLayout layout = StartPanel(BottomTab::Files);
    editorState.statusMessage = L"Scena ulozena.";
    DrawBottomPanel(layout);
    CHECK(headless.texts ==
          std::vector<DrawnText>{{24, 702, L"Files", TextColor{0xFCF8F4}, 14, 600},
                                 {120, 702, L"Console", TextColor{0xE6DED6}, 14, 600},
                                 {234, 706, L"Scena ulozena.", TextColor{0xD2C6BE}, 13, 400}});
    CHECK(PixelAt(16, 710) == Pixel{0x5CD2FF});
    CHECK(PixelAt(60, 698) == Pixel{0xE6AA50});
    CHECK(PixelAt(60, 710) == Pixel{0x805C30});
    CHECK(PixelAt(105, 710) == Pixel{0x14100D});
    CHECK(PixelAt(106, 710) == kBack);
    CHECK(PixelAt(112, 710) == Pixel{0x564A42});
    CHECK(PixelAt(215, 710) == Pixel{0x14100D});
    CHECK(PixelAt(216, 710) == kBack);
    CHECK(PixelAt(60, 697) == kBack);
    CHECK(PixelAt(60, 725) == Pixel{0x14100D});
    CHECK(PixelAt(60, 726) == kBack);
}

TEST_CASE("a message beside the tabs ends 16 pixels before the Inspector, shortened in its middle") {
    EditorLayout layout = StartPanel(BottomTab::Files);
    const int32_t letter = MeasureCanvasText(L"a", 13, 400);
    const std::wstring longest = std::wstring(20, L'a');
    for (const int32_t spare : {0, -1}) {
        headless.texts.clear();
        layout.inspectorLeft = 234 + 20 * letter + 16 + spare;
        editorState.statusMessage = longest;
        DrawBottomPanel(layout);
        REQUIRE(headless.texts.size() == 3);
        const std::wstring shortened = std::wstring(8, L'a') + L"..." + std::wstring(8, L'a');
        CHECK(headless.texts[2].text == (spare == 0 ? longest : shortened));
    }
    for (const int32_t room : {1, 0}) {
        headless.texts.clear();
        layout.inspectorLeft = 250 + room;
        DrawBottomPanel(layout);
        CHECK(headless.texts.size() == (room == 1 ? 3 : 2));
    }
}

TEST_CASE("each line of the Console lies on a strip of the panel's colour, over whatever runs on below it") {
    const EditorLayout layout = StartPanel(BottomTab::Console);
    editorState.hierarchyRows = {{.y = 900}};
    editorState.statusMessage = L"aaaaaaaaaa";
    DrawBottomPanel(layout);
    const int32_t right = 18 + MeasureCanvasText(L"aaaaaaaaaa", 15, 400);
    const Pixel fill{0x211B18};
    CHECK(PixelAt(18, 734) == fill);
    CHECK(PixelAt(right - 1, 757) == fill);
    CHECK(PixelAt(17, 740) == kBack);
    CHECK(PixelAt(right, 740) == kBack);
    CHECK(PixelAt(18, 733) == kBack);
    CHECK(PixelAt(18, 758) == kBack);
    CHECK(PixelAt(18, 762) == fill);  // the line of help
    CHECK(PixelAt(18, 785) == fill);
    CHECK(PixelAt(18, 786) == kBack);
}

TEST_CASE("a line has its strip from where a row, or the mark of a drop below it, reaches into it") {
    // A row covers 22 pixels below its y, and a mark two more; the strips begin at 734 and 762.
    for (const auto& [y, strips] : {std::pair{710, 0}, {711, 1}, {738, 1}, {739, 2}}) {
        CAPTURE(y);
        const EditorLayout layout = StartPanel(BottomTab::Console);
        editorState.hierarchyRows = {{.y = 92}, {.y = y}};
        editorState.statusMessage = L"a";
        DrawBottomPanel(layout);
        CHECK((PixelAt(18, 740) != kBack) == (strips > 0));
        CHECK((PixelAt(18, 770) != kBack) == (strips > 1));
    }
}

TEST_CASE("a strip leaves the edges of the bottom panel alone") {
    const EditorLayout layout = StartPanel(BottomTab::Console);
    FillBottomStrip({-50, 600, 900, 900}, layout);
    CHECK(PixelAt(1, 690) == Pixel{0x211B18});
    CHECK(PixelAt(798, 818) == Pixel{0x211B18});
    CHECK(CountOf(kBack) == 800 * 820 - 798 * 129);
}

TEST_CASE("a click on a tab turns to its page and says so") {
    const EditorLayout layout = StartPanel(BottomTab::Console);
    CHECK(ClickBottomTabs({16, 698}, layout));
    CHECK(editorState.bottomTab == BottomTab::Files);
    CHECK(editorState.statusMessage == L"Prepnuto na Files.");
    CHECK(ClickBottomTabs({215, 725}, layout));
    CHECK(editorState.bottomTab == BottomTab::Console);
    CHECK(editorState.statusMessage == L"Prepnuto na Console.");
    CHECK(ClickBottomTabs({112, 698}, layout));
    CHECK(editorState.bottomTab == BottomTab::Console);
    CHECK(ClickBottomTabs({105, 725}, layout));
    CHECK(editorState.bottomTab == BottomTab::Files);
}

TEST_CASE("a click beside the tabs is not taken") {
    const EditorLayout layout = StartPanel(BottomTab::Console);
    const std::wstring message = editorState.statusMessage;
    for (const Point p : {Point{15, 710}, Point{106, 710}, Point{111, 710}, Point{216, 710}, Point{50, 697},
                          Point{50, 726}}) {
        CHECK_FALSE(ClickBottomTabs(p, layout));
    }
    CHECK(editorState.bottomTab == BottomTab::Console);
    CHECK(editorState.statusMessage == message);
}
