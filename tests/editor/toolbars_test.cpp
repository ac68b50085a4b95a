#include "editor/toolbars.h"

#include "editor/theme.h"
#include "platform/canvas.h"
#include "render/icons.h"
#include "state/editor_state.h"
#include "support/capture.h"
#include "support/picture.h"
#include "support/source_path.h"

#include "doctest/doctest.h"

#include <algorithm>

constexpr Pixel kBack{0x102030};

static EditorLayout StartBar(int32_t width = 1360) {
    editorState = EditorState{};
    icons = {};
    StartPicture(width, 100, kBack);
    return LayoutEditor(editorState.panels, width, 820);
}

static bool IsDrawn(const DrawnText& text) {
    return std::find(headless.texts.begin(), headless.texts.end(), text) != headless.texts.end();
}

static const DrawnText kTitle{44, 11, L"ZelEngine", TextColor{0xEBF2EE}, 18, 600};

TEST_CASE("in edit mode the bar shows title, mode and three buttons") {
    DrawTopBar(StartBar());
    CHECK(headless.texts == std::vector<DrawnText>{
                                kTitle,
                                {952, 16, L"Project Hub", TextColor{0xE9E5E2}, 14, 600},
                                {1070, 16, L"Ulozit projekt", TextColor{0xE9E5E2}, 14, 600},
                                {1208, 16, L"Sestavit projekt", TextColor{0xE9E5E2}, 14, 600},
                                {190, 12, L"[EDIT MODE]", TextColor{0xD2C6BE}, 16, 600},
                            });
}

TEST_CASE("in Play mode the bar says so and keeps its buttons") {
    const EditorLayout layout = StartBar();
    editorState.playMode = true;
    DrawTopBar(layout);
    CHECK(headless.texts.size() == 5);
    CHECK(IsDrawn({190, 12, L"[PLAY MODE]", TextColor{0x91DC69}, 16, 600}));
}

TEST_CASE("the three buttons at the right have the plain button's look") {
    DrawTopBar(StartBar());
    struct {
        int32_t left, right;
    } buttons[] = {{940, 1050}, {1058, 1188}, {1196, 1346}};
    int32_t pixels = 0;
    for (const auto& [left, right] : buttons) {
        CAPTURE(left);
        CHECK(PixelAt(left + 9, 20) == Pixel{0x36312F});
        CHECK(PixelAt(left, 20) == Pixel{0x494340});
        CHECK(PixelAt(left + 9, 8) == Pixel{0x494340});
        CHECK(PixelAt(right - 1, 20) == Pixel{0x161413});
        CHECK(PixelAt(left + 9, 35) == Pixel{0x161413});
        CHECK(PixelAt(left - 1, 20) == kBack);
        CHECK(PixelAt(right, 20) == kBack);
        CHECK(PixelAt(left + 9, 7) == kBack);
        CHECK(PixelAt(left + 9, 36) == kBack);  // no shadow
        pixels += (right - left) * 28;
    }
    CHECK(CountOf(kBack) == 1360 * 100 - pixels);
}

TEST_CASE("the button that saves the project is lit while the scene has changes") {
    const EditorLayout layout = StartBar();
    editorState.sceneVersion = ++editorState.lastVersion;
    DrawTopBar(layout);
    CHECK(PixelAt(1100, 20) == Pixel{0xF5A85C});
    CHECK(PixelAt(1058, 20) == Pixel{0xE18836});
    CHECK(PixelAt(1100, 8) == Pixel{0xE18836});
    CHECK(PixelAt(1187, 20) == Pixel{0x161413});
    CHECK(PixelAt(1189, 20) == Pixel{0x181514});  // the shadow
    CHECK(PixelAt(1191, 40) == Pixel{0x131110});
    CHECK(PixelAt(960, 20) == Pixel{0x36312F});  // the buttons beside it are as ever
    CHECK(PixelAt(1210, 20) == Pixel{0x36312F});
    REQUIRE(headless.texts.size() == 5);
    for (const DrawnText& text : headless.texts) {
        const bool isLit = text.text == L"Ulozit projekt";
        if (text.x > 900) CHECK(text.color == (isLit ? TextColor{0xFCFAF8} : TextColor{0xE9E5E2}));
    }

    StartPicture(1360, 100, kBack);
    editorState.savedVersion = editorState.sceneVersion;
    DrawTopBar(layout);
    CHECK(PixelAt(1100, 20) == Pixel{0x36312F});
    CHECK(PixelAt(1189, 20) == kBack);
}

TEST_CASE("the logo is drawn at the left once it is loaded") {
    const EditorLayout layout = StartBar();
    DrawTopBar(layout);
    CHECK(headless.images.empty());
    icons.logo = LoadCanvasImage(SourcePath(L"CMakeLists.txt"));
    REQUIRE(icons.logo >= 0);
    DrawTopBar(layout);
    REQUIRE(headless.images.size() == 1);
    CHECK(headless.images[0].rect == Rect{14, 8, 38, 32});
    icons = {};
}

