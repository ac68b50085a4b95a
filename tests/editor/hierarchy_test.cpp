#include "editor/hierarchy.h"

#include "platform/canvas.h"
#include "render/icons.h"
#include "state/editor_state.h"
#include "support/capture.h"
#include "support/gestures.h"
#include "support/open_menu.h"
#include "support/picture.h"
#include "support/source_path.h"

#include "doctest/doctest.h"

#include <initializer_list>
#include <random>
#include <string>
#include <vector>

constexpr Pixel kBack{0x251F1C};
constexpr TextColor kTitleColor{0xE6EEEB}, kNameColor{0xDCD5CD}, kSelectedColor{0x78E2FF};

static GameObject Named(const std::wstring& name, int32_t parent = -1) {
    return {.name = name, .parentIndex = parent};
}

// root 0, its children 1 and 3, 2 below 1, root 4: rows at y 92, 120, 148, 176 and 204 with depths
// 0, 1, 2, 1 and 0.
static Scene Family() {
    return {Named(L"Root"), Named(L"First", 0), Named(L"Grandchild", 1), Named(L"Second", 0),
            Named(L"Other")};
}

static EditorLayout StartHierarchy(Scene scene = Family(), int32_t width = 1360, int32_t height = 820) {
    editorState = EditorState{};
    editorState.scene = std::move(scene);
    editorState.selectedIndex = -1;
    icons = {};
    StartPicture(width, height, kBack);
    return LayoutEditor(editorState.panels, width, height);
}

static std::vector<int32_t> ObjectsOf(const HierarchyRowList& rows) {
    std::vector<int32_t> objects;
    for (const HierarchyRow& row : rows) objects.push_back(row.objectIndex);
    return objects;
}

TEST_CASE(
    "objects are listed as a tree: parents first, siblings in scene order, 28 pixels apart from 92 on") {
    const Scene scene{Named(L"a", 2), Named(L"b"),    Named(L"c"),
                      Named(L"d", 2), Named(L"e", 0), Named(L"f", 1)};
    const HierarchyRowList rows = ListHierarchyRows(scene, false);
    CHECK(ObjectsOf(rows) == std::vector<int32_t>{1, 5, 2, 0, 4, 3});
    const int32_t depths[] = {0, 1, 0, 1, 2, 1};
    for (size_t i = 0; i < rows.size(); ++i) {
        CHECK(rows[i].depth == depths[i]);
        CHECK(rows[i].y == 92 + 28 * static_cast<int32_t>(i));
    }
}

TEST_CASE("objects without a way up to a root are not listed") {
    const Scene scene{Named(L"root"),     Named(L"itself", 1),    Named(L"cycle", 3),
                      Named(L"cycle", 2), Named(L"below", 3),     Named(L"far", 99),
                      Named(L"low", -2),  Named(L"under low", 6), Named(L"child", 0)};
    CHECK(ObjectsOf(ListHierarchyRows(scene, false)) == std::vector<int32_t>{0, 8});
}

TEST_CASE("an empty scene has no rows") { CHECK(ListHierarchyRows({}, false).empty()); }

TEST_CASE("while playing, inactive objects and all below them are left out") {
    Scene scene = Family();
    scene[1].active = false;
    CHECK(ObjectsOf(ListHierarchyRows(scene, true)) == std::vector<int32_t>{0, 3, 4});
    CHECK(ObjectsOf(ListHierarchyRows(scene, false)) == std::vector<int32_t>{0, 1, 2, 3, 4});
    CHECK(ListHierarchyRows(scene, true)[1].y == 120);
}

// The definition: every object's children are found by asking every object.
static void ListPlainly(const Scene& scene, bool isPlaying, int32_t parent, int32_t depth,
                        HierarchyRowList& rows) {
    for (int32_t i = 0; i < static_cast<int32_t>(scene.size()); ++i) {
        const GameObject& object = scene[static_cast<size_t>(i)];
        if (object.parentIndex != parent || (isPlaying && !object.active)) continue;
        rows.push_back({i, depth, 92 + 28 * static_cast<int32_t>(rows.size())});
        ListPlainly(scene, isPlaying, i, depth + 1, rows);
    }
}

