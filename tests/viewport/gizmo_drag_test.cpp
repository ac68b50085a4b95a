#include "app/current_layout.h"
#include "render/raster/camera.h"
#include "support/capture.h"
#include "support/editor_input.h"
#include "support/gestures.h"
#include "viewport/scene_view.h"

#include "doctest/doctest.h"

#include <cmath>
#include <string>
#include <utility>

// The camera stands 10 units before the world's origin and looks straight at it, so that the pictures of the
// axes can be worked out by hand: the viewport is 810 x 646 pixels, 1.25 units at this distance are 1.25 / 10
// / tan(35 degrees) * 646 / 2 = 57.66 pixels.
constexpr Point kOrigin{635, 365};  // also the tip of Z, which points away from the camera
constexpr Point kTipX{692, 365};
constexpr Point kTipY{635, 307};
constexpr int32_t kWay = 57;  // pixels that a drag goes
constexpr float kTravel =
    kWay * 10 * 0.70020754f / 323;  // 1.2357 world units: tan 35 degrees, 646 / 2 pixels

static bool IsNear(Vec3 a, Vec3 b) { return Length(a - b) < 0.0001f; }

static void StartWith(Scene scene, int32_t selected) {
    StartEditor();
    editorState.camera.position = {0, 0, -10};
    editorState.camera.yaw = 0;
    editorState.camera.pitch = 0;
    ShowScene(std::move(scene), selected);
}

static GameObject Cube() { return {.name = L"Cube", .meshIndex = 0}; }
static void StartWithCube() { StartWith({Cube()}, 0); }

static const GameObject& Dragged() { return editorState.scene[0]; }

TEST_CASE("a press grabs an axis within its reach and no further") {
    struct {
        Point at;
        int32_t axis;
    } cases[] = {
        {kTipX, 1},
        {{kTipX.x + 8, kTipX.y - 8}, 1},  // in the tip's square, 11.3 pixels from the line
        {{kTipX.x + 8, kTipX.y + 8}, 1},
        {{kTipX.x + 9, kTipX.y - 8}, 0},  // beside the square, 12 pixels from the line
        {{kTipX.x + 9, kTipX.y + 8}, 0},
        {{kTipX.x + 10, kTipX.y}, 1},  // behind the tip, 10 pixels
        {{kTipX.x + 11, kTipX.y}, 0},
        {{663, kOrigin.y + 9}, 1},  // beside the line
        {{663, kOrigin.y + 10}, 1},
        {{663, kOrigin.y + 11}, 0},
        {{663, kOrigin.y - 10}, 1},
        {{663, kOrigin.y - 11}, 0},
        {kTipY, 2},
        {{kTipY.x - 8, kTipY.y - 8}, 2},
        {{kTipY.x - 8, kTipY.y - 9}, 0},
        {{kTipY.x - 9, kTipY.y - 8}, 0},
        {{kTipY.x - 10, 340}, 2},
        {{kTipY.x - 11, 340}, 0},
        {kOrigin, 1},  // all three begin here: the first
        {{635, 375}, 1},
        {{635, 376}, 0},
        {{645, 345}, 2},  // 10 pixels from Y, 20 from X
        {{655, 355}, 1},  // 10 pixels from X, 20 from Y
    };
    for (const auto& [at, axis] : cases) {
        CAPTURE(at.x);
        CAPTURE(at.y);
        StartWithCube();
        Press(at);
        CHECK(HeldAxis() == axis);
        CHECK(headless.mouseIsCaptured == (axis != 0));
        CHECK(editorState.undoSteps.size() == (axis != 0 ? 1 : 0));
    }
}

TEST_CASE("the axis that is held is drawn in its bright colour until it is let go") {
    StartWithCube();
    const auto pixelAt = [](Point p) { return headless.pixels[static_cast<size_t>(p.y * 1360 + p.x)]; };
    CHECK(pixelAt(kTipX) == Pixel{0x4A4BEB});
    Press(kTipX);
    RenderFrame();
    CHECK(pixelAt(kTipX) == Pixel{0x808AFF});
    CHECK(pixelAt(kTipY) == Pixel{0x76D25F});
    Release(kTipX);
    RenderFrame();
    CHECK(pixelAt(kTipX) == Pixel{0x4A4BEB});
}

