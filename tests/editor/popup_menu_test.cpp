#include "editor/popup_menu.h"

#include "scene/text_entry.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <string>
#include <vector>

constexpr Pixel kBack{0x102030};

static std::vector<std::string> ran;  // by the items of the menus below

static void RunFirst(int32_t item) { ran.push_back("first of " + std::to_string(item)); }

// Items may open a dialog: no menu may still be open when they run.
static void RunSecond(int32_t item) {
    ran.push_back("second of " + std::to_string(item) + (editorState.filesItemMenu.open ? ", open" : ""));
}

constexpr MenuItem kItems[] = {{L"First", RunFirst}, {L"Second", RunSecond}};

constexpr MenuTable kStrict{.state = &EditorState::filesItemMenu,
                            .title = L"Title",
                            .openMessage = L"Opened.",
                            .width = 100,
                            .height = 120,
                            .keptRight = 110,
                            .keptBelow = 130,
                            .firstItem = 34,
                            .closesBesideItems = true,
                            .takesPressOutside = false,
                            .items = kItems};

static constexpr MenuTable Loose() {
    MenuTable menu = kStrict;
    menu.firstItem = 32;
    menu.closesBesideItems = false;
    menu.takesPressOutside = true;
    return menu;
}

static EditorLayout StartMenus(int32_t width = 800, int32_t height = 600) {
    editorState = EditorState{};
    ran.clear();
    StartPicture(width, height, kBack);
    return LayoutEditor(editorState.panels, width, height);
}

static const PopupMenu& State() { return editorState.filesItemMenu; }

TEST_CASE("opening a menu puts its corner at the pointer and says so") {
    OpenMenu(kStrict, 7, {200, 150}, StartMenus());
    CHECK(State().open);
    CHECK(State().item == 7);
    CHECK(State().corner == Point{200, 150});
    CHECK(editorState.statusMessage == L"Opened.");
}

TEST_CASE("a menu's corner keeps its distance from the window's edges, and stays in a small window") {
    struct {
        int32_t width, height;
        Point pointer, corner;
    } cases[] = {
        {800, 600, {0, 0}, {0, 0}},
        {800, 600, {-40, -7}, {0, 0}},
        {800, 600, {690, 470}, {690, 470}},
        {800, 600, {691, 471}, {690, 470}},
        {800, 600, {5000, 5}, {690, 5}},
        {800, 600, {5, 5000}, {5, 470}},
        {110, 130, {50, 50}, {0, 0}},
        {1, 1, {0, 0}, {0, 0}},
        {4000, 3000, {3999, 2999}, {3890, 2870}},
    };
    for (const auto& [width, height, pointer, corner] : cases) {
        OpenMenu(kStrict, 0, pointer, LayoutEditor({}, width, height));
        CHECK(State().corner == corner);
    }
}

TEST_CASE("opening a menu closes every other one") {
    const EditorLayout layout = StartMenus();
    for (PopupMenu EditorState::*menu :
         {&EditorState::createMenu, &EditorState::objectMenu, &EditorState::filesCreateMenu,
          &EditorState::filesItemMenu, &EditorState::projectMenu, &EditorState::addNodeMenu}) {
        (editorState.*menu).open = true;
    }
    OpenMenu(kStrict, 0, {1, 1}, layout);
    CHECK(editorState.filesItemMenu.open);
    CHECK_FALSE(editorState.createMenu.open);
    CHECK_FALSE(editorState.objectMenu.open);
    CHECK_FALSE(editorState.filesCreateMenu.open);
    CHECK_FALSE(editorState.projectMenu.open);
    CHECK_FALSE(editorState.addNodeMenu.open);
    CloseMenus();
    CHECK_FALSE(editorState.filesItemMenu.open);
}

TEST_CASE("a menu is a box with a title and a box for each item") {
    const EditorLayout layout = StartMenus();
    OpenMenu(kStrict, 0, {200, 150}, layout);
    DrawMenu(kStrict, layout);
    CHECK(headless.texts == std::vector<DrawnText>{
                                {212, 158, L"Title", TextColor{0x78E2FF}, 15, 600},
                                {216, 188, L"First", TextColor{0xE6DED6}, 14, 600},
                                {216, 216, L"Second", TextColor{0xE6DED6}, 14, 600},
                            });
    CHECK(CountOf(kBack) == 800 * 600 - 100 * 120);
    CHECK(PixelAt(250, 150) == Pixel{0x786A60});
    CHECK(PixelAt(250, 151) == Pixel{0x443B36});
    CHECK(PixelAt(250, 152) == Pixel{0x312924});
    CHECK(PixelAt(250, 269) == Pixel{0x14100D});
    CHECK(PixelAt(200, 200) == Pixel{0x786A60});
    CHECK(PixelAt(299, 200) == Pixel{0x14100D});
    for (const int32_t top : {184, 212}) {
        CHECK(PixelAt(250, top - 1) == Pixel{0x312924});
        CHECK(PixelAt(250, top) == Pixel{0x564A42});
        CHECK(PixelAt(250, top + 1) == Pixel{0x443B36});
        CHECK(PixelAt(250, top + 2) == Pixel{0x342C27});
        CHECK(PixelAt(250, top + 23) == Pixel{0x14100D});
        CHECK(PixelAt(250, top + 24) == Pixel{0x312924});
        CHECK(PixelAt(207, top + 9) == Pixel{0x312924});
        CHECK(PixelAt(208, top + 9) == Pixel{0x564A42});
        CHECK(PixelAt(291, top + 9) == Pixel{0x14100D});
        CHECK(PixelAt(292, top + 9) == Pixel{0x312924});
    }
}