TEST_CASE("one pass over the objects lists the rows that asking every object for its parent lists") {
    std::mt19937 random(20260117);
    const auto below = [&random](int32_t count) {
        return static_cast<int32_t>(random() % static_cast<uint32_t>(count));
    };
    for (int32_t round = 0; round < 300; ++round) {
        CAPTURE(round);
        const int32_t count = below(40);
        Scene scene(static_cast<size_t>(count));
        for (GameObject& object : scene) {
            object.parentIndex = below(3) == 0 ? -1 : below(count + 4) - 2;
            object.active = below(4) != 0;
        }
        for (const bool isPlaying : {false, true}) {
            HierarchyRowList plain;
            ListPlainly(scene, isPlaying, -1, 0, plain);
            const HierarchyRowList rows = ListHierarchyRows(scene, isPlaying);
            REQUIRE(ObjectsOf(rows) == ObjectsOf(plain));
            for (size_t i = 0; i < rows.size(); ++i) {
                REQUIRE(rows[i].depth == plain[i].depth);
                REQUIRE(rows[i].y == plain[i].y);
            }
        }
    }
}

TEST_CASE("a chain of 100,000 objects is listed and drawn") {
    Scene scene(100000);
    for (size_t i = 0; i < scene.size(); ++i) scene[i].parentIndex = static_cast<int32_t>(i) - 1;
    DrawHierarchy(StartHierarchy(std::move(scene)));
    REQUIRE(editorState.hierarchyRows.size() == 100000);
    CHECK(editorState.hierarchyRows.back().objectIndex == 99999);
    CHECK(editorState.hierarchyRows.back().depth == 99999);
    CHECK(editorState.hierarchyRows.back().y == 92 + 28 * 99999);
}

TEST_CASE("the panel shows its title and a name per row, 18 pixels further in per level") {
    DrawHierarchy(StartHierarchy());
    CHECK(headless.texts == std::vector<DrawnText>{
                                {16, 58, L"Hierarchy", kTitleColor, 18, 600},
                                {20, 92, L"Root", kNameColor, 15, 400},
                                {38, 120, L"First", kNameColor, 15, 400},
                                {56, 148, L"Grandchild", kNameColor, 15, 400},
                                {38, 176, L"Second", kNameColor, 15, 400},
                                {20, 204, L"Other", kNameColor, 15, 400},
                            });
    CHECK(CountOf(kBack) == 1360 * 820);
}

TEST_CASE("drawing lists the rows anew and changes nothing else") {
    const EditorLayout layout = StartHierarchy();
    editorState.hierarchyRows = {{77, 7, 7}};
    const Scene before = editorState.scene;
    DrawHierarchy(layout);
    CHECK(ObjectsOf(editorState.hierarchyRows) == std::vector<int32_t>{0, 1, 2, 3, 4});
    CHECK(editorState.scene == before);
    CHECK(editorState.selectedIndex == -1);
}

TEST_CASE("the selected row has a fill, a bar at its left and another colour of text") {
    const EditorLayout layout = StartHierarchy();
    editorState.selectedIndex = 1;  // y 120
    DrawHierarchy(layout);
    CHECK(headless.texts[2] == DrawnText{38, 120, L"First", kSelectedColor, 15, 400});
    CHECK(headless.texts[1].color == kNameColor);
    CHECK(PixelAt(9, 130) == kBack);
    for (int32_t x = 10; x < 13; ++x) CHECK(PixelAt(x, 130) == Pixel{0xE6AA50});
    CHECK(PixelAt(13, 130) == Pixel{0x62482E});
    CHECK(PixelAt(219, 130) == Pixel{0x62482E});  // 230 - 10
    CHECK(PixelAt(220, 130) == kBack);
    CHECK(PixelAt(100, 115) == kBack);
    CHECK(PixelAt(100, 116) == Pixel{0x62482E});
    CHECK(PixelAt(100, 141) == Pixel{0x62482E});
    CHECK(PixelAt(100, 142) == kBack);
    CHECK(CountOf(Pixel{0xE6AA50}) == 3 * 26);
    CHECK(CountOf(Pixel{0x62482E}) == 207 * 26);
}

