#include "editor/menus.h"

#include "state/editor_state.h"
#include "support/open_menu.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <initializer_list>
#include <string>
#include <vector>

constexpr Pixel kBack{0x102030};

// Four objects; the first two are protected.
static EditorLayout StartMenus(int32_t width = 1360, int32_t height = 820) {
    editorState = EditorState{};
    editorState.scene = {{.name = L"Camera"}, {.name = L"Light"}, {.name = L"Box"}, {.name = L"Ball"}};
    StartPicture(width, height, kBack);
    return LayoutEditor(editorState.panels, width, height);
}

static std::vector<std::wstring> Labels() {
    std::vector<std::wstring> labels;
    for (const DrawnText& text : headless.texts) labels.push_back(text.text);
    return labels;
}

static bool PressMenus(Point pointer) { return ClickMenus(pointer, LayoutEditor({}, 1360, 820)); }

TEST_CASE("the object menu opens at the pointer and selects its object") {
    const EditorLayout layout = StartMenus();
    editorState.menu = PopupMenu{.kind = MenuKind::Create};
    OpenObjectMenu(2, {100, 130}, layout);
    CHECK(MenuIsOpen(MenuKind::Object));
    CHECK(OpenMenuState().item == 2);
    CHECK(OpenMenuState().corner == Point{100, 130});
    CHECK(editorState.selectedIndex == 2);
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    CHECK(editorState.statusMessage == L"Otevreno menu objektu v Hierarchy.");
}

TEST_CASE("the Create menu opens at the pointer and leaves the selection") {
    const EditorLayout layout = StartMenus();
    editorState.selectedIndex = 1;
    editorState.menu = PopupMenu{.kind = MenuKind::Object};
    OpenCreateMenu({600, 300}, layout);
    CHECK(MenuIsOpen(MenuKind::Create));
    CHECK(OpenMenuState().corner == Point{600, 300});
    CHECK(OpenMenuState().item == -1);
    CHECK(editorState.selectedIndex == 1);
    CHECK_FALSE(MenuIsOpen(MenuKind::Object));
    CHECK(editorState.statusMessage == L"Otevreno Create menu.");
}

TEST_CASE("the object menu keeps 188 and 160 pixels to the edges, the Create menu 180 and 188") {
    const EditorLayout layout = StartMenus();
    OpenObjectMenu(2, {1359, 819}, layout);
    CHECK(OpenMenuState().corner == Point{1360 - 188, 820 - 160});
    OpenCreateMenu({1359, 819}, layout);
    CHECK(OpenMenuState().corner == Point{1360 - 180, 820 - 188});
    OpenObjectMenu(2, {-5, -5}, layout);
    CHECK(OpenMenuState().corner == Point{0, 0});
    OpenCreateMenu({50, 50}, StartMenus(100, 100));
    CHECK(OpenMenuState().corner == Point{0, 0});
}

TEST_CASE("the object menu is a box of 178 by 150 with four items") {
    const EditorLayout layout = StartMenus();
    OpenObjectMenu(2, {100, 130}, layout);
    DrawMenus(layout);
    CHECK(Labels() ==
          std::vector<std::wstring>{L"Hierarchy", L"Create Child", L"Rename", L"Duplicate", L"Delete"});
    CHECK(headless.texts[0] == DrawnText{112, 138, L"Hierarchy", TextColor{0x78E2FF}, 15, 600});
    CHECK(headless.texts[4] == DrawnText{116, 252, L"Delete", TextColor{0xE6DED6}, 14, 600});
    for (int32_t i = 0; i < 4; ++i) CHECK(headless.texts[static_cast<size_t>(i) + 1].y == 168 + 28 * i);
    CHECK(CountOf(kBack) == 1360 * 820 - 178 * 150);
    CHECK(PixelAt(277, 279) == Pixel{0x14100D});
    CHECK(PixelAt(150, 260) == Pixel{0x342C27});
}

TEST_CASE("the Create menu is a box of 170 by 206 with six items") {
    const EditorLayout layout = StartMenus();
    OpenCreateMenu({600, 300}, layout);
    DrawMenus(layout);
    CHECK(Labels() == std::vector<std::wstring>{L"Vytvorit", L"Object", L"Entity", L"Camera", L"Light",
                                                L"Plane", L"Text"});
    CHECK(headless.texts[0] == DrawnText{612, 308, L"Vytvorit", TextColor{0x78E2FF}, 15, 600});
    CHECK(headless.texts[6] == DrawnText{616, 478, L"Text", TextColor{0xE6DED6}, 14, 600});
    for (int32_t i = 0; i < 6; ++i) CHECK(headless.texts[static_cast<size_t>(i) + 1].y == 338 + 28 * i);
    CHECK(CountOf(kBack) == 1360 * 820 - 170 * 206);
    CHECK(PixelAt(769, 505) == Pixel{0x14100D});
}

TEST_CASE("without an open menu nothing is drawn and no press is taken") {
    const EditorLayout layout = StartMenus();
    DrawMenus(layout);
    CHECK(headless.texts.empty());
    CHECK_FALSE(PressMenus({100, 100}));
}

// Opens the object menu of `object` at (100, 130) and clicks its row.
static void ClickObjectRow(int32_t object, int32_t row) {
    OpenObjectMenu(object, {100, 130}, StartMenus());
    editorState.selectedIndex = 0;  // something else was selected meanwhile
    CHECK(PressMenus({150, 130 + 34 + 28 * row + 12}));
    CHECK_FALSE(MenuIsOpen(MenuKind::Object));
}

