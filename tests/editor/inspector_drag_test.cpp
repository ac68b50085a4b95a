// Bars and wheels of the Inspector go on setting their value while the button is held.
#include "scene/undo.h"
#include "support/editor_input.h"
#include "support/gestures.h"

#include "doctest/doctest.h"

constexpr int32_t kRoughness = 18, kColorOf = 15, kBrightness = 53, kDarkness = 54, kMass = 44;

static void StartWithColored() {
    StartEditor();
    ShowScene({{.name = L"Painted", .hasColor = true, .hasCollision = true, .hasRigidbody = true},
               {.name = L"Other"}},
              0);
}

static HitZone ZoneOf(int32_t action) {
    for (const HitZone& zone : editorState.inspectorZones) {
        if (zone.action == action) return zone;
    }
    FAIL("no zone of this action");
    return {};
}

TEST_CASE("a held bar follows the pointer to both of its ends, as one step of the history") {
    StartWithColored();
    const Rect bar = ZoneOf(kRoughness).rect;
    const Point middle = ZoneAt(kRoughness);
    Press(middle);
    CHECK(headless.mouseIsCaptured);
    const struct {
        Point to;
        float value;
    } moves[] = {{{bar.left, middle.y}, 0},
                 {{bar.left - 500, 9}, 0},
                 {{bar.right, 900}, 1},
                 {{bar.left + 39, middle.y}, 0.25f},  // the bar is 156 pixels wide
                 {{bar.left + 117, -3}, 0.75f}};
    for (const auto& [to, value] : moves) {
        CAPTURE(to);
        Move(to);
        CHECK(editorState.scene[0].roughness == value);
        CHECK(editorState.statusMessage == L"Material: nastavena matnost.");
    }
    CHECK(editorState.undoSteps.size() == 1);
    Release({bar.left, middle.y});
    CHECK_FALSE(headless.mouseIsCaptured);
    CHECK(editorState.scene[0].roughness == 0.75f);  // set by moves alone
    Move({bar.left, middle.y});
    CHECK(editorState.scene[0].roughness == 0.75f);
    undo();
    CHECK(editorState.scene[0].roughness == 0.72f);
}

TEST_CASE("a held wheel goes on from the wheel that was pressed, though a larger one is shown by now") {
    StartWithColored();
    const Rect wheel = ZoneOf(kColorOf).rect;
    const Point centre = ZoneAt(kColorOf);
    Press({centre.x + 5, centre.y});
    RenderFrame();
    REQUIRE(Width(ZoneOf(kColorOf).rect) > Width(wheel));
    Move({centre.x, centre.y});
    CHECK(editorState.scene[0].color == 0xFFFFFF);  // no saturation in the middle of the small wheel
    Move({wheel.right + 300, centre.y});
    CHECK(editorState.scene[0].color == 0xFFFF00);  // half a turn from red: cyan, at the rim and beyond
    CHECK(editorState.undoSteps.size() == 1);
}

TEST_CASE("brightness and darkness of a camera are held bars too") {
    StartEditor();
    ShowScene({{.name = L"Eye", .isCamera = true}}, 0);
    for (const auto& [action, atLeft] : {std::pair{kBrightness, 0.0f}, {kDarkness, 1.0f}}) {
        const Point at = ZoneAt(action);
        Press(at);
        Move({-100, at.y});
        CHECK(editorState.scene[0].cameraBrightness == atLeft);
        Release(at);
    }
}

TEST_CASE("a value that steps does not follow the pointer") {
    StartWithColored();
    const Point at = ZoneAt(kMass);
    Press(at);
    CHECK_FALSE(headless.mouseIsCaptured);
    const float mass = editorState.scene[0].mass;
    Move({at.x + 3, at.y});
    CHECK(editorState.scene[0].mass == mass);
}

TEST_CASE(
    "a held bar ends where it is when the mouse is lost, and when another object is selected or undone") {
    for (const auto end : {+[] { LoseMouse(); }, +[] { LoseFocus(); }, +[] { editorState.selectedIndex = 1; },
                           +[] { undo(); }}) {
        StartWithColored();
        const Rect bar = ZoneOf(kRoughness).rect;
        Press(ZoneAt(kRoughness));
        Move({bar.left, bar.top});
        end();
        const float value = editorState.scene[0].roughness;
        Move({bar.right, bar.top});
        CHECK(editorState.scene[0].roughness == value);
        CHECK(editorState.scene[1].roughness == 0.72f);
        CHECK_FALSE(headless.mouseIsCaptured);
    }
}

TEST_CASE("while the right button looks around, a press on a bar sets it once") {
    StartWithColored();
    const Rect bar = ZoneOf(kRoughness).rect;
    PressRightAt({600, 300});
    Press({bar.left, bar.top + 3});
    CHECK(editorState.scene[0].roughness == 0);
    Move({bar.right, bar.top + 3});
    CHECK(editorState.scene[0].roughness == 0);
    CHECK(Held<MouseLook>());
}
