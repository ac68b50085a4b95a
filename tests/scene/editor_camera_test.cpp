#include "scene/editor_camera.h"

#include "platform/window.h"
#include "state/editor_state.h"

#include "doctest/doctest.h"

#include <cmath>

static void Start() {
    editorState = EditorState{};
    editorState.camera = {{0, 0, 0}, 0, 0};
}

static void Hold(std::initializer_list<uint32_t> keys) {
    for (uint32_t key : keys) editorState.keyDown[key] = true;
}

TEST_CASE("the editor camera starts above and behind the middle, looking slightly down") {
    editorState = EditorState{};
    CHECK(editorState.camera == CameraPose{{0, 4, -10}, 0, -0.24f});
}

TEST_CASE("mouse look turns by 0.0065 radians a pixel, up when the mouse moves up") {
    Start();
    LookWithMouse(10, -20);
    CHECK(editorState.camera.yaw == doctest::Approx(0.065));
    CHECK(editorState.camera.pitch == doctest::Approx(0.13));
}

TEST_CASE("a pitch of exactly 1.1 is kept, and a larger one becomes 1.1") {
    Start();
    editorState.camera.pitch = 1.1f;
    LookWithMouse(0, 0);
    CHECK(editorState.camera.pitch == 1.1f);
    editorState.camera.pitch = 1.2f;
    LookWithMouse(0, 0);
    CHECK(editorState.camera.pitch == 1.1f);
    editorState.camera.pitch = -1.1f;
    LookWithMouse(0, 1);
    CHECK(editorState.camera.pitch == -1.1f);
}

TEST_CASE("arrow keys turn by 1.75 radians a second") {
    struct {
        uint32_t key;
        float yaw, pitch;
    } cases[] = {{kKeyLeft, -0.07f, 0}, {kKeyRight, 0.07f, 0}, {kKeyUp, 0, 0.07f}, {kKeyDown, 0, -0.07f}};
    for (auto [key, yaw, pitch] : cases) {
        Start();
        Hold({key});
        FlyWithKeys(0.04f);
        CHECK(editorState.camera.yaw == doctest::Approx(yaw));
        CHECK(editorState.camera.pitch == doctest::Approx(pitch));
    }
    Start();
    Hold({kKeyUp});
    for (int i = 0; i < 100; ++i) FlyWithKeys(0.05f);
    CHECK(editorState.camera.pitch == 1.1f);
}

TEST_CASE("fly keys move by 4.4 units a second, level with the ground whatever the pitch") {
    struct {
        uint32_t key;
        Vec3 move;
    } cases[] = {{'W', {0, 0, 0.22f}},  {'S', {0, 0, -0.22f}},      {'D', {0.22f, 0, 0}},
                 {'A', {-0.22f, 0, 0}}, {kKeySpace, {0, 0.22f, 0}}, {kKeyShift, {0, -0.22f, 0}}};
    for (const auto& [key, move] : cases) {
        Start();
        editorState.camera.pitch = 0.9f;
        Hold({key});
        FlyWithKeys(0.05f);
        CHECK(editorState.camera.position.x == doctest::Approx(move.x));
        CHECK(editorState.camera.position.y == doctest::Approx(move.y));
        CHECK(editorState.camera.position.z == doctest::Approx(move.z));
    }
}

TEST_CASE("two fly keys move no faster than one, and opposite keys not at all") {
    Start();
    Hold({'W', 'D'});
    FlyWithKeys(0.05f);
    CHECK(Length(editorState.camera.position) == doctest::Approx(0.22));
    CHECK(editorState.camera.position.x == editorState.camera.position.z);
    // Half ahead and half aside also where the view points far down or up.
    for (float pitch : {0.9f, -1.1f}) {
        Start();
        editorState.camera.pitch = pitch;
        Hold({'W', 'D'});
        FlyWithKeys(0.05f);
        CHECK(editorState.camera.position.x == doctest::Approx(0.22 * std::sqrt(0.5)));
        CHECK(editorState.camera.position.y == 0);
        CHECK(editorState.camera.position.z == doctest::Approx(0.22 * std::sqrt(0.5)));
    }
    Start();
    Hold({'W', 'S', 'A', 'D', kKeySpace, kKeyShift});
    FlyWithKeys(0.05f);
    CHECK(editorState.camera.position == Vec3{});
}

TEST_CASE("a turned camera flies along its own directions") {
    Start();
    editorState.camera.yaw = 1.57079633f;
    Hold({'W'});
    FlyWithKeys(0.05f);
    CHECK(editorState.camera.position.x == doctest::Approx(0.22));
    CHECK(std::abs(editorState.camera.position.z) < 1e-6f);
}

TEST_CASE("focusing goes 4 units before an object and 1.4 above it, without turning") {
    Start();
    editorState.scene = {{.position{10, 0, 0}}, {.position{0, 2, 5}, .parentIndex = 0}};
    editorState.camera.yaw = 0.3f;
    editorState.camera.pitch = -0.5f;
    FocusOnObject(1);
    CHECK(editorState.camera.position.x == doctest::Approx(10 - 4 * std::sin(0.3) * std::cos(0.5)));
    CHECK(editorState.camera.position.y == doctest::Approx(3.4));
    CHECK(editorState.camera.position.z == doctest::Approx(5 - 4 * std::cos(0.3) * std::cos(0.5)));
    CHECK(editorState.camera.yaw == 0.3f);
    CHECK(editorState.camera.pitch == -0.5f);
    CHECK(editorState.statusMessage == L"Kamera priblizena na vybrany objekt.");
}