TEST_CASE("a row is at least 36 pixels wide, however narrow the panel") {
    const EditorLayout before = StartHierarchy();
    editorState.selectedIndex = 0;
    EditorLayout layout = before;
    for (const int32_t width : {0, 20, 56, 57}) {
        Clear(kBack);
        layout.hierarchy.right = width;
        DrawHierarchy(layout);
        CHECK(CountOf(Pixel{0x62482E}) == (width == 57 ? 34 : 33) * 26);
    }
}

TEST_CASE("cameras, entities and lights have their icon before the name, the first kind that an object is") {
    Scene scene{Named(L"all"), Named(L"entity"), Named(L"light"), Named(L"child", 2), Named(L"plain")};
    scene[0].isCamera = scene[0].isEntity = scene[0].isLight = true;
    scene[1].isEntity = scene[1].isLight = true;
    scene[2].isLight = scene[3].isLight = true;
    const EditorLayout layout = StartHierarchy(scene);
    icons.camera = LoadCanvasImage(SourcePath(L"assets/camera.png"));
    icons.entity = LoadCanvasImage(SourcePath(L"assets/entity.png"));
    icons.light = LoadCanvasImage(SourcePath(L"assets/light.png"));
    DrawHierarchy(layout);
    icons = {};
    CHECK(headless.images == std::vector<DrawnImage>{
                                 {SourcePath(L"assets/camera.png"), {20, 90, 38, 108}},
                                 {SourcePath(L"assets/entity.png"), {20, 118, 38, 136}},
                                 {SourcePath(L"assets/light.png"), {20, 146, 38, 164}},
                                 {SourcePath(L"assets/light.png"), {38, 174, 56, 192}},
                             });
    const int32_t nameLefts[] = {44, 44, 44, 62, 20};
    for (size_t i = 0; i < 5; ++i) CHECK(headless.texts[i + 1].x == nameLefts[i]);
}

TEST_CASE("a name moves to the left where its icon is missing") {
    Scene scene{Named(L"camera")};
    scene[0].isCamera = true;
    DrawHierarchy(StartHierarchy(scene));
    CHECK(headless.images.empty());
    CHECK(headless.texts[1].x == 20);
}

TEST_CASE("a text object has a badge with a T, and no icon") {
    Scene scene{Named(L"parent"), Named(L"text", 0)};
    scene[1].isText = scene[1].isLight = true;
    const EditorLayout layout = StartHierarchy(scene);
    icons.light = LoadCanvasImage(SourcePath(L"assets/light.png"));
    DrawHierarchy(layout);
    icons = {};
    CHECK(headless.images.empty());
    REQUIRE(headless.texts.size() == 4);
    CHECK(headless.texts[2] == DrawnText{43, 118, L"T", TextColor{0xFCF8F5}, 16, 600});
    CHECK(headless.texts[3] == DrawnText{62, 120, L"text", kNameColor, 15, 400});
    CHECK(CountOf(Pixel{0x4C423A}) == 18 * 18);
    CHECK(PixelAt(38, 118) == Pixel{0x4C423A});
    CHECK(PixelAt(55, 135) == Pixel{0x4C423A});
}

TEST_CASE("rows below the window are listed and not drawn") {
    const EditorLayout layout = StartHierarchy(Scene(20, Named(L"x")), 400, 144);
    DrawHierarchy(layout);
    CHECK(editorState.hierarchyRows.size() == 20);
    CHECK(headless.texts.size() == 1 + 2);  // the third begins at 148 - 4, just below
    DrawHierarchy(StartHierarchy(Scene(20, Named(L"x")), 400, 145));
    CHECK(headless.texts.size() == 1 + 3);
}

TEST_CASE("rows run on below the panel, down to the window's edge") {
    const EditorLayout layout = StartHierarchy(Scene(100, Named(L"x")));
    editorState.selectedIndex = 25;  // y 792, in the bottom panel
    DrawHierarchy(layout);
    CHECK(headless.texts.size() == 1 + 27);  // the last one begins at 820 - 4
    CHECK(PixelAt(100, 792) == Pixel{0x62482E});
}