TEST_CASE("the Prefab editor's bar has two buttons, the prefab's name and a hint") {
    const EditorLayout layout = StartBar();
    editorState.screen = Screen::PrefabEditor;
    editorState.prefabName = L"Coin";
    DrawTopBar(layout);
    CHECK(headless.texts == std::vector<DrawnText>{
                                kTitle,
                                {204, 16, L"Scene", TextColor{0xE9E5E2}, 14, 600},
                                {282, 16, L"Save", TextColor{0xFCFAF8}, 14, 600},
                                {356, 12, L"[PREFAB MODE] Coin", TextColor{0x78E2FF}, 16, 600},
                                {1080, 13, L"Ctrl+S save  |  Esc scene", TextColor{0xA69A91}, 13, 400},
                            });
    CHECK(PixelAt(200, 20) == Pixel{0x36312F});
    CHECK(PixelAt(190, 20) == Pixel{0x494340});
    CHECK(PixelAt(261, 20) == Pixel{0x161413});
    CHECK(PixelAt(262, 20) == kBack);
    CHECK(PixelAt(263, 38) == kBack);  // the plain one has no shadow
    CHECK(PixelAt(278, 20) == Pixel{0xE18E43});
    CHECK(PixelAt(268, 20) == Pixel{0xD2792D});
    CHECK(PixelAt(339, 20) == Pixel{0x161413});
    CHECK(PixelAt(341, 20) == Pixel{0x181514});
    CHECK(PixelAt(343, 40) == Pixel{0x131110});
}

TEST_CASE("the Save button is brighter while the prefab has unsaved changes") {
    const EditorLayout layout = StartBar();
    editorState.screen = Screen::PrefabEditor;
    editorState.prefabDirty = true;
    DrawTopBar(layout);
    CHECK(PixelAt(278, 20) == Pixel{0xF5A85C});
    CHECK(PixelAt(268, 20) == Pixel{0xE18836});
}

TEST_CASE("a prefab without a name is shown as Prefab") {
    const EditorLayout layout = StartBar();
    editorState.screen = Screen::PrefabEditor;
    DrawTopBar(layout);
    CHECK(IsDrawn({356, 12, L"[PREFAB MODE] Prefab", TextColor{0x78E2FF}, 16, 600}));
}

TEST_CASE("the prefab hint is drawn from a width of 761 pixels on") {
    for (const int32_t width : {760, 761}) {
        const EditorLayout layout = StartBar(width);
        editorState.screen = Screen::PrefabEditor;
        DrawTopBar(layout);
        CHECK(IsDrawn({width - 280, 13, L"Ctrl+S save  |  Esc scene", TextColor{0xA69A91}, 13, 400}) ==
              (width == 761));
    }
}

TEST_CASE("the buttons at the right are drawn and hit from a width of 761 pixels on") {
    for (const int32_t width : {760, 761}) {
        const EditorLayout layout = StartBar(width);
        DrawTopBar(layout);
        CHECK(headless.texts.size() == (width == 761 ? 5 : 2));
        CHECK(TopBarButtonAt({width - 100, 20}, layout) ==
              (width == 761 ? TopBarButton::BuildProject : TopBarButton::None));
    }
}

TEST_CASE("a button is hit where it is drawn") {
    const EditorLayout layout = StartBar();
    using enum TopBarButton;
    struct {
        int32_t left, right;
        TopBarButton inScene, inPrefab;
    } places[] = {{190, 262, None, CloseEditor},
                  {268, 340, None, SavePrefab},
                  {940, 1050, ProjectHub, None},
                  {1058, 1188, SaveProject, None},
                  {1196, 1346, BuildProject, None}};
    for (const Screen screen : {Screen::SceneEditor, Screen::PrefabEditor}) {
        editorState.screen = screen;
        for (const auto& [left, right, inScene, inPrefab] : places) {
            const TopBarButton expected = screen == Screen::SceneEditor ? inScene : inPrefab;
            CAPTURE(left);
            CHECK(TopBarButtonAt({left, 8}, layout) == expected);
            CHECK(TopBarButtonAt({right - 1, 35}, layout) == expected);
            CHECK(TopBarButtonAt({left - 1, 20}, layout) == None);
            CHECK(TopBarButtonAt({right, 20}, layout) == None);
            CHECK(TopBarButtonAt({left, 7}, layout) == None);
            CHECK(TopBarButtonAt({left, 36}, layout) == None);
        }
    }
}

TEST_CASE("in the runtime no button is there") {
    const EditorLayout layout = StartBar();
    editorState.runtimeMode = true;
    for (const Screen screen : {Screen::SceneEditor, Screen::PrefabEditor}) {
        editorState.screen = screen;
        for (int32_t x = 0; x < 1360; ++x) REQUIRE(TopBarButtonAt({x, 20}, layout) == TopBarButton::None);
    }
}

// The viewport begins at (230, 42).
TEST_CASE("each of the three tools has a button in the viewport's corner, the active one lit") {
    const EditorLayout layout = StartBar();
    const wchar_t* const names[] = {L"Move", L"Rotate", L"Scale"};
    for (int32_t active = 0; active < 3; ++active) {
        editorState.tool = static_cast<Tool>(active);
        headless.texts.clear();
        DrawToolPalette(layout);
        REQUIRE(headless.texts.size() == 3);
        for (int32_t i = 0; i < 3; ++i) {
            const TextColor color = i == active ? kActiveTabText : kButtonText;
            CHECK(headless.texts[static_cast<size_t>(i)] ==
                  DrawnText{230 + 26, 42 + 20 + 32 * i, names[i], color, 14, 600});
        }
    }
}

TEST_CASE("the palette takes no press outside a viewport that is smaller than it") {
    EditorLayout layout = StartBar();
    layout.viewport = {230, 42, 300, 100};
    CHECK(ClickToolPalette({299, 99}, layout));
    CHECK_FALSE(ClickToolPalette({300, 99}, layout));
    CHECK_FALSE(ClickToolPalette({299, 100}, layout));
}
