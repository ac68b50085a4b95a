// Whole pictures of the Blueprint screen, beside them the lists of their texts.
#include "blueprint/blueprint_screen.h"
#include "editor/theme.h"
#include "render/frame_buffer.h"
#include "state/editor_state.h"
#include "support/capture.h"
#include "support/golden.h"
#include "support/picture.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

constexpr Pixel kLink{0x7DBE4B};  // and pins

// A document in a window of that size.
static void StartBlueprint(int32_t width, int32_t height, std::vector<BlueprintNode> nodes) {
    StartPicture(width, height);
    editorState = EditorState{};
    editorState.screen = Screen::BlueprintEditor;
    editorState.blueprintPath = L"C:\\Game\\Files\\Doors.blueprint";
    editorState.blueprintShownPath = L"Files\\Doors.blueprint";
    editorState.blueprintNodes = std::move(nodes);
}

static void Draw() {
    headless.texts.clear();
    DrawBlueprintScreen(LayoutBlueprint(frameBuffer.width, frameBuffer.height));
}

static bool DrawsGolden(const std::string& name) {
    Draw();
    const bool sameTexts = MatchesGoldenText(name);
    return MatchesGolden(name) && sameTexts;
}

static void OpenMenuAt(Point corner) {
    editorState.menu = PopupMenu{.kind = MenuKind::AddNode, .corner = corner};
}

static std::vector<BlueprintNode> ThreeNodes() {
    return {{1, L"Event BeginPlay", 40, 60}, {2, L"Branch", 300, 260}, {3, L"Print String", 60, 340}};
}

TEST_CASE("a Blueprint without nodes is an empty canvas between palette and details") {
    StartBlueprint(1100, 600, {});
    CHECK(DrawsGolden("blueprint_empty"));
    CHECK(CountOf(kLink) == 0);
}

TEST_CASE("one node stands alone, without a link") {
    StartBlueprint(1000, 400, {{1, L"Event BeginPlay", 130, 120}});
    CHECK(DrawsGolden("blueprint_one"));
    CHECK(CountOf(kLink) == 2 * 8 * 8);  // its pins
}

TEST_CASE("three nodes have two links, wherever they are") {
    StartBlueprint(1100, 600, ThreeNodes());
    CHECK(DrawsGolden("blueprint_three"));
}

TEST_CASE("of overlapping nodes the later ones lie on top") {
    StartBlueprint(1000, 400,
                   {{1, L"Event", 40, 60}, {2, L"Branch", 120, 90}, {3, L"Print String", 90, 150}});
    CHECK(DrawsGolden("blueprint_overlapping"));
}

TEST_CASE("the Save button is brighter while there are unsaved changes") {
    StartBlueprint(1000, 200, {});
    editorState.blueprintDirty = true;
    editorState.blueprintShownPath.clear();
    CHECK(DrawsGolden("blueprint_unsaved"));
}

TEST_CASE("the menu lies over nodes and stays in the window in each corner of the canvas") {
    StartBlueprint(900, 420, {{1, L"Event BeginPlay", 60, 60}});
    OpenMenuAt({230, 44});
    CHECK(DrawsGolden("blueprint_menu_top_left"));
    OpenMenuAt({619, 44});
    CHECK(DrawsGolden("blueprint_menu_top_right"));
    OpenMenuAt({230, 419});
    CHECK(DrawsGolden("blueprint_menu_bottom_left"));
    OpenMenuAt({619, 419});
    CHECK(DrawsGolden("blueprint_menu_bottom_right"));
    OpenMenuAt({330, 120});
    CHECK(DrawsGolden("blueprint_menu"));
}

TEST_CASE("a small window shows what fits, and the whole menu") {
    StartBlueprint(300, 200, {{1, L"Event BeginPlay", 10, 20}, {2, L"Branch", 60, 90}});
    CHECK(DrawsGolden("blueprint_small"));
    OpenMenuAt({299, 199});
    CHECK(DrawsGolden("blueprint_small_menu"));
    StartBlueprint(640, 300, {{1, L"Event BeginPlay", 88, 20}});
    CHECK(DrawsGolden("blueprint_narrow"));
}

TEST_CASE("in a big window the canvas takes what palette and details leave") {
    StartBlueprint(1920, 1080, ThreeNodes());
    CHECK(DrawsGolden("blueprint_big"));
}

TEST_CASE("long titles and paths are shortened, and nodes are cut at the canvas") {
    StartBlueprint(1000, 400,
                   {{1, L"A title that is much longer than its node is wide", 100, 60},
                    {2, std::wstring(2000, L'M'), -100, 200},
                    {3, L"Beyond the right edge", 400, 150},
                    {4, L"Under the top bar", 200, -50},
                    {5, L"Below the window", 250, 330},
                    {6, L"Far away", INT32_MAX, INT32_MIN}});
    editorState.blueprintShownPath = L"Files\\Logic\\Second floor\\A door that opens for everybody.blueprint";
    CHECK(DrawsGolden("blueprint_cut"));
}

