#include "platform/headless/headless.h"
#include "platform/window.h"
#include "render/frame_buffer.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/gestures.h"

#include "doctest/doctest.h"

#include <tuple>

static void Start() {
    headless = HeadlessPlatform{};
    headless.clientSize = {1360, 820};
    ReleaseFrameBuffer();
    editorState = EditorState{};
    resetScene(true);
}

static void Send(InputKind kind, int32_t x, int32_t y) { HandleInput({.kind = kind, .x = x, .y = y}); }
static void SendKey(InputKind kind, uint32_t key, bool isRepeat = false) {
    HandleInput({.kind = kind, .key = key, .isRepeat = isRepeat});
}

TEST_CASE("a key counts as held from its press through its repeats to its release") {
    Start();
    SendKey(InputKind::KeyDown, 'W');
    CHECK(editorState.keyDown['W']);
    SendKey(InputKind::KeyDown, 'W', true);
    CHECK(editorState.keyDown['W']);
    SendKey(InputKind::KeyUp, 'W');
    CHECK_FALSE(editorState.keyDown['W']);
}

TEST_CASE("keys pressed with Ctrl never count as held") {
    Start();
    headless.controlIsHeld = true;
    SendKey(InputKind::KeyDown, 'D');
    SendKey(InputKind::KeyDown, 'D', true);
    CHECK_FALSE(editorState.keyDown['D']);
}

TEST_CASE("key codes of 256 and more are ignored") {
    Start();
    for (uint32_t key : {256u, 1000u, 0xFFFFFFFFu}) {
        SendKey(InputKind::KeyDown, key);
        SendKey(InputKind::KeyUp, key);
    }
    CHECK(editorState.keyDown == std::array<bool, 256>{});
}

TEST_CASE("Esc quits in the editor, in Play mode and in the game") {
    for (int mode = 0; mode < 3; ++mode) {
        Start();
        editorState.playMode = mode > 0;
        editorState.runtimeMode = mode > 1;
        CHECK_FALSE(headless.quitRequested);
        SendKey(InputKind::KeyDown, kKeyEscape);
        CHECK(headless.quitRequested);
    }
}

TEST_CASE("losing the focus lets go of every key and ends mouse look") {
    Start();
    SendKey(InputKind::KeyDown, 'W');
    Send(InputKind::RightDown, 600, 300);
    CHECK(headless.mouseIsCaptured);
    HandleInput({.kind = InputKind::FocusLost});
    CHECK(editorState.keyDown == std::array<bool, 256>{});
    CHECK_FALSE(Held<MouseLook>());
    CHECK_FALSE(headless.mouseIsCaptured);
}

TEST_CASE("dragging with the right button turns the camera and says so at its end") {
    Start();
    Send(InputKind::RightDown, 600, 300);
    Send(InputKind::MouseMove, 610, 295);
    CHECK(editorState.camera.yaw == doctest::Approx(0.065));
    CHECK(editorState.camera.pitch == doctest::Approx(-0.24 + 0.0325));
    Send(InputKind::MouseMove, 600, 300);
    CHECK(editorState.camera.yaw == doctest::Approx(0));
    Send(InputKind::RightUp, 600, 300);
    CHECK(editorState.statusMessage == L"Mouse look vypnuty.");
    CHECK_FALSE(headless.mouseIsCaptured);
    Send(InputKind::MouseMove, 640, 340);
    CHECK(editorState.camera.yaw == doctest::Approx(0));
}

TEST_CASE("a right drag counts as moved beyond 5 pixels") {
    for (auto [dx, dy, moved] : {std::tuple{5, 0, false}, {2, 3, false}, {-3, 3, true}, {0, -6, true}}) {
        Start();
        Send(InputKind::RightDown, 600, 300);
        Send(InputKind::MouseMove, 600 + dx, 300 + dy);
        CHECK((Held<MouseLook>() && Held<MouseLook>()->moved) == moved);
        Send(InputKind::RightUp, 600 + dx, 300 + dy);
        CHECK(editorState.statusMessage == (moved ? L"Mouse look vypnuty." : L"Otevreno Create menu."));
    }
}

TEST_CASE("a right press outside the viewport does not turn the camera") {
    Start();
    Send(InputKind::RightDown, 2600, 300);
    Send(InputKind::MouseMove, 100, 50);
    CHECK(editorState.camera.yaw == 0);
}

TEST_CASE("losing the mouse ends mouse look without a message") {
    Start();
    const std::wstring before = editorState.statusMessage;
    Send(InputKind::RightDown, 600, 300);
    Send(InputKind::MouseMove, 640, 300);
    HandleInput({.kind = InputKind::CaptureLost});
    CHECK_FALSE(Held<MouseLook>());
    Send(InputKind::RightUp, 640, 300);
    CHECK(editorState.statusMessage == before);
}

TEST_CASE("a window that needs its picture gets a frame at once") {
    Start();
    HandleInput({.kind = InputKind::Paint});
    CHECK(headless.presents == 1);
}