TEST_CASE("each tool changes its own field by the way along the axis, and says what it does") {
    struct {
        uint32_t key;
        Vec3 position, rotation, scale;
        const wchar_t *grabbed, *moving, *finished;
    } cases[] = {
        {kKeyF1,
         {kTravel, 0, 0},
         {},
         {1, 1, 1},
         L"Tahni levym tlacitkem po ose gizma pro posun objektu.",
         L"Move gizmo: posouvam vybrany objekt mysi.",
         L"Move gizmo dokoncil posun objektu."},
        {kKeyF2,
         {},
         {1.6f * kTravel, 0, 0},
         {1, 1, 1},
         L"Tahni levym tlacitkem po ose gizma pro rotaci objektu.",
         L"Rotate gizmo: otacim vybrany objekt mysi.",
         L"Rotate gizmo dokoncil rotaci objektu."},
        {kKeyF3,
         {},
         {},
         {1 + kTravel, 1, 1},
         L"Tahni levym tlacitkem po ose gizma pro zmenu velikosti.",
         L"Scale gizmo: menim velikost vybraneho objektu mysi.",
         L"Scale gizmo dokoncil zmenu velikosti objektu."},
    };
    for (const auto& [key, position, rotation, scale, grabbed, moving, finished] : cases) {
        StartWithCube();
        TapKey(key);
        Press(kTipX);
        CHECK(editorState.statusMessage == grabbed);
        const Point to{kTipX.x + kWay, kTipX.y + 200};  // what goes across the axis does not count
        Move(to);
        CHECK(editorState.statusMessage == moving);
        CHECK(IsNear(Dragged().position, position));
        CHECK(IsNear(Dragged().rotation, rotation));
        CHECK(IsNear(Dragged().scale, scale));
        Release(to);
        CHECK(editorState.statusMessage == finished);
        CHECK_FALSE(headless.mouseIsCaptured);
        Move({300, 300});
        CHECK(IsNear(Dragged().position, position));
    }
}

TEST_CASE("with Ctrl held a drag goes in steps of 0.25 units, 15 degrees and 0.1") {
    constexpr float kDegrees15 = 3.14159265f / 12;
    struct {
        uint32_t key;
        int32_t way;  // pixels; 46.13 of them are a world unit, 1.6 radians
        Vec3 position, rotation, scale;
    } cases[] = {
        {kKeyF1, 5, {0, 0, 0}, {}, {1, 1, 1}},                // 0.11 units
        {kKeyF1, 7, {0.25f, 0, 0}, {}, {1, 1, 1}},            // 0.15
        {kKeyF1, 57, {1.25f, 0, 0}, {}, {1, 1, 1}},           // 1.24
        {kKeyF1, -18, {-0.5f, 0, 0}, {}, {1, 1, 1}},          // -0.39
        {kKeyF2, 3, {}, {0, 0, 0}, {1, 1, 1}},                // 6 degrees
        {kKeyF2, 5, {}, {kDegrees15, 0, 0}, {1, 1, 1}},       // 9.9
        {kKeyF2, 57, {}, {8 * kDegrees15, 0, 0}, {1, 1, 1}},  // 113.3
        {kKeyF3, 2, {}, {}, {1, 1, 1}},                       // 0.04
        {kKeyF3, 3, {}, {}, {1.1f, 1, 1}},                    // 0.07
        {kKeyF3, -57, {}, {}, {0.1f, 1, 1}},                  // no less than 0.1
    };
    for (const auto& [key, way, position, rotation, scale] : cases) {
        CAPTURE(key);
        CAPTURE(way);
        StartWithCube();
        TapKey(key);
        Press(kTipX);
        headless.controlIsHeld = true;
        Move({kTipX.x + way, kTipX.y});
        CHECK(IsNear(Dragged().position, position));
        CHECK(IsNear(Dragged().rotation, rotation));
        CHECK(IsNear(Dragged().scale, scale));
        headless.controlIsHeld = false;
        Move({kTipX.x + kWay, kTipX.y});
        const float value = key == kKeyF1   ? Dragged().position.x
                            : key == kKeyF2 ? Dragged().rotation.x / 1.6f
                                            : Dragged().scale.x - 1;
        CHECK(value == doctest::Approx(kTravel));  // without Ctrl nothing is rounded
    }
}

TEST_CASE("a drag depends on where the pointer is and not on its way there") {
    StartWithCube();
    Press(kTipX);
    for (const Point on : {Point{-500, 900}, {4000, 3}, {kTipX.x + kWay, 2}, {-1, -1}}) Move(on);
    CHECK(Dragged().position.x < -10);
    Move(kTipX);
    CHECK(Dragged().position == Vec3{});
    Move({kTipX.x - kWay, kTipX.y});
    CHECK(IsNear(Dragged().position, {-kTravel, 0, 0}));
    CHECK(editorState.undoSteps.size() == 1);
}