TEST_CASE("no part of nodes, links and texts shows outside the canvas") {
    struct {
        int32_t width, height;
    } sizes[] = {{1000, 400}, {640, 300}, {300, 200}, {231, 45}, {100, 30}};
    for (const auto& [width, height] : sizes) {
        CAPTURE(width);
        StartBlueprint(width, height, {});
        headless.paintsTexts = true;
        Draw();
        const std::vector<Pixel> empty = headless.pixels;
        RandomSource random(20261121);
        for (int32_t i = 0; i < 300; ++i) {
            const bool far = random.OneIn(9);
            const auto place = [&] {
                return far ? static_cast<int32_t>(random.Bits()) : random.IntBetween(-300, 900);
            };
            const int32_t x = place(), y = place();
            editorState.blueprintNodes.push_back({1, std::wstring(60, L'W'), x, y});
        }
        Draw();
        const Rect canvas = LayoutBlueprint(width, height).canvas;
        int32_t inside = 0, outside = 0;
        for (int32_t y = 0; y < height; ++y) {
            for (int32_t x = 0; x < width; ++x) {
                const auto index = static_cast<size_t>(y * width + x);
                const bool changed = headless.pixels[index] != empty[index];
                // The number of nodes in the details differs.
                const bool isCount = x >= canvas.right + 28 && y >= 208 && y < 228;
                if (changed && !isCount) ++(Contains(canvas, {x, y}) ? inside : outside);
            }
        }
        CHECK(outside == 0);
        if (width >= 300) CHECK(inside > 1000);
    }
}

// Draws every node by itself, including what lies under others.
static std::vector<Pixel> DrawnOneByOne(const std::vector<BlueprintNode>& nodes) {
    // A document of one node shows that node alone; what it changes is laid over the picture so far.
    editorState.blueprintNodes = {};
    Draw();
    const std::vector<Pixel> empty = headless.pixels;
    std::vector<Pixel> picture = empty;
    for (const BlueprintNode& node : nodes) {
        editorState.blueprintNodes = {node};
        Draw();
        const Rect rect = NodeRect(node);
        for (int32_t y = 44; y < frameBuffer.height; ++y) {
            for (int32_t x = 230; x < 520; ++x) {
                const auto index = static_cast<size_t>(y * frameBuffer.width + x);
                const bool body = Contains(rect, {x, y});
                if (body || headless.pixels[index] != empty[index]) picture[index] = headless.pixels[index];
            }
        }
    }
    return picture;
}

TEST_CASE("leaving out what other nodes hide changes no pixel") {
    RandomSource random(20261121);
    for (int32_t run = 0; run < 20; ++run) {
        CAPTURE(run);
        StartBlueprint(520, 300, {});
        headless.paintsTexts = true;
        std::vector<BlueprintNode> nodes;
        const bool dense = random.OneIn(2);  // most of them lie under others but for a few pixels
        for (int32_t i = dense ? 60 : random.IntBetween(2, 25); i > 0; --i) {
            const int32_t x = dense ? random.IntBetween(40, 48) : random.IntBetween(-100, 260);
            const int32_t y = dense ? random.IntBetween(60, 68) : random.IntBetween(-40, 250);
            nodes.push_back({1, std::wstring(static_cast<size_t>(random.IntBetween(1, 30)), L'N'), x, y});
        }
        const std::vector<Pixel> expected = DrawnOneByOne(nodes);
        editorState.blueprintNodes = nodes;
        Draw();
        int32_t differing = 0;
        for (int32_t y = 44; y < 300; ++y) {
            for (int32_t x = 230; x < 520; ++x) {
                const auto index = static_cast<size_t>(y * 520 + x);
                // Links lie under all nodes; what they cross of the canvas and of shadows is not compared.
                if (headless.pixels[index] != kLink && headless.pixels[index] != expected[index]) ++differing;
            }
        }
        CHECK(differing == 0);
    }
}

TEST_CASE("10,000 nodes in one place are drawn as one") {
    std::vector<BlueprintNode> nodes;
    for (int32_t i = 0; i < 10000; ++i) nodes.push_back({i + 1, L"Event", 100, 100});
    StartBlueprint(1000, 400, std::move(nodes));
    Draw();
    CHECK(std::ranges::count(headless.texts, L"Event", &DrawnText::text) == 1);
    CHECK(std::ranges::count(headless.texts, L"10000", &DrawnText::text) == 1);
}

TEST_CASE("nodes off the canvas are not drawn") {
    StartBlueprint(1000, 400,
                   {{1, L"left", -195, 100},
                    {2, L"right", 490, 100},
                    {3, L"above", 100, -88},
                    {4, L"below", 100, 356},
                    {5, L"in", 460, 330}});
    Draw();
    for (const wchar_t* title : {L"left", L"right", L"above", L"below"}) {
        CHECK(std::ranges::count(headless.texts, title, &DrawnText::text) == 0);
    }
    CHECK(std::ranges::count(headless.texts, L"in", &DrawnText::text) == 1);
}

TEST_CASE("drawing changes nothing but pixels") {
    StartBlueprint(1000, 400, ThreeNodes());
    OpenMenuAt({300, 100});
    Draw();
    const std::vector<Pixel> first = headless.pixels;
    Draw();
    CHECK(headless.pixels == first);
    CHECK(editorState.blueprintNodes.size() == 3);
    CHECK_FALSE(editorState.blueprintDirty);
}
