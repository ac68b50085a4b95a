#include "app/current_layout.h"
#include "project/asset_list.h"
#include "render/raster/camera.h"
#include "scene/transform.h"
#include "support/capture.h"
#include "support/editor_input.h"
#include "support/gestures.h"
#include "support/open_menu.h"
#include "support/project_input.h"
#include "viewport/scene_view.h"

#include "doctest/doctest.h"

#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

static bool NothingIsDragged() { return !GestureIsUnderWay() && !headless.mouseIsCaptured; }

// The pixel at the tip of the selected object's X axis.
static Point GizmoTip() {
    const Rect viewport = CurrentLayout().viewport;
    const Vec3 tip = WorldPosition(editorState.scene, editorState.selectedIndex) + Vec3{1.25f, 0, 0};
    Point pixel;
    REQUIRE(ProjectToPixel(CurrentView(viewport).viewProjection, tip, viewport, pixel));
    return pixel;
}

// Panel edges.

TEST_CASE("a panel's edge is grabbed from 3 pixels before it to 2 behind it, the upright ones first") {
    struct {
        Point at;
        int32_t edge;
    } cases[] = {
        {{226, 300}, 0},  {{227, 300}, 1},  {{232, 300}, 1},  {{233, 300}, 0},  // the Hierarchy's
        {{230, 41}, 0},   {{230, 42}, 1},   {{230, 687}, 1},  {{230, 688}, 3},
        {{1036, 300}, 0}, {{1037, 300}, 2}, {{1042, 300}, 2}, {{1043, 600}, 0},  // the Inspector's
        {{1040, 41}, 0},  {{1040, 42}, 2},  {{1040, 687}, 2}, {{1040, 688}, 3},
        {{600, 684}, 0},  {{600, 685}, 3},  {{600, 690}, 3},  {{600, 691}, 0},  // the bottom panel's
        {{-1, 688}, 0},   {{0, 688}, 3},    {{1359, 688}, 3}, {{1360, 688}, 0},
        {{232, 687}, 1},  {{232, 688}, 3},
    };
    for (const auto& [at, edge] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        StartEditor();
        editorState.scene.resize(2);  // nothing in the way of a press
        editorState.selectedIndex = -1;
        Press(at);
        CHECK(HeldEdge() == edge);
        CHECK(headless.mouseIsCaptured == (edge != 0));
        if (edge != 0) CHECK(editorState.statusMessage == L"Tahni hranu panelu pro zmenu velikosti.");
    }
}

TEST_CASE("an edge follows the pointer, within what the window allows") {
    struct {
        Point from, by;
        PanelLayout after;
    } cases[] = {
        {{230, 300}, {40, 0}, {270, 320, 132}},     {{228, 300}, {40, 99}, {270, 320, 132}},
        {{230, 300}, {-30, 0}, {200, 320, 132}},    {{230, 300}, {-61, 0}, {170, 320, 132}},
        {{230, 300}, {-5000, 0}, {170, 320, 132}},  {{230, 300}, {5000, 0}, {820, 320, 132}},
        {{1040, 300}, {-40, 0}, {230, 360, 132}},   {{1040, 300}, {1, 0}, {230, 320, 132}},
        {{1040, 300}, {-5000, 0}, {230, 910, 132}}, {{600, 688}, {0, -40}, {230, 320, 172}},
        {{600, 688}, {50, 36}, {230, 320, 96}},     {{600, 688}, {0, 37}, {230, 320, 96}},
        {{600, 688}, {0, -5000}, {230, 320, 658}},
    };
    for (const auto& [from, by, after] : cases) {
        CAPTURE(by.x);
        CAPTURE(by.y);
        StartEditor();
        const Point to{from.x + by.x, from.y + by.y};
        Press(from);
        Move({-7, 9000});
        Move(to);
        CHECK(editorState.panels == after);
        Release(to);
        CHECK(editorState.statusMessage == L"Velikost panelu upravena.");
        CHECK(NothingIsDragged());
        Move({600, 300});
        CHECK(editorState.panels == after);
    }
}

TEST_CASE("an edge that is dragged back comes back, also from beyond its limits") {
    StartEditor();
    Press({1040, 300});
    Move({-4000, 300});
    Move({1040, 300});
    Release({1040, 300});
    CHECK(editorState.panels == PanelLayout{});
}

TEST_CASE("a press on an edge closes an object's menu and begins to drag") {
    StartEditor();
    RightClick(RowAt(2));
    REQUIRE(MenuIsOpen(MenuKind::Object));
    Press({1040, 300});
    CHECK_FALSE(MenuIsOpen(MenuKind::Object));
    CHECK(HeldEdge() == 2);
}