// Where a point of the world lies in the viewport, not rounded.
static ScreenCorner OnScreen(Vec3 world) {
    const Rect viewport = CurrentLayout().viewport;
    ScreenCorner corner;
    REQUIRE(
        ProjectToViewport(TransformToClip(CurrentView(viewport).viewProjection, world), viewport, corner));
    return corner;
}

TEST_CASE("what was grabbed of an axis stays under the pointer, however near or far the object is") {
    for (const float distance : {2.5f, 4.0f, 9.3f, 17.0f, 31.7f, 55.5f, 80.0f, 97.0f}) {
        for (const int32_t axis : {1, 2}) {
            CAPTURE(distance);
            CAPTURE(axis);
            StartWith({{.name = L"Cube", .position{0.137f, 0.071f, 0}, .meshIndex = 0}}, 0);
            editorState.camera.position.z = -distance;
            const Vec3 along = axis == 1 ? Vec3{1.25f, 0, 0} : Vec3{0, 1.25f, 0};
            const ScreenCorner before = OnScreen(Dragged().position + along);
            // Seven pixels behind the tip, where no other axis is so near.
            const Point press{static_cast<int32_t>(before.x) + (axis == 1 ? 7 : 0),
                              static_cast<int32_t>(before.y) - (axis == 2 ? 7 : 0)};
            Press(press);
            REQUIRE(HeldAxis() == axis);
            for (const int32_t way : {-200, -90, 1, 33, 150, 250}) {
                CAPTURE(way);
                const Point by{axis == 1 ? way : 0, axis == 2 ? way : 0};
                Move({press.x + by.x, press.y + by.y});
                const ScreenCorner now = OnScreen(Dragged().position + along);
                CHECK(std::abs(now.x - before.x - static_cast<float>(by.x)) < 0.5f);
                CHECK(std::abs(now.y - before.y - static_cast<float>(by.y)) < 0.5f);
            }
            Release(press);
        }
    }
}

TEST_CASE("scaling raises every component to a tenth at least") {
    StartWith({{.scale{1, 0.05f, -3}, .meshIndex = 0}}, 0);
    editorState.tool = Tool::Scale;
    Press(kTipX);
    Move({kTipX.x - 4 * kWay, kTipX.y});
    CHECK(Dragged().scale == Vec3{0.1f, 0.1f, 0.1f});
}

TEST_CASE("a child moves by the way in the world, whatever its parent does to it") {
    // The parent doubles and shifts: the way in the world is half as long under it.
    StartWith(
        {{.position{1, 0, 0}, .scale{2, 2, 2}}, {.position{-0.5f, 0, 0}, .meshIndex = 0, .parentIndex = 0}},
        1);
    Press(kTipX);
    Move({kTipX.x + kWay, kTipX.y});
    CHECK(IsNear(editorState.scene[1].position, {-0.5f + kTravel / 2, 0, 0}));
    CHECK(editorState.scene[0].position == Vec3{1, 0, 0});
}

TEST_CASE("a child of a parent without size moves by its distance from the parent") {
    StartWith({{.scale{0, 0, 0}}, {.position{7, 7, 7}, .meshIndex = 0, .parentIndex = 0}}, 1);
    Press(kTipX);
    Move({kTipX.x + kWay, kTipX.y});
    CHECK(IsNear(editorState.scene[1].position, {kTravel, 0, 0}));
}

TEST_CASE("whatever has a role is dragged without a mesh, what has none is not") {
    const GameObject markers[] = {
        {.isEntity = true}, {.isCamera = true}, {.isLight = true}, {.isText = true}};
    for (const GameObject& marker : markers) {
        StartWith({marker}, 0);
        Drag(kTipX, {kTipX.x + kWay, kTipX.y});
        CHECK(IsNear(Dragged().position, {kTravel, 0, 0}));
    }
    StartWith({{.name = L"Nothing"}}, 0);
    Press(kTipX);
    CHECK(HeldAxis() == 0);
}

TEST_CASE("an object behind the camera is not grabbed") {
    StartWithCube();
    editorState.scene[0].position.z = -20;
    Press(kOrigin);
    CHECK(HeldAxis() == 0);
}

TEST_CASE("an axis is grabbed inside the viewport only") {
    StartWithCube();
    // Beside the viewport's right edge the tip lies under the Inspector.
    editorState.scene[0].position.x = 8;
    RenderFrame();
    Press({1050, 365});
    CHECK(HeldAxis() == 0);
    Release({1050, 365});
    Press({1030, 365});
    CHECK(HeldAxis() == 1);
}

