// The Scene editor as a user has it before them: a window that shows a scene, a mouse and a keyboard.
#pragma once

#include "app/frame.h"
#include "platform/headless/headless.h"
#include "platform/window.h"
#include "render/frame_buffer.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"

#include <string>
#include <utility>

// The sample scene with "PlayerCube" (2) selected, shown once. In a window of 1360 x 820 the Hierarchy lies
// at x < 230, the Inspector at x >= 1040, both from y 42 to the bottom panel at 688.
inline void StartEditor(int32_t width = 1360, int32_t height = 820) {
    headless = HeadlessPlatform{};
    headless.clientSize = {width, height};
    ReleaseFrameBuffer();
    editorState = EditorState{};
    resetScene(true);
    editorState.statusMessage = L"untouched";
    RenderFrame();
}

// Another scene in place of the samples, likewise shown.
inline void ShowScene(Scene scene, int32_t selected) {
    editorState.scene = std::move(scene);
    editorState.selectedIndex = selected;
    RenderFrame();
}

inline void SendMouse(InputKind kind, Point at) { HandleInput({.kind = kind, .x = at.x, .y = at.y}); }

inline void Press(Point at) { SendMouse(InputKind::LeftDown, at); }
inline void Move(Point at) { SendMouse(InputKind::MouseMove, at); }
inline void Release(Point at) { SendMouse(InputKind::LeftUp, at); }
inline void PressRightAt(Point at) { SendMouse(InputKind::RightDown, at); }
inline void ReleaseRightAt(Point at) { SendMouse(InputKind::RightUp, at); }

inline void Click(Point at) {
    Press(at);
    Release(at);
}

inline void DoubleClick(Point at) {
    Click(at);
    SendMouse(InputKind::LeftDoubleClick, at);
    Release(at);
}

inline void RightClick(Point at) {
    PressRightAt(at);
    ReleaseRightAt(at);
}

inline void Drag(Point from, Point to) {
    Press(from);
    Move(to);
    Release(to);
}

inline void TapKey(uint32_t key) {
    HandleInput({.kind = InputKind::KeyDown, .key = key});
    HandleInput({.kind = InputKind::KeyUp, .key = key});
}

inline void TapWithControl(uint32_t key) {
    headless.controlIsHeld = true;
    TapKey(key);
    headless.controlIsHeld = false;
}

// As the system reports it: as Ctrl and Alt.
inline void TapWithAltGr(uint32_t key) {
    headless.controlIsHeld = headless.altIsHeld = true;
    TapKey(key);
    headless.controlIsHeld = headless.altIsHeld = false;
}

inline void Type(const std::wstring& text) {
    for (const wchar_t unit : text) HandleInput({.kind = InputKind::Character, .character = unit});
}

inline void LoseFocus() { HandleInput({.kind = InputKind::FocusLost}); }
inline void LoseMouse() { HandleInput({.kind = InputKind::CaptureLost}); }

// The centre of a row of the Hierarchy, counted from 0.
inline Point RowAt(int32_t row) { return {60, 92 + 28 * row + 9}; }

// Where the last frame drew the Inspector's first zone with an action. (-1, -1) without one.
inline Point ZoneAt(int32_t action) {
    for (const HitZone& zone : editorState.inspectorZones) {
        if (zone.action != action) continue;
        return {(zone.rect.left + zone.rect.right) / 2, (zone.rect.top + zone.rect.bottom) / 2};
    }
    return {-1, -1};
}
