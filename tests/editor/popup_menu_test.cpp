#include "editor/popup_menu.h"

#include "scene/interaction.h"
#include "support/capture.h"
#include "support/open_menu.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <string>
#include <vector>

constexpr Pixel kBack{0x102030};

static std::vector<std::string> ran;  // by the items of the menus below

static void RunFirst(const MenuChoice& choice) {
    ran.push_back("first of " + std::to_string(choice.menu.item));
}

// Items may open a dialog: no menu may still be open when they run.
static void RunSecond(const MenuChoice& choice) {
    ran.push_back("second of " + std::to_string(choice.menu.item) +
                  (MenuIsOpen(MenuKind::FilesItem) ? ", open" : ""));
}

constexpr MenuItem kItems[] = {{34, L"First", RunFirst}, {62, L"Second", RunSecond}};

constexpr MenuTable kStrict{.kind = MenuKind::FilesItem,
                            .title = L"Title",
                            .width = 100,
                            .height = 120,
                            .keptRight = 110,
                            .keptBelow = 130,
                            .cutAt = kMenuCut,
                            .items = kItems};

static constexpr MenuTable Loose() {
    MenuTable menu = kStrict;
    menu.pressAbove = 2;
    menu.beside = PressBesideItems::StaysOpen;
    menu.takesPressOutside = true;
    return menu;
}

static MenuArea StartMenus(int32_t width = 800, int32_t height = 600) {
    editorState = EditorState{};
    ran.clear();
    StartPicture(width, height, kBack);
    return {width, height};
}

static bool IsOpen() { return MenuIsOpen(MenuKind::FilesItem); }

TEST_CASE("opening a menu puts its corner at the pointer") {
    OpenMenu(kStrict, 7, {200, 150}, StartMenus());
    CHECK(IsOpen());
    CHECK(OpenMenuState().item == 7);
    CHECK(OpenMenuState().corner == Point{200, 150});
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
        OpenMenu(kStrict, 0, pointer, {width, height});
        CHECK(OpenMenuState().corner == corner);
    }
}

TEST_CASE("opening a menu closes every other one") {
    const MenuArea layout = StartMenus();
    editorState.menu = PopupMenu{.kind = MenuKind::Create};
    OpenMenu(kStrict, 0, {1, 1}, layout);
    CHECK(MenuIsOpen(MenuKind::FilesItem));
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    CloseMenu();
    CHECK_FALSE(MenuIsOpen(MenuKind::FilesItem));
}

TEST_CASE("a menu is a box with a title and a box for each item") {
    const MenuArea layout = StartMenus();
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
    const MenuArea layout = StartMenus();
    DrawMenu(kStrict, layout);
    CHECK(headless.texts.empty());
    CHECK(CountOf(kBack) == 800 * 600);
    CHECK_FALSE(ClickMenu(kStrict, {10, 50}, {800, 600}));
    CHECK_FALSE(ClickMenu(Loose(), {10, 50}, {800, 600}));
    CHECK(ran.empty());
}

TEST_CASE("a menu's box ends six pixels before the window's right and bottom edges") {
    const MenuArea layout = StartMenus(90, 100);
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
        CHECK(ClickMenu(kStrict, {299, 150 + below}, {800, 600}));
        CHECK_FALSE(IsOpen());
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
        CHECK(ClickMenu(Loose(), {200, 150 + below}, {800, 600}));
        CHECK_FALSE(IsOpen());
        CHECK(ran == std::vector<std::string>{expected});
    }
}

TEST_CASE("a press in the title is taken and leaves the menu open") {
    for (const MenuTable& menu : {kStrict, Loose()}) {
        for (const int32_t below : {0, 20, 33}) {
            OpenMenu(menu, 7, {200, 150}, StartMenus());
            CHECK(ClickMenu(menu, {250, 150 + below}, {800, 600}));
            CHECK(IsOpen());
            CHECK(ran.empty());
        }
    }
}

TEST_CASE("a press below the items is taken, and closes the menu or leaves it open by the menu's rule") {
    for (const int32_t below : {90, 119}) {
        OpenMenu(kStrict, 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(kStrict, {250, 150 + below}, {800, 600}));
        CHECK_FALSE(IsOpen());
        OpenMenu(Loose(), 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(Loose(), {250, 150 + below}, {800, 600}));
        CHECK(IsOpen());
        CHECK(ran.empty());
    }
}

TEST_CASE("a press outside closes the menu, and is taken or passed on by the menu's rule") {
    for (const Point outside : {Point{199, 200}, Point{300, 200}, Point{250, 149}, Point{250, 270}}) {
        OpenMenu(kStrict, 7, {200, 150}, StartMenus());
        CHECK_FALSE(ClickMenu(kStrict, outside, {800, 600}));
        CHECK_FALSE(IsOpen());
        OpenMenu(Loose(), 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(Loose(), outside, {800, 600}));
        CHECK_FALSE(IsOpen());
        CHECK(ran.empty());
    }
}

TEST_CASE("a menu is hit as a whole where the window's edge cuts it") {
    const MenuArea layout = StartMenus(90, 100);
    OpenMenu(kStrict, 7, {0, 0}, layout);
    CHECK(ClickMenu(kStrict, {88, 98}, {800, 600}));
    CHECK_FALSE(IsOpen());
    OpenMenu(kStrict, 7, {0, 0}, layout);
    CHECK(ClickMenu(kStrict, {88, 40}, {800, 600}));
    CHECK(ran == std::vector<std::string>{"first of 7"});
}