// Tabs and tools.

TEST_CASE("the tabs of the bottom panel are switched inside their strip") {
    struct {
        Point at;
        BottomTab before, after;
    } cases[] = {
        {{16, 698}, BottomTab::Console, BottomTab::Files},
        {{105, 725}, BottomTab::Console, BottomTab::Files},
        {{15, 698}, BottomTab::Console, BottomTab::Console},
        {{106, 698}, BottomTab::Console, BottomTab::Console},
        {{16, 697}, BottomTab::Console, BottomTab::Console},
        {{16, 726}, BottomTab::Console, BottomTab::Console},
        {{112, 698}, BottomTab::Files, BottomTab::Console},
        {{215, 725}, BottomTab::Files, BottomTab::Console},
        {{111, 698}, BottomTab::Files, BottomTab::Files},
        {{216, 725}, BottomTab::Files, BottomTab::Files},
        {{112, 697}, BottomTab::Files, BottomTab::Files},
        {{112, 726}, BottomTab::Files, BottomTab::Files},
    };
    for (const auto& [at, before, after] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        StartEditor();
        editorState.bottomTab = before;
        RenderFrame();
        Click(at);
        CHECK(editorState.bottomTab == after);
        if (before == after) continue;
        CHECK(editorState.statusMessage ==
              (after == BottomTab::Files ? L"Prepnuto na Files." : L"Prepnuto na Console."));
    }
}

TEST_CASE("a tool's button is 97 by 27 pixels, and the rest of the palette takes presses without effect") {
    constexpr const wchar_t* kMessages[] = {L"Tool prepnut na Move.", L"Tool prepnut na Rotate.",
                                            L"Tool prepnut na Scale."};
    for (const int32_t x : {237, 238, 243, 244, 340, 341, 352, 353}) {
        for (const int32_t y : {49, 50, 55, 56, 82, 83, 87, 88, 114, 115, 119, 120, 146, 147, 158, 159}) {
            CAPTURE(x);
            CAPTURE(y);
            StartEditor();
            // A plane that fills the viewport: a press beside the palette picks it.
            editorState.camera.position = {0, 0, -10};
            editorState.camera.pitch = 0;
            ShowScene({{.name = L"Wall", .position{0, 0, 5}, .scale{90, 90, 1}, .meshIndex = 0}}, -1);
            Click({x, y});

            const bool inColumn = x >= 244 && x <= 340;
            const int32_t row = y >= 56 && y <= 82     ? 0
                                : y >= 88 && y <= 114  ? 1
                                : y >= 120 && y <= 146 ? 2
                                                       : -1;
            const bool inBox = x >= 238 && x <= 352 && y >= 50 && y <= 158;
            const bool onButton = inColumn && row >= 0;
            CHECK(editorState.tool == (onButton ? static_cast<Tool>(row) : Tool::Move));
            CHECK(editorState.selectedIndex == (inBox ? -1 : 0));
            CHECK(editorState.statusMessage == (onButton ? kMessages[row]
                                                : inBox  ? L"untouched"
                                                         : L"Objekt vybran kliknutim ve Scene viewportu."));
        }
    }
}

// The viewport.

static void ShowTwoCubes() {
    StartEditor();
    editorState.camera.position = {0, 0, -10};
    editorState.camera.pitch = 0;
    ShowScene({{.name = L"Left", .position{-3, 0, 0}, .meshIndex = 0},
               {.name = L"Right", .position{3, 0, 0}, .meshIndex = 0}},
              -1);
}