TEST_CASE("a menu that is closed draws nothing and takes no press") {
    const EditorLayout layout = StartMenus();
    DrawMenu(kStrict, layout);
    CHECK(headless.texts.empty());
    CHECK(CountOf(kBack) == 800 * 600);
    CHECK_FALSE(ClickMenu(kStrict, {10, 50}));
    CHECK_FALSE(ClickMenu(Loose(), {10, 50}));
    CHECK(ran.empty());
}

TEST_CASE("a menu's box ends six pixels before the window's right and bottom edges") {
    const EditorLayout layout = StartMenus(90, 100);
    OpenMenu(kStrict, 0, {0, 0}, layout);
    DrawMenu(kStrict, layout);
    CHECK(PixelAt(83, 30) == Pixel{0x14100D});
    CHECK(PixelAt(84, 30) == kBack);
    CHECK(PixelAt(75, 45) == Pixel{0x14100D});  // the items end eight pixels before the box
    CHECK(PixelAt(76, 45) == Pixel{0x312924});
    CHECK(PixelAt(4, 93) == Pixel{0x14100D});
    CHECK(PixelAt(4, 94) == kBack);
}

TEST_CASE("a press on an item closes the menu, then runs the item for what the menu was opened for") {
    struct {
        int32_t below;  // pixels below the menu's top
        const char* ran;
    } cases[] = {{34, "first of 7"}, {61, "first of 7"}, {62, "second of 7"}, {89, "second of 7"}};
    for (const auto& [below, expected] : cases) {
        OpenMenu(kStrict, 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(kStrict, {299, 150 + below}));
        CHECK_FALSE(State().open);
        CHECK(ran == std::vector<std::string>{expected});
    }
}

TEST_CASE("a menu may be hit two pixels above its drawn items, yet never in its title") {
    struct {
        int32_t below;
        const char* ran;
    } cases[] = {{34, "first of 7"}, {59, "first of 7"}, {60, "second of 7"}, {87, "second of 7"}};
    for (const auto& [below, expected] : cases) {
        OpenMenu(Loose(), 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(Loose(), {200, 150 + below}));
        CHECK_FALSE(State().open);
        CHECK(ran == std::vector<std::string>{expected});
    }
}

TEST_CASE("a press in the title is taken and leaves the menu open") {
    for (const MenuTable& menu : {kStrict, Loose()}) {
        for (const int32_t below : {0, 20, 33}) {
            OpenMenu(menu, 7, {200, 150}, StartMenus());
            CHECK(ClickMenu(menu, {250, 150 + below}));
            CHECK(State().open);
            CHECK(ran.empty());
        }
    }
}

TEST_CASE("a press below the items is taken, and closes the menu or leaves it open by the menu's rule") {
    for (const int32_t below : {90, 119}) {
        OpenMenu(kStrict, 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(kStrict, {250, 150 + below}));
        CHECK_FALSE(State().open);
        OpenMenu(Loose(), 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(Loose(), {250, 150 + below}));
        CHECK(State().open);
        CHECK(ran.empty());
    }
}

TEST_CASE("a press outside closes the menu, and is taken or passed on by the menu's rule") {
    for (const Point outside : {Point{199, 200}, Point{300, 200}, Point{250, 149}, Point{250, 270}}) {
        OpenMenu(kStrict, 7, {200, 150}, StartMenus());
        CHECK_FALSE(ClickMenu(kStrict, outside));
        CHECK_FALSE(State().open);
        OpenMenu(Loose(), 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(Loose(), outside));
        CHECK_FALSE(State().open);
        CHECK(ran.empty());
    }
}

TEST_CASE("a menu is hit as a whole where the window's edge cuts it") {
    const EditorLayout layout = StartMenus(90, 100);
    OpenMenu(kStrict, 7, {0, 0}, layout);
    CHECK(ClickMenu(kStrict, {88, 98}));
    CHECK_FALSE(State().open);
    OpenMenu(kStrict, 7, {0, 0}, layout);
    CHECK(ClickMenu(kStrict, {88, 40}));
    CHECK(ran == std::vector<std::string>{"first of 7"});
}