TEST_CASE("an item's box ends 8 pixels beside the menu, and where the menu ends") {
    const MenuItem item{.top = 92, .height = 24};
    CHECK(MenuItemRect(item, {400, 300, 590, 422}) == Rect{408, 392, 582, 416});
    CHECK(MenuItemRect(item, {230, 52, 420, 166}) == Rect{238, 144, 412, 166});
}

TEST_CASE("an item that takes presses on its box only leaves the rest to the menu") {
    MenuTable menu = kStrict;
    menu.pressOnBoxOnly = true;
    menu.beside = PressBesideItems::StaysOpen;
    struct {
        Point at;
        bool hits;
    } cases[] = {{{207, 184}, false}, {{208, 184}, true}, {{291, 184}, true}, {{292, 184}, false},
                 {{250, 183}, false}, {{250, 207}, true}, {{250, 208}, false}};
    for (const auto& [at, hits] : cases) {
        CAPTURE(at);
        OpenMenu(menu, 7, {200, 150}, StartMenus());
        CHECK(ClickMenu(menu, at, {800, 600}));
        CHECK(IsOpen() == !hits);
        CHECK(ran.size() == (hits ? 1 : 0));
    }
}

TEST_CASE("the item under the pointer is lit up, but not before the pointer has moved") {
    const struct {
        Point opened, pointer;
        int32_t lit;  // item, -1 none
    } cases[] = {{{200, 150}, {208, 184}, 0},  {{200, 150}, {291, 207}, 0},  {{200, 150}, {250, 208}, -1},
                 {{200, 150}, {250, 212}, 1},  {{200, 150}, {207, 190}, -1}, {{200, 150}, {200, 150}, -1},
                 {{799, 510}, {799, 510}, -1}, {{720, 555}, {720, 555}, -1}, {{720, 555}, {720, 554}, 1}};
    for (const auto& [opened, pointer, lit] : cases) {
        CAPTURE(opened);
        CAPTURE(pointer);
        const MenuArea area = StartMenus();
        OpenMenu(kStrict, 0, opened, area);
        editorState.pointer = pointer;
        DrawMenu(kStrict, area);
        const Point corner = OpenMenuState().corner;
        for (int32_t item = 0; item < 2; ++item) {
            const int32_t y = corner.y + 34 + 28 * item;
            CHECK(PixelAt(corner.x + 50, y) == (item == lit ? Pixel{0xE6AA50} : Pixel{0x564A42}));
            CHECK(PixelAt(corner.x + 50, y + 3) == (item == lit ? Pixel{0x3A302A} : Pixel{0x342C27}));
        }
    }
}

TEST_CASE("a menu that keeps no distance opens at the pointer, beyond the window too") {
    MenuTable menu = kStrict;
    menu.keptRight = menu.keptBelow = 0;
    for (const Point pointer : {Point{800, 600}, Point{-1, -1}}) {
        OpenMenu(menu, 0, pointer, StartMenus());
        CHECK(OpenMenuState().corner == pointer);
    }
    menu.keptRight = menu.keptBelow = 1;
    OpenMenu(menu, 0, {800, 600}, StartMenus());
    CHECK(OpenMenuState().corner == Point{799, 599});
}

TEST_CASE("a menu that is not cut runs on beyond the window's edges") {
    MenuTable menu = kStrict;
    menu.cutAt = 0;
    menu.keptRight = menu.keptBelow = 1;
    const MenuArea layout = StartMenus(90, 100);
    OpenMenu(menu, 0, {0, 0}, layout);
    DrawMenu(menu, layout);
    CHECK(PixelAt(89, 30) == Pixel{0x312924});  // no edge here
    CHECK(PixelAt(4, 99) == Pixel{0x312924});
    menu.cutAt = 1;
    StartMenus(90, 100);
    OpenMenu(menu, 0, {0, 0}, layout);
    DrawMenu(menu, layout);
    CHECK(PixelAt(88, 30) == Pixel{0x14100D});
    CHECK(PixelAt(89, 30) == kBack);
}

TEST_CASE("a menu is drawn where a pixel of it is left, its items where 18 pixels of them are") {
    const struct {
        int32_t width, height;
        bool isDrawn;
    } windows[] = {{7, 100, true}, {6, 100, false}, {100, 7, true}, {100, 6, false}};
    for (const auto& [width, height, isDrawn] : windows) {
        CAPTURE(width);
        CAPTURE(height);
        const MenuArea layout = StartMenus(width, height);
        OpenMenu(kStrict, 0, {0, 0}, layout);
        DrawMenu(kStrict, layout);
        CHECK(headless.texts.empty() == !isDrawn);
    }
    for (const int32_t height : {62 + 18, 62 + 17}) {
        MenuTable menu = kStrict;
        menu.height = height;
        const MenuArea layout = StartMenus();
        OpenMenu(menu, 0, {0, 0}, layout);
        DrawMenu(menu, layout);
        CHECK(headless.texts.size() == (height == 62 + 18 ? 3 : 2));  // the title and the items
    }
}