TEST_CASE("a press on an object selects it, one on nothing keeps the selection") {
    ShowTwoCubes();
    Click({773, 365});  // 3 units are 138 pixels
    CHECK(editorState.selectedIndex == 1);
    CHECK(editorState.statusMessage == L"Objekt vybran kliknutim ve Scene viewportu.");
    Click({497, 365});
    CHECK(editorState.selectedIndex == 0);
    editorState.statusMessage = L"before";
    Click({635, 600});
    CHECK(editorState.selectedIndex == 0);
    CHECK(editorState.statusMessage == L"before");
    CHECK(NothingIsDragged());
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("the gizmo of the selection is grabbed before the object behind it is picked") {
    ShowTwoCubes();
    editorState.selectedIndex = 1;
    editorState.scene[0].position = {3, 0, -1};  // in front of the selected one
    RenderFrame();
    Press({790, 365});
    CHECK(editorState.selectedIndex == 1);
    CHECK(HeldAxis() == 1);
}

TEST_CASE("a press in the viewport means what the panels of now show, before a frame shows it too") {
    ShowTwoCubes();
    for (const int32_t width : {170, 400, 600}) {
        CAPTURE(width);
        editorState.panels.hierarchyWidth = width;
        editorState.selectedIndex = 1;
        const Rect viewport = CurrentLayout().viewport;
        Point left;
        REQUIRE(ProjectToPixel(CurrentView(viewport).viewProjection, editorState.scene[0].position, viewport,
                               left));
        Press({left.x + 9, left.y - 9});
        CHECK(editorState.selectedIndex == 0);
        Release(left);
    }
}

// The Hierarchy.

TEST_CASE("a wiggle of 5 pixels on a row selects it, 6 pixels drag it") {
    for (const auto& [by, dragged] :
         {std::pair{Point{5, 0}, false}, {Point{-2, 3}, false}, {Point{6, 0}, true}, {Point{3, -3}, true}}) {
        StartEditor();
        const Point from = RowAt(3), to{from.x + by.x, from.y + by.y};
        Press(from);
        CHECK(editorState.statusMessage == L"Hierarchy: pust mys pro vyber, nebo tahni pro presun.");
        Move(to);
        CHECK(IsDragged<HierarchyDrag>() == dragged);
        Release(to);
        CHECK(editorState.selectedIndex == (dragged ? 2 : 3));
        CHECK(NothingIsDragged());
        CHECK(editorState.undoSteps.empty());
    }
}

TEST_CASE("a row dragged onto another's centre becomes its child, near its edge its neighbour") {
    struct {
        int32_t y;  // below the target's row y
        bool child;
        std::vector<std::wstring> order;
    } cases[] = {
        {-4, false, {L"c", L"a", L"b"}}, {2, false, {L"c", L"a", L"b"}},  {3, true, {L"a", L"c", L"b"}},
        {15, true, {L"a", L"c", L"b"}},  {16, false, {L"a", L"c", L"b"}}, {21, false, {L"a", L"c", L"b"}},
    };
    for (const auto& [y, child, order] : cases) {
        CAPTURE(y);
        StartEditor();
        ShowScene({{.name = L"a"}, {.name = L"b"}, {.name = L"c"}}, 0);
        Press({40, 92 + 56 + 9});
        Move({40, 100});
        Move({40, 92 + y});
        Release({40, 92 + y});
        std::vector<std::wstring> names;
        for (const GameObject& object : editorState.scene) names.push_back(object.name);
        CHECK(names == order);
        CHECK(editorState.scene[static_cast<size_t>(editorState.selectedIndex)].name == L"c");
        CHECK((editorState.scene[1].parentIndex == 0) == child);
        CHECK(editorState.statusMessage == (child ? L"Objekt byl presunut jako potomek v Hierarchy."
                                                  : L"Objekt byl presunut v Hierarchy."));
        CHECK(editorState.undoSteps.size() == 1);
    }
}

TEST_CASE("a row let go between rows, on itself or below itself moves nothing") {
    StartEditor();
    ShowScene({{.name = L"a"}, {.name = L"b", .parentIndex = 0}, {.name = L"c"}}, 2);
    const Scene before = editorState.scene;
    for (const Point to : {Point{40, 92 + 24}, RowAt(0), RowAt(1), Point{60, 600}, Point{60, -50}}) {
        Press(RowAt(0));
        Move({60, 600});
        Move(to);
        Release(to);
        CHECK(editorState.scene == before);
        CHECK(editorState.selectedIndex == 2);
    }
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("a row let go over the Inspector becomes what the selected object collects") {
    StartEditor();
    // At the height of a row, which must not be taken for the target.
    Drag(RowAt(3), {1200, RowAt(0).y});
    const GameObject& player = editorState.scene[2];
    CHECK(player.name == L"PlayerCube");
    CHECK(player.collectTarget == L"EnemyEntity");
    CHECK(player.scripts == std::vector<std::wstring>{L"CollectOnTouch"});
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.statusMessage == L"Inspector Target nastaven: PlayerCube->EnemyEntity");
    CHECK(NothingIsDragged());
    TapWithControl('Z');
    CHECK(editorState.scene[2].collectTarget.empty());
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("a row let go right of the window is let go over the Inspector") {
    for (const Point at : {Point{1360, 42}, Point{5000, RowAt(0).y}, Point{1400, 687}}) {
        StartEditor();
        Press(RowAt(3));
        Move(at);
        CHECK(HeldDrop() == std::nullopt);
        Release(at);
        CHECK(editorState.scene[2].collectTarget == L"EnemyEntity");
        CHECK(editorState.scene[3].parentIndex == -1);
    }
}

TEST_CASE("over the Inspector no row is marked as the place of a drop") {
    StartEditor();
    Press(RowAt(3));
    Move(RowAt(0));
    CHECK(HeldDrop().value_or(DropPlace{-1}).target == 0);
    Move({1200, RowAt(0).y});
    CHECK(HeldDrop() == std::nullopt);
    Move({700, RowAt(0).y});  // beside the panel the height alone counts
    CHECK(HeldDrop().value_or(DropPlace{-1}).target == 0);
}

TEST_CASE("an object is no reference of itself") {
    StartEditor();
    Drag(RowAt(2), {1200, 300});
    CHECK(editorState.statusMessage == L"Vyber objekt 1, potom pretahni objekt 2 z Hierarchy do Inspectoru.");
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("deleting or undoing while a row is dragged ends the drag") {
    for (const bool deletes : {true, false}) {
        StartEditor();
        TapKey('G');
        Press(RowAt(3));
        Move(RowAt(0));
        if (deletes) TapKey(kKeyDelete);
        if (!deletes) TapWithControl('Z');
        CHECK(NothingIsDragged());
        const Scene after = editorState.scene;
        Move(RowAt(1));
        Release(RowAt(1));
        CHECK(editorState.scene == after);
    }
}

// Double clicks.

TEST_CASE("a double click on the name of the selected object renames it") {
    for (const int32_t x : {1085, 1086, 1269, 1270}) {
        for (const int32_t y : {92, 93, 113, 114}) {
            CAPTURE(x);
            CAPTURE(y);
            StartEditor();
            DoubleClick({x, y});
            const bool isInside = x >= 1086 && x <= 1269 && y >= 93 && y <= 113;
            CHECK((editorState.nameEntry.kind == NameEntry::Kind::Object) == isInside);
            if (!isInside) continue;
            CHECK(editorState.nameEntry.target == 2);
            CHECK(editorState.nameEntry.text == L"PlayerCube");
            CHECK(editorState.statusMessage == L"Napis novy nazev, Enter potvrdi a Esc zrusi.");
        }
    }
    StartEditor();
    editorState.selectedIndex = -1;
    DoubleClick({1100, 100});
    CHECK(editorState.nameEntry.kind == NameEntry::Kind::Closed);
}

TEST_CASE("a double click on a row selects the object and goes to it without turning") {
    StartEditor();
    editorState.camera.pitch = 0;
    DoubleClick(RowAt(4));  // the platform at 2.7, -0.25, 5.4
    CHECK(editorState.selectedIndex == 4);
    CHECK(editorState.statusMessage == L"Kamera priblizena na vybrany objekt.");
    CHECK(editorState.camera.position.x == doctest::Approx(2.7));
    CHECK(editorState.camera.position.y == doctest::Approx(1.15));
    CHECK(editorState.camera.position.z == doctest::Approx(1.4));
    CHECK(editorState.camera.yaw == 0);
    CHECK(NothingIsDragged());
}

TEST_CASE("a double click that means nothing else counts as a second press") {
    StartEditor();
    DoubleClick({260, 100});  // a tool
    CHECK(editorState.tool == Tool::Rotate);

    StartEditor();
    editorState.scene[2].hasRigidbody = editorState.scene[2].rigidbodyExpanded = true;
    editorState.scene[2].mass = 1;
    RenderFrame();
    DoubleClick(ZoneAt(44));  // the mass, which steps by a half
    CHECK(editorState.scene[2].mass == 2);
    CHECK(editorState.undoSteps.size() == 2);

    StartEditor();
    Click({230, 300});
    SendMouse(InputKind::LeftDoubleClick, {230, 300});
    CHECK(HeldEdge() == 1);
}

TEST_CASE("a double click does not reach through an open menu") {
    StartEditor();
    RightClick(RowAt(0));
    REQUIRE(MenuIsOpen(MenuKind::Object));
    const Point title{OpenMenuState().corner.x + 20, OpenMenuState().corner.y + 20};
    const Vec3 camera = editorState.camera.position;
    DoubleClick(title);  // a row of the Hierarchy lies under it
    CHECK(MenuIsOpen(MenuKind::Object));
    CHECK(editorState.camera.position == camera);
}

// The right button.

TEST_CASE("a right click opens the menu of a row, or else the Create menu, at the press") {
    StartEditor();
    PressRightAt(RowAt(3));
    ReleaseRightAt({RowAt(3).x + 2, RowAt(3).y});
    CHECK(MenuIsOpen(MenuKind::Object));
    CHECK(OpenMenuState().corner == RowAt(3));
    CHECK(OpenMenuState().item == 3);
    CHECK(editorState.selectedIndex == 3);
    CHECK(editorState.statusMessage == L"Otevreno menu objektu v Hierarchy.");
    for (const Point at : {Point{60, 500}, Point{600, 300}, Point{1100, 300}, Point{600, 20}}) {
        RightClick(at);
        CHECK(MenuIsOpen(MenuKind::Create));
        CHECK_FALSE(MenuIsOpen(MenuKind::Object));
        CHECK(OpenMenuState().corner == at);
        CHECK(editorState.statusMessage == L"Otevreno Create menu.");
    }
    CHECK(NothingIsDragged());
}

TEST_CASE("the Create menu stays inside the window in every corner and works there") {
    struct {
        Point at, corner;
    } cases[] = {{{0, 0}, {0, 0}},           {{1359, 0}, {1180, 0}},     {{0, 687}, {0, 632}},
                 {{1359, 687}, {1180, 632}}, {{1180, 632}, {1180, 632}}, {{1181, 633}, {1180, 632}},
                 {{-300, -2}, {0, 0}},       {{5000, 5000}, {1180, 632}}};  // the bottom panel has no menu
    for (const auto& [at, corner] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        StartEditor();
        RightClick(at);
        REQUIRE(MenuIsOpen(MenuKind::Create));
        CHECK(OpenMenuState().corner == corner);
        RenderFrame();
        Click({corner.x + 20, corner.y + 40});
        CHECK(editorState.scene.size() == 7);
        CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    }
}

TEST_CASE("the menu of a row at the window's lower end stays inside the window and works there") {
    StartEditor();
    ShowScene(Scene(30), 0);
    RightClick({100, 687});  // on row 21, at y 680
    REQUIRE(MenuIsOpen(MenuKind::Object));
    CHECK(OpenMenuState().item == 21);
    CHECK(OpenMenuState().corner == Point{100, 660});
    Click({120, 660 + 118});
    CHECK(editorState.scene.size() == 29);
    CHECK(editorState.statusMessage == L"Vybrany objekt byl smazan.");
}

TEST_CASE("each height in the Create menu means its kind of object") {
    struct {
        Point at;  // from the corner
        const wchar_t* name;
        bool stays;
    } cases[] = {
        {{20, 0}, L"", true},
        {{20, 33}, L"", true},
        {{20, 34}, L"GameObject_06", false},
        {{20, 59}, L"GameObject_06", false},
        {{20, 60}, L"Entity_06", false},
        {{20, 87}, L"Entity_06", false},
        {{20, 88}, L"Camera_06", false},
        {{20, 115}, L"Camera_06", false},
        {{20, 116}, L"Light_06", false},
        {{20, 144}, L"Plane_06", false},
        {{20, 171}, L"Plane_06", false},
        {{0, 172}, L"Text_06", false},
        {{169, 199}, L"Text_06", false},
        {{20, 200}, L"", true},
        {{20, 205}, L"", true},
        {{20, 206}, L"", false},
        {{-1, 60}, L"", false},
        {{170, 60}, L"", false},
        {{20, -1}, L"", false},
    };
    for (const auto& [at, name, stays] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        StartEditor();
        RightClick({600, 300});
        Click({600 + at.x, 300 + at.y});
        CHECK(MenuIsOpen(MenuKind::Create) == stays);
        CHECK(editorState.scene.size() == (*name ? 7 : 6));
        if (*name) CHECK(editorState.scene.back().name == name);
        CHECK(editorState.selectedIndex == (*name ? 6 : 2));  // nothing behind the menu was picked
    }
}

TEST_CASE("a press outside the Create menu goes no further, one outside an object's menu does") {
    StartEditor();
    RightClick({600, 300});
    Click(RowAt(4));
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    CHECK(editorState.selectedIndex == 2);

    RightClick(RowAt(0));
    Click({260, 100});
    CHECK_FALSE(MenuIsOpen(MenuKind::Object));
    CHECK(editorState.tool == Tool::Rotate);
}

TEST_CASE("each height in an object's menu means its command") {
    struct {
        int32_t y;  // from the corner
        bool stays;
        size_t objects;
        bool renames;
    } cases[] = {{0, true, 6, false},    {33, true, 6, false},   {34, false, 7, false},
                 {61, false, 7, false},  {62, false, 6, true},   {89, false, 6, true},
                 {90, false, 7, false},  {117, false, 7, false}, {118, false, 5, false},
                 {145, false, 5, false}, {146, false, 6, false}, {149, false, 6, false}};
    for (const auto& [y, stays, objects, renames] : cases) {
        CAPTURE(y);
        StartEditor();
        RightClick(RowAt(3));
        Click({RowAt(3).x + 5, RowAt(3).y + y});
        CHECK(MenuIsOpen(MenuKind::Object) == stays);
        CHECK(editorState.scene.size() == objects);
        CHECK((editorState.nameEntry.kind == NameEntry::Kind::Object) == renames);
        if (renames) CHECK(editorState.nameEntry.target == 3);
        if (y < 62 && !stays) CHECK(editorState.scene.back().parentIndex == 3);
        if (objects == 5) CHECK(editorState.scene[3].name == L"Platform");
    }
}

// One drag at a time.

TEST_CASE("while the right button is held the left one starts no drag") {
    StartEditor();
    editorState.bottomTab = BottomTab::Files;
    editorState.fileEntries = {{.name = L"a", .path = L"Project\\Files\\a", .folder = L"Project\\Files"}};
    RenderFrame();
    const Rect cell = editorState.filesCells.at(0).rect;
    const Point item{cell.left + 40, cell.top + 20}, gizmo = GizmoTip();
    for (const Point at : {RowAt(4), Point{230, 300}, Point{1040, 300}, Point{600, 688}, item, gizmo}) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        PressRightAt({600, 300});
        Press(at);
        Release(at);
        CHECK(Held<MouseLook>());
        CHECK(headless.mouseIsCaptured);
        CHECK(HeldEdge() == 0);
        CHECK_FALSE(Held<HierarchyDrag>());
        CHECK_FALSE(Held<FilesDrag>());
        CHECK(HeldAxis() == 0);
        CHECK(editorState.undoSteps.empty());
        ReleaseRightAt({600, 300});
        CHECK(NothingIsDragged());
        CHECK(MenuIsOpen(MenuKind::Create));
        Click({700, 20});  // closes the menu
    }
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.selectedFile == -1);
}

TEST_CASE("while the right button looks around the left one presses what it means") {
    StartEditor();
    PressRightAt({600, 300});
    Move({620, 300});
    Click({60, 710});
    CHECK(editorState.bottomTab == BottomTab::Files);
    Click({270, 110});
    Click({270, 140});
    CHECK(editorState.tool == Tool::Scale);
    const Point fold = ZoneAt(3);
    Click(fold);
    CHECK_FALSE(editorState.scene[2].shapeExpanded);
    const float yaw = editorState.camera.yaw;
    Move({fold.x + 20, fold.y});
    CHECK(editorState.camera.yaw == doctest::Approx(yaw + 20 * 0.0065f));
    CHECK(Held<MouseLook>());
    CHECK(headless.mouseIsCaptured);
    ReleaseRightAt({640, 300});
    CHECK(editorState.statusMessage == L"Mouse look vypnuty.");
    CHECK(NothingIsDragged());
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
}

TEST_CASE("looking around ends where the view goes: in the Project Hub and on the Blueprint screen") {
    for (const bool toHub : {true, false}) {
        const ScratchFolder folder;
        StartProject(folder);
        PutFile(FilesIn(folder) + L"\\a.blueprint", "");
        RefreshAssetList();
        const Point blueprint = FileNamed(L"a.blueprint");
        Answers({Answer::No});
        PressRightAt({600, 300});
        toHub ? Press({960, 20}) : DoubleClick(blueprint);
        REQUIRE((toHub ? editorState.hubVisible : editorState.screen == Screen::BlueprintEditor));
        CHECK(NothingIsDragged());
        const float yaw = editorState.camera.yaw;
        Move({640, 300});
        ReleaseRightAt({600, 300});
        CHECK(editorState.camera.yaw == yaw);
        CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    }
}

TEST_CASE("while something is dragged the right button does nothing") {
    for (const Point at : {RowAt(4), Point{230, 300}}) {
        StartEditor();
        Press(at);
        RightClick({600, 300});
        CHECK_FALSE(Held<MouseLook>());
        CHECK_FALSE(MenuIsOpen(MenuKind::Create));
        CHECK(headless.mouseIsCaptured);
        Release(at);
        CHECK(NothingIsDragged());
    }
}

TEST_CASE("a second press without a release starts no second drag") {
    StartEditor();
    Press({230, 300});
    Press(RowAt(4));
    CHECK(HeldEdge() == 1);
    CHECK_FALSE(Held<HierarchyDrag>());
    Release(RowAt(4));
    CHECK(NothingIsDragged());
}

TEST_CASE("losing the mouse or the focus ends a drag without effect") {
    for (void (*const lose)() : {LoseMouse, LoseFocus}) {
        StartEditor();
        const Scene scene = editorState.scene;
        Press(RowAt(4));
        Move(RowAt(2));
        lose();
        CHECK(NothingIsDragged());
        std::wstring message = editorState.statusMessage;
        Release(RowAt(2));
        CHECK(editorState.scene == scene);
        CHECK(editorState.selectedIndex == 2);
        CHECK(editorState.statusMessage == message);

        Press({230, 300});
        Move({300, 300});
        lose();
        CHECK(NothingIsDragged());
        message = editorState.statusMessage;
        Move({400, 300});
        Release({400, 300});
        CHECK(editorState.panels.hierarchyWidth == 300);
        CHECK(editorState.statusMessage == message);
    }
}

TEST_CASE("a release without a press says and does nothing") {
    StartEditor();
    Release({600, 300});
    ReleaseRightAt({600, 300});
    CHECK(editorState.statusMessage == L"untouched");
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
}

// Windows and scenes of every kind.

TEST_CASE("presses outside the window do nothing but open the Create menu") {
    StartEditor();
    const Scene scene = editorState.scene;
    for (const Point at : {Point{-1, -1},
                           {-1, 300},
                           {-32768, -32768},
                           {32767, 32767},
                           {1360, 300},
                           {600, 820},
                           {600, -1},
                           {-5, 688},
                           {1360, 688},
                           {60, -400},
                           {60, 3000}}) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        Click(at);
        DoubleClick(at);
        CHECK(editorState.statusMessage == L"untouched");
        CHECK(NothingIsDragged());
        RightClick(at);
        CHECK(MenuIsOpen(MenuKind::Create));
        CloseMenu();
        editorState.statusMessage = L"untouched";
    }
    CHECK(editorState.scene == scene);
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.panels == PanelLayout{});
}

