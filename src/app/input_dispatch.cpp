// Input events become changes of the state.
#include "app/frame.h"
#include "app/frame_view.h"
#include "platform/window.h"
#include "scene/editor_camera.h"
#include "scene/editor_state.h"
#include "scene/status.h"

#include <cstdlib>

constexpr int32_t kLookThreshold = 5;  // pixels from the press that make a right click a look

static bool HasKeyState(uint32_t key) { return key < editorState.keyDown.size(); }

static void OnKeyDown(uint32_t key) {
    if (key == kKeyEscape) {
        RequestQuit();
        return;
    }
    // Keys pressed with Ctrl are commands and never count as held.
    if (HasKeyState(key) && !IsControlHeld()) editorState.keyDown[key] = true;
}

static void OnKeyUp(uint32_t key) {
    if (HasKeyState(key)) editorState.keyDown[key] = false;
}

static void OnRightDown(Point pointer) {
    editorState.mouseLook = {
        .armed = true, .turnsView = Contains(CurrentLayout().viewport, pointer), .press = pointer};
    CaptureMouse();
}

static void OnRightUp() {
    const MouseLook look = editorState.mouseLook;
    editorState.mouseLook = {};
    ReleaseMouse();
    if (look.armed && look.moved) SetStatus(L"Mouse look vypnuty.");
}

static void OnMouseMove(Point pointer) {
    const Point last = editorState.pointer;
    editorState.pointer = pointer;
    ShowArrowCursor();
    MouseLook& look = editorState.mouseLook;
    if (!look.armed) return;
    if (look.turnsView) LookWithMouse(pointer.x - last.x, pointer.y - last.y);
    const int32_t distance = std::abs(pointer.x - look.press.x) + std::abs(pointer.y - look.press.y);
    look.moved = look.moved || distance > kLookThreshold;
}

static void OnFocusLost() {
    editorState.keyDown = {};
    editorState.mouseLook = {};
    ReleaseMouse();
}

void HandleInput(const InputEvent& event) {
    const Point pointer{event.x, event.y};
    switch (event.kind) {
        case InputKind::Paint:
            RenderFrame();
            break;
        case InputKind::KeyDown:
            OnKeyDown(event.key);
            break;
        case InputKind::KeyUp:
            OnKeyUp(event.key);
            break;
        case InputKind::MouseMove:
            OnMouseMove(pointer);
            break;
        case InputKind::RightDown:
            editorState.pointer = pointer;
            OnRightDown(pointer);
            break;
        case InputKind::RightUp:
            OnRightUp();
            break;
        case InputKind::FocusLost:
            OnFocusLost();
            break;
        case InputKind::CaptureLost:
            editorState.mouseLook = {};
            break;
        case InputKind::Character:
        case InputKind::LeftDown:
        case InputKind::LeftUp:
        case InputKind::LeftDoubleClick:
        case InputKind::FilesDropped:
            break;
    }
}