TEST_CASE("a row is found from 4 pixels above to 21 below its y, none between two rows") {
    StartHierarchy();
    editorState.hierarchyRows = ListHierarchyRows(editorState.scene, false);
    struct {
        int32_t y, object;
    } cases[] = {{-1000, -1}, {87, -1},  {88, 0},  {113, 0}, {114, -1}, {115, -1},   {116, 1},
                 {141, 1},    {142, -1}, {200, 4}, {225, 4}, {226, -1}, {100000, -1}};
    for (const auto& [y, object] : cases) {
        const HierarchyRow* row = HierarchyRowAt(y);
        CAPTURE(y);
        REQUIRE((row != nullptr) == (object >= 0));
        if (row) CHECK(row->objectIndex == object);
    }
    editorState.hierarchyRows.clear();
    CHECK(HierarchyRowAt(100) == nullptr);
}

TEST_CASE("an object is under a point only inside the panel, and only while it is there") {
    const EditorLayout layout = StartHierarchy(Scene(100, Named(L"x")));
    DrawHierarchy(layout);
    CHECK(HierarchyObjectAt({0, 100}, layout) == 0);
    CHECK(HierarchyObjectAt({229, 100}, layout) == 0);
    CHECK(HierarchyObjectAt({230, 100}, layout) == -1);
    CHECK(HierarchyObjectAt({-1, 100}, layout) == -1);
    CHECK(HierarchyObjectAt({100, 687}, layout) == 21);  // y 680
    CHECK(HierarchyObjectAt({100, 688}, layout) == -1);  // the bottom panel
    editorState.scene.resize(1);                         // the rows are those of the last frame
    CHECK(HierarchyObjectAt({100, 687}, layout) == -1);
    CHECK(HierarchyObjectAt({100, 100}, layout) == 0);
}

TEST_CASE("a drop is as a child in a row's centre and right of its margin, else before or after it") {
    StartHierarchy();
    editorState.hierarchyRows = ListHierarchyRows(editorState.scene, false);
    // "First" at y 120 with depth 1: its margin ends at x = 70. "Other" is dragged.
    struct {
        int32_t x, y;
        std::optional<DropPlace> place;
    } cases[] = {
        {69, 115, {}},
        {69, 116, {{1, false, false}}},
        {69, 122, {{1, false, false}}},  // y + 2
        {69, 123, {{1, true, false}}},   // y + 3
        {69, 129, {{1, true, false}}},   // y + 9
        {69, 130, {{1, true, true}}},
        {69, 135, {{1, true, true}}},   // y + 15
        {69, 136, {{1, false, true}}},  // y + 16
        {69, 141, {{1, false, true}}},
        {69, 142, {}},
        {70, 116, {{1, true, false}}},
        {70, 122, {{1, true, false}}},
        {70, 123, {{1, true, false}}},
        {70, 136, {{1, true, true}}},
        {70, 141, {{1, true, true}}},
        {-500, 116, {{1, false, false}}},
        {5000, 141, {{1, true, true}}},
        {51, 92 - 4, {{0, false, false}}},  // a root's margin ends at 52
        {52, 92 - 4, {{0, true, false}}},
        {87, 148 + 21, {{2, false, true}}},  // two levels down at 88
        {88, 148 + 21, {{2, true, true}}},
    };
    for (const auto& [x, y, place] : cases) {
        CAPTURE(x);
        CAPTURE(y);
        CHECK(HierarchyDropAt({x, y}, 4) == place);
    }
}

TEST_CASE("nothing drops onto itself or into its own subtree") {
    StartHierarchy();
    editorState.hierarchyRows = ListHierarchyRows(editorState.scene, false);
    for (const int32_t y : {92, 120, 148, 176}) CHECK(HierarchyDropAt({20, y + 9}, 0) == std::nullopt);
    CHECK(HierarchyDropAt({20, 213}, 0) == DropPlace{4, true, false});
    CHECK(HierarchyDropAt({20, 148 + 9}, 1) == std::nullopt);
    CHECK(HierarchyDropAt({20, 92 + 9}, 1).value().target == 0);   // its parent
    CHECK(HierarchyDropAt({20, 176 + 9}, 1).value().target == 3);  // its sibling
}

TEST_CASE("a row whose object is gone is no target") {
    StartHierarchy();
    editorState.hierarchyRows = {{99, 0, 92}, {-1, 0, 120}};
    CHECK(HierarchyDropAt({20, 100}, 0) == std::nullopt);
    CHECK(HierarchyDropAt({20, 128}, 0) == std::nullopt);
}