// Uses the mouse all over the window and a little around it, and draws now and then.
static void UseEverywhere(int32_t width, int32_t height, int32_t steps) {
    for (int32_t row = -1; row <= steps; ++row) {
        for (int32_t column = -1; column <= steps; ++column) {
            const Point at{column * width / steps + row % 3, row * height / steps + column % 3};
            const Point to{at.x + 37, at.y - 23};
            Click(at);
            RightClick(at);
            DoubleClick(at);
            Drag(at, to);
            PressRightAt(at);
            Move(to);
            ReleaseRightAt(to);
            TapKey(kKeyEscape);
        }
        RenderFrame();
    }
}

TEST_CASE("windows of every size are used from edge to edge") {
    struct {
        ClientSize size;
        int32_t steps;
    } cases[] = {{{1, 1}, 2},     {{2, 3}, 2},     {{42, 42}, 3},   {{100, 50}, 4},  {{220, 300}, 6},
                 {{221, 300}, 6}, {{400, 137}, 6}, {{540, 258}, 8}, {{711, 201}, 8}, {{4000, 3000}, 3}};
    for (const auto& [size, steps] : cases) {
        CAPTURE(size.width);
        CAPTURE(size.height);
        StartEditor(size.width, size.height);
        UseEverywhere(size.width, size.height, steps);
        Press({size.width, size.height});
        Release({size.width, size.height});
        CHECK(NothingIsDragged());
        CHECK(static_cast<int32_t>(headless.pixels.size()) >= size.width * size.height);
    }
}