TEST_CASE("Create Child makes a child of the menu's object") {
    ClickObjectRow(2, 0);
    REQUIRE(editorState.scene.size() == 5);
    CHECK(editorState.scene[4].parentIndex == 2);
    CHECK(editorState.scene[4].name == L"Child_04");
    CHECK(editorState.selectedIndex == 4);
}

TEST_CASE("Rename opens the entry with the name of the menu's object") {
    ClickObjectRow(2, 1);
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.nameEntry.kind == NameEntry::Kind::Object);
    CHECK(editorState.nameEntry.target == 2);
    CHECK(editorState.nameEntry.text == L"Box");
    CHECK(editorState.statusMessage == L"Napis novy nazev, Enter potvrdi a Esc zrusi.");
}

TEST_CASE("Duplicate copies the menu's object") {
    ClickObjectRow(2, 2);
    REQUIRE(editorState.scene.size() == 5);
    CHECK(editorState.scene[4].name == L"Box_Copy");
    CHECK(editorState.selectedIndex == 4);
}

TEST_CASE("Delete removes the menu's object") {
    ClickObjectRow(2, 3);
    REQUIRE(editorState.scene.size() == 3);
    CHECK(editorState.scene[2].name == L"Ball");
    CHECK(editorState.statusMessage == L"Vybrany objekt byl smazan.");
}

TEST_CASE("below its items the object menu selects its object and closes") {
    for (const int32_t below : {146, 149}) {  // 34 and four rows of 28, and its last pixel
        OpenObjectMenu(2, {100, 130}, StartMenus());
        editorState.selectedIndex = 1;  // by a key, while the menu is open
        CHECK(PressMenus({150, 130 + below}));
        CHECK_FALSE(MenuIsOpen(MenuKind::Object));
        CHECK(editorState.selectedIndex == 2);
        CHECK(editorState.scene.size() == 4);
        CHECK(editorState.undoSteps.empty());
    }
}

TEST_CASE("a press in the title of the object menu and one outside leave the selection") {
    for (const Point at : {Point{150, 163}, Point{150, 280}}) {
        OpenObjectMenu(2, {100, 130}, StartMenus());
        editorState.selectedIndex = 1;
        PressMenus(at);
        CHECK(editorState.selectedIndex == 1);
    }
}

TEST_CASE("the object menu of an object that is gone works on the last one") {
    OpenObjectMenu(3, {100, 130}, StartMenus());
    editorState.scene.resize(3);
    CHECK(PressMenus({150, 130 + 34 + 28 * 2}));
    REQUIRE(editorState.scene.size() == 4);
    CHECK(editorState.scene[3].name == L"Box_Copy");
}

TEST_CASE("in a scene that has become empty the object menu makes a cube and nothing else") {
    for (int32_t row = 0; row < 4; ++row) {
        OpenObjectMenu(3, {100, 130}, StartMenus());
        editorState.scene.clear();
        CHECK(PressMenus({150, 130 + 34 + 28 * row}));
        CHECK(editorState.scene.size() == (row == 0 ? 1 : 0));
        CHECK(editorState.nameEntry.kind == NameEntry::Kind::Closed);
    }
    CHECK(editorState.selectedIndex == -1);
}

TEST_CASE("each row of the Create menu makes its object, 28 pixels from 32 below the top, not in the title") {
    struct {
        int32_t first, last;  // pixels below the menu's top
        const wchar_t* name;
    } rows[] = {{34, 59, L"GameObject_04"}, {60, 87, L"Entity_04"},  {88, 115, L"Camera_04"},
                {116, 143, L"Light_04"},    {144, 171, L"Plane_04"}, {172, 199, L"Text_04"}};
    for (const auto& [first, last, name] : rows) {
        for (const int32_t below : {first, last}) {
            OpenCreateMenu({600, 300}, StartMenus());
            CAPTURE(below);
            CHECK(PressMenus({650, 300 + below}));
            CHECK_FALSE(MenuIsOpen(MenuKind::Create));
            REQUIRE(editorState.scene.size() == 5);
            CHECK(editorState.scene[4].name == name);
            CHECK(editorState.selectedIndex == 4);
            CHECK(editorState.undoSteps.size() == 1);
        }
    }
}

TEST_CASE("in its title and below its items the Create menu stays open") {
    for (const int32_t below : {0, 33, 200, 205}) {
        OpenCreateMenu({600, 300}, StartMenus());
        CHECK(PressMenus({650, 300 + below}));
        CHECK(MenuIsOpen(MenuKind::Create));
        CHECK(editorState.scene.size() == 4);
    }
}

TEST_CASE("a press outside the Create menu only closes it, one outside the object menu goes on") {
    const EditorLayout layout = StartMenus();
    for (const Point outside : {Point{599, 400}, Point{770, 400}, Point{650, 299}, Point{650, 506}}) {
        OpenCreateMenu({600, 300}, layout);
        CHECK(PressMenus(outside));
        CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    }
    for (const Point outside : {Point{99, 200}, Point{278, 200}, Point{150, 129}, Point{150, 280}}) {
        OpenObjectMenu(2, {100, 130}, layout);
        CHECK_FALSE(PressMenus(outside));
        CHECK_FALSE(MenuIsOpen(MenuKind::Object));
    }
    CHECK(editorState.scene.size() == 4);
}