TEST_CASE("nothing is grabbed while playing and without a selection") {
    StartWithCube();
    TapKey('P');
    Press(kTipX);
    CHECK(HeldAxis() == 0);
    for (const int32_t selected : {-1, 1, 700}) {
        StartWithCube();
        editorState.selectedIndex = selected;
        Press(kTipX);
        CHECK(HeldAxis() == 0);
        CHECK(editorState.undoSteps.empty());
    }
}

// Two objects in one place after the protected two.
static void StartDragOfFour() {
    StartWith({{.name = L"Camera"}, {.name = L"Light"}, Cube(), {.name = L"Behind", .meshIndex = 0}}, 2);
    Press(kTipX);
    Move({kTipX.x + kWay, kTipX.y});
    REQUIRE(IsNear(editorState.scene[2].position, {kTravel, 0, 0}));
}

TEST_CASE("deleting the object half way ends the drag and leaves the next object where it is") {
    StartDragOfFour();
    TapKey(kKeyDelete);
    REQUIRE(editorState.scene.size() == 3);
    CHECK_FALSE(headless.mouseIsCaptured);
    Move({900, 100});
    Release({900, 100});
    CHECK(editorState.scene[2].name == L"Behind");
    CHECK(editorState.scene[2].position == Vec3{});
    CHECK(editorState.statusMessage == L"Vybrany objekt byl smazan.");
}

TEST_CASE("undoing half way puts the object back and ends the drag") {
    StartDragOfFour();
    TapWithControl('Z');
    CHECK(editorState.scene[2].position == Vec3{});
    CHECK_FALSE(headless.mouseIsCaptured);
    Move({900, 100});
    Release({900, 100});
    CHECK(editorState.scene[2].position == Vec3{});
    CHECK(editorState.statusMessage == L"Ctrl+Z: posledni zmena sceny byla vracena.");
}

TEST_CASE("playing half way ends the drag") {
    StartDragOfFour();
    TapKey('P');
    CHECK_FALSE(headless.mouseIsCaptured);
    Move({900, 100});
    CHECK(IsNear(editorState.scene[2].position, {kTravel, 0, 0}));
}

TEST_CASE("selecting something else half way ends the drag at the next move") {
    for (const uint32_t key : {uint32_t{kKeyTab}, uint32_t{'1'}, uint32_t{'G'}}) {
        StartDragOfFour();
        TapKey(key);
        Move({900, 100});
        CHECK(HeldAxis() == 0);
        CHECK_FALSE(headless.mouseIsCaptured);
        CHECK(IsNear(editorState.scene[2].position, {kTravel, 0, 0}));
        CHECK(editorState.scene[3].position == Vec3{});
    }
}

TEST_CASE("changing the tool half way goes on with the tool of the grab") {
    StartDragOfFour();
    TapKey(kKeyF3);
    Move({kTipX.x - kWay, kTipX.y});
    CHECK(IsNear(editorState.scene[2].position, {-kTravel, 0, 0}));
    CHECK(editorState.scene[2].scale == Vec3{1, 1, 1});
    Release(kTipX);
    CHECK(editorState.statusMessage == L"Move gizmo dokoncil posun objektu.");
}

TEST_CASE("losing the mouse or the focus ends a drag where it is, without a message") {
    for (void (*const lose)() : {LoseMouse, LoseFocus}) {
        StartDragOfFour();
        const std::wstring before = editorState.statusMessage;
        lose();
        CHECK(HeldAxis() == 0);
        CHECK_FALSE(headless.mouseIsCaptured);
        Move({900, 100});
        Release({900, 100});
        CHECK(IsNear(editorState.scene[2].position, {kTravel, 0, 0}));
        CHECK(editorState.statusMessage == before);
    }
}

TEST_CASE("one undo takes a whole drag back") {
    StartDragOfFour();
    Move({500, 500});
    Release({500, 500});
    TapWithControl('Z');
    CHECK(editorState.scene[2].position == Vec3{});
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("objects in a cycle of parents are dragged without an end being looked for") {
    for (const auto& [first, second] : {std::pair{0, 1}, {1, 0}}) {
        StartWith({{.meshIndex = 0, .parentIndex = first}, {.meshIndex = 0, .parentIndex = second}}, 0);
        for (Point at{kOrigin.x - 60, kOrigin.y - 60}; at.x < kOrigin.x + 80; at.x += 8, at.y += 8) {
            Drag(at, {at.x + 30, at.y + 30});
            Drag({at.x, kOrigin.y}, {at.x + 30, at.y + 30});
        }
        CHECK(editorState.scene[0].parentIndex == first);
        CHECK(editorState.scene[1].parentIndex == second);
    }
}
