#include "editor/bottom_panel.h"

#include "state/editor_state.h"
#include "support/picture.h"

#include "doctest/doctest.h"

constexpr Pixel kBack{0x102030};

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
    CHECK(CountOf(kBack) == 800 * 820 - (90 + 104) * 28);
}

TEST_CASE("the Files page shows no message") {
    DrawBottomPanel(StartPanel(BottomTab::Files));
    CHECK(headless.texts == std::vector<DrawnText>{{24, 702, L"Files", TextColor{0xFCF8F4}, 14, 600},
                                                   {120, 702, L"Console", TextColor{0xE6DED6}, 14, 600}});
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
