// The Inspector of a window in which one object is selected, drawn and ready to be clicked.
#pragma once

#include "editor/inspector.h"
#include "editor/layout.h"
#include "editor/panels.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/picture.h"

#include <algorithm>
#include <utility>

// The window, with the panels at their first sizes.
inline EditorLayout inspectorLayout;

inline void DrawInspectorAgain() {
    headless.texts.clear();
    DrawPanelFrames(inspectorLayout);
    DrawInspector(inspectorLayout);
    DrawBottomFrame(inspectorLayout);
}

// Draws the Inspector of `object`, the only one of its scene. In a window of 1360 x 820 the panel lies at
// 1040 <= x < 1360, 42 <= y < 688, and its content at 1050 <= x < 1350.
inline void OpenInspector(GameObject object, int32_t width = 1360, int32_t height = 820) {
    StartPicture(width, height);
    editorState = EditorState{};
    resetScene(false);
    editorState.scene = {std::move(object)};
    editorState.selectedIndex = 0;
    editorState.statusMessage = L"untouched";
    inspectorLayout = LayoutEditor(editorState.panels, width, height);
    DrawInspectorAgain();
}

inline const GameObject& InspectedObject() { return editorState.scene[0]; }

// Where the first zone with an action lies; an empty rectangle where there is none.
inline Rect ZoneOf(int32_t action) {
    const auto& zones = editorState.inspectorZones;
    const auto zone = std::ranges::find(zones, action, &HitZone::action);
    return zone == zones.end() ? Rect{} : zone->rect;
}

inline Point MiddleOf(const Rect& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

inline bool PressInspector(Point pointer) { return ClickInspector(pointer, inspectorLayout); }

// Presses the middle of the first zone with an action, and draws what has become of it.
inline bool PressZone(int32_t action) {
    const Rect zone = ZoneOf(action);
    const bool pressed = zone != Rect{} && PressInspector(MiddleOf(zone));
    DrawInspectorAgain();
    return pressed;
}

// An object with every component, a script of each kind, and no texture image loaded.
inline GameObject ObjectWithEverything() {
    return {.name = L"All",
            .meshIndex = 0,
            .hasAnimation = true,
            .isCamera = true,
            .isLight = true,
            .hasColor = true,
            .scriptCount = 3,
            .scripts = {L"Mover", L"CollectOnTouch", L"PlanePrefabSpawner"},
            .hasCollision = true,
            .hasGravitation = true,
            .hasTexture = true,
            .hasRigidbody = true,
            .isText = true};
}