TEST_CASE("a window that is minimised while something is dragged keeps the drag safe") {
    StartEditor();
    Press({230, 300});
    headless.clientSize = {0, 0};
    RenderFrame();
    Move({300, 300});
    headless.clientSize = {200, 100};
    RenderFrame();
    Move({350, 310});
    Release({350, 310});
    CHECK(NothingIsDragged());
}

TEST_CASE("an empty scene takes every press") {
    StartEditor(700, 400);
    ShowScene({}, 0);
    UseEverywhere(700, 400, 6);
    for (const int32_t selected : {-1, 0, 3}) {
        StartEditor(700, 400);
        ShowScene({}, selected);
        for (const Point at : {RowAt(0), Point{450, 100}, Point{300, 100}, Point{500, 200}}) {
            Drag(at, {at.x + 9, at.y});
            DoubleClick(at);
        }
        CHECK(editorState.scene.empty());
        CHECK(editorState.undoSteps.empty());
    }
}

TEST_CASE("without a selection the Inspector takes presses and changes nothing") {
    StartEditor();
    const std::vector<HitZone> zones = editorState.inspectorZones;
    const Scene scene = editorState.scene;
    for (const int32_t selected : {-1, 6, 100}) {
        editorState.selectedIndex = selected;  // the zones are those of the frame before
        for (const HitZone& zone : zones) Click({zone.rect.left + 1, zone.rect.top + 1});
        CHECK(editorState.scene == scene);
        CHECK(editorState.undoSteps.empty());
    }
}