// Draws a frame and presses the left button.
static void DragHeldRow(Point pointer) {
    DragInHierarchy(std::get<HierarchyDrag>(editorState.gesture), pointer);
}

static void ReleaseHeldRow() {
    const auto drag = std::get<HierarchyDrag>(editorState.gesture);
    DropGesture();
    ReleaseHierarchy(drag);
}

static EditorLayout StartPress(Point press) {
    const EditorLayout layout = StartHierarchy();
    DrawHierarchy(layout);
    PressHierarchy(press, layout);
    return layout;
}

TEST_CASE("a press on a row remembers it, captures the mouse and says what comes next") {
    const EditorLayout layout = StartHierarchy();
    editorState.selectedIndex = 3;
    DrawHierarchy(layout);
    CHECK(PressHierarchy({100, 125}, layout));
    const auto* drag = Held<HierarchyDrag>();
    REQUIRE(drag);
    CHECK_FALSE(drag->dragging);
    CHECK(drag->source == 1);
    CHECK_FALSE(drag->drop.has_value());
    CHECK(drag->press == Point{100, 125});
    CHECK(headless.mouseIsCaptured);
    CHECK(editorState.selectedIndex == 3);  // until the button is released
    CHECK(editorState.statusMessage == L"Hierarchy: pust mys pro vyber, nebo tahni pro presun.");
}

TEST_CASE("a press on empty space of the panel is taken and does nothing") {
    const EditorLayout layout = StartHierarchy();
    DrawHierarchy(layout);
    const std::wstring message = editorState.statusMessage;
    for (const Point p : {Point{100, 60}, Point{100, 115}, Point{100, 600}}) {
        CHECK(PressHierarchy(p, layout));
        CHECK_FALSE(Held<HierarchyDrag>());
        CHECK_FALSE(headless.mouseIsCaptured);
        CHECK(editorState.statusMessage == message);
    }
}

TEST_CASE("a press beside the panel is not taken") {
    const EditorLayout layout = StartHierarchy();
    DrawHierarchy(layout);
    for (const Point p : {Point{230, 100}, Point{100, 41}, Point{100, 688}}) {
        CHECK_FALSE(PressHierarchy(p, layout));
        CHECK_FALSE(Held<HierarchyDrag>());
    }
}

TEST_CASE("a drag begins six pixels from the press, both directions added") {
    struct {
        int32_t dx, dy;
        bool drags;
    } cases[] = {{0, 0, false}, {5, 0, false}, {0, -5, false}, {-3, 2, false},
                 {6, 0, true},  {0, -6, true}, {-3, 3, true},  {100, 100, true}};
    for (const auto& [dx, dy, drags] : cases) {
        StartPress({100, 125});
        DragHeldRow({100 + dx, 125 + dy});
        CAPTURE(dx);
        CAPTURE(dy);
        CHECK(IsDragged<HierarchyDrag>() == drags);
    }
}

TEST_CASE("a drag closes the menus when it begins and says where a drop does what") {
    StartPress({100, 125});
    editorState.menu = PopupMenu{.kind = MenuKind::Create};
    DragHeldRow({105, 125});
    CHECK(MenuIsOpen(MenuKind::Create));
    DragHeldRow({106, 125});
    CHECK_FALSE(MenuIsOpen(MenuKind::Create));
    CHECK(editorState.statusMessage ==
          L"Tahni v Hierarchy: stred radku udela potomka, horni/spodni okraj meni poradi.");
}

TEST_CASE("a drag goes on near the press once it has begun, and follows the pointer") {
    StartPress({100, 213});  // "Other"
    DragHeldRow({20, 101});
    CHECK(HeldDrop() == DropPlace{0, true, false});
    DragHeldRow({20, 137});
    CHECK(HeldDrop() == DropPlace{1, false, true});
    DragHeldRow({20, 500});
    CHECK(HeldDrop() == std::nullopt);
    DragHeldRow({100, 213});
    CHECK(IsDragged<HierarchyDrag>());
    CHECK(HeldDrop() == std::nullopt);  // itself
}