TEST_CASE("the rows of a frame before stay safe when their objects are gone") {
    StartEditor();
    editorState.scene.resize(2);
    for (int32_t row = 2; row < 6; ++row) {
        Click(RowAt(row));
        DoubleClick(RowAt(row));
        Drag(RowAt(0), RowAt(row));
        RightClick(RowAt(row));
        CHECK(MenuIsOpen(MenuKind::Create));
        CloseMenu();
    }
    CHECK(editorState.scene.size() == 2);
    CHECK(editorState.selectedIndex == 2);
}

// What happens between two frames, in which nobody sees the objects change.

TEST_CASE("Tab and a press before the next frame edit no object") {
    StartEditor();
    const Point remove = ZoneAt(4), name{1100, 100};
    TapKey(kKeyTab);
    const Scene before = editorState.scene;
    Click(remove);
    DoubleClick(name);
    CHECK(editorState.scene == before);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.nameEntry.kind == NameEntry::Kind::Closed);
    RenderFrame();
    DoubleClick(name);
    CHECK(editorState.nameEntry.text == L"EnemyEntity");
}

TEST_CASE("an object that has moved into the place of the one shown is not edited or selected for it") {
    struct {
        void (*change)();
        int32_t row;
    } cases[] = {
        {[] { TapKey(kKeyDelete); }, 4},
        {[] {
             Drag(RowAt(5), {0, RowAt(2).y - 12});
         },
         3},  // before the selected one
        {[] { TapWithControl('Z'); }, 2},
    };
    for (const auto& [change, row] : cases) {
        StartEditor();
        GameObject solid{.name = L"solid", .meshIndex = 0, .hasCollision = true};
        ShowScene({solid, solid, solid, solid, solid, solid}, 2);
        Click(ZoneAt(29));  // no undo step
        RenderFrame();
        if (row == 2) {
            TapKey('G');
            editorState.selectedIndex = 2;
            RenderFrame();
        }
        const Point remove = ZoneAt(4);
        change();
        editorState.selectedIndex = 2;
        editorState.statusMessage = L"untouched";
        const Scene before = editorState.scene;
        Click(remove);
        Click(RowAt(row));
        CHECK(editorState.scene == before);
        CHECK(editorState.selectedIndex == 2);
        CHECK(editorState.statusMessage == L"untouched");
        RenderFrame();
        Click(RowAt(row));
        CHECK(editorState.selectedIndex == row);
    }
}

TEST_CASE("scenes with cycles of parents and parents that are not there take every press") {
    for (const int32_t parent : {0, 1, 2, 7, -5}) {
        StartEditor(700, 400);
        ShowScene({{.name = L"a", .meshIndex = 0, .parentIndex = parent},
                   {.name = L"b", .meshIndex = 0, .parentIndex = 0},
                   {.name = L"c", .meshIndex = 0, .parentIndex = 1},
                   {.name = L"d", .meshIndex = 0}},
                  1);
        UseEverywhere(700, 400, 5);
        for (const uint32_t digit : {'1', '2', '3', '4'}) {
            TapKey(digit);
            TapWithControl('D');
            TapKey(kKeyDelete);
        }
        RenderFrame();
        for (const GameObject& object : editorState.scene) CHECK(std::isfinite(object.position.x));
        while (!editorState.undoSteps.empty()) TapWithControl('Z');
    }
}

TEST_CASE("in the game the mouse only looks around") {
    StartEditor();
    editorState.runtimeMode = editorState.playMode = true;
    RenderFrame();
    const Scene scene = editorState.scene;
    const std::wstring message = editorState.statusMessage;
    for (const Point at : {RowAt(4), Point{230, 300}, Point{260, 100}, Point{1100, 100}, Point{635, 365}}) {
        Drag(at, {at.x + 20, at.y + 20});
        DoubleClick(at);
        RightClick(at);
        CHECK(NothingIsDragged());
    }
    CHECK(editorState.scene == scene);
    CHECK(editorState.selectedIndex == 2);
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    CHECK_FALSE(MenuIsOpen(MenuKind::Object));
    CHECK(editorState.statusMessage == message);
    PressRightAt({20, 20});
    Move({120, 20});
    CHECK(editorState.camera.yaw == doctest::Approx(0.65));
    ReleaseRightAt({120, 20});
    CHECK(editorState.statusMessage == L"Mouse look vypnuty.");
}

TEST_CASE("looking up and down ends at 1.1 radians") {
    StartEditor();
    PressRightAt({600, 300});
    Move({600, -4000});
    CHECK(editorState.camera.pitch == 1.1f);
    Move({600, 9000});
    CHECK(editorState.camera.pitch == -1.1f);
}