TEST_CASE("releasing a row that was only pressed selects it") {
    StartPress({100, 125});
    DragHeldRow({103, 127});  // five pixels
    ReleaseHeldRow();
    CHECK(editorState.selectedIndex == 1);
    CHECK(editorState.statusMessage == L"Objekt vybran v Hierarchy.");
    CHECK_FALSE(Held<HierarchyDrag>());
    CHECK_FALSE(headless.mouseIsCaptured);
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("releasing over a target moves the object there as one step of the history") {
    StartPress({100, 213});  // "Other"
    DragHeldRow({20, 137});  // after "First", beside it
    ReleaseHeldRow();
    CHECK(editorState.statusMessage == L"Objekt byl presunut v Hierarchy.");
    CHECK(editorState.undoSteps.size() == 1);
    CHECK_FALSE(Held<HierarchyDrag>());
    CHECK_FALSE(headless.mouseIsCaptured);
    REQUIRE(editorState.selectedIndex == 2);
    CHECK(editorState.scene[2].name == L"Other");
    CHECK(editorState.scene[2].parentIndex == 0);

    StartPress({100, 213});
    DragHeldRow({20, 130});  // onto "First"
    ReleaseHeldRow();
    CHECK(editorState.statusMessage == L"Objekt byl presunut jako potomek v Hierarchy.");
    CHECK(editorState.scene[2].name == L"Other");
    CHECK(editorState.scene[2].parentIndex == 1);
}

TEST_CASE("releasing over a descendant or over no row drops nothing and selects nothing") {
    for (const int32_t y : {157, 600, 60}) {
        StartPress({100, 101});  // "Root"
        DragHeldRow({20, y});
        CHECK(HeldDrop() == std::nullopt);
        ReleaseHeldRow();
        CHECK(editorState.scene == Family());
        CHECK(editorState.selectedIndex == -1);
        CHECK(editorState.undoSteps.empty());
        CHECK_FALSE(headless.mouseIsCaptured);
    }
}

TEST_CASE("releasing after the object is gone selects and moves nothing") {
    StartPress({100, 213});
    editorState.scene.resize(2);
    ReleaseHeldRow();
    CHECK(editorState.selectedIndex == -1);

    StartPress({100, 213});
    DragHeldRow({20, 101});
    editorState.scene.resize(2);
    ReleaseHeldRow();
    CHECK(editorState.scene.size() == 2);
    CHECK(editorState.undoSteps.empty());
}

// Draws the family while its object `source` is dragged over `target`.
static void DrawDrop(int32_t source, std::optional<DropPlace> drop) {
    const EditorLayout layout = StartHierarchy();
    Hold<HierarchyDrag>({.source = source, .dragging = true, .drop = drop});
    DrawHierarchy(layout);
}

TEST_CASE("a drop as a child is shown as a fill of the whole row") {
    DrawDrop(4, DropPlace{1, true, true});
    CHECK(CountOf(Pixel{0x4C5423}) == 210 * 26);
    CHECK(PixelAt(10, 116) == Pixel{0x4C5423});
    CHECK(PixelAt(219, 141) == Pixel{0x4C5423});
    CHECK(CountOf(Pixel{0x5CD2FF}) == 0);
}

TEST_CASE("a drop beside a row is shown as a line of two pixels at its edge, indented with the row") {
    DrawDrop(4, DropPlace{1, false, false});
    CHECK(CountOf(Pixel{0x5CD2FF}) == 188 * 2);  // from 18 + 14 to 220
    CHECK(PixelAt(32, 116) == Pixel{0x5CD2FF});
    CHECK(PixelAt(219, 117) == Pixel{0x5CD2FF});
    DrawDrop(4, DropPlace{1, false, true});
    CHECK(CountOf(Pixel{0x5CD2FF}) == 188 * 2);
    CHECK(PixelAt(32, 142) == Pixel{0x5CD2FF});
    CHECK(PixelAt(219, 143) == Pixel{0x5CD2FF});
    CHECK(CountOf(Pixel{0x4C5423}) == 0);
}

TEST_CASE("without a drag or a target no place is marked") {
    DrawDrop(4, std::nullopt);
    CHECK(CountOf(kBack) == 1360 * 820);
    const EditorLayout layout = StartHierarchy();
    Hold<HierarchyDrag>({.source = 4});
    DrawHierarchy(layout);
    CHECK(CountOf(kBack) == 1360 * 820);
}
