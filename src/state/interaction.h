// What the mouse and the keyboard are in the middle of. Every record is idle as constructed, and a gesture
// ends by assigning a fresh one.
#pragma once

#include "base/rect.h"
#include "base/vec3.h"
#include "state/panel_layout.h"

#include <cstdint>
#include <string>

// Dragging a panel's edge.
struct PanelResize {
    int32_t edge = 0;  // 0 none, 1 Hierarchy's right, 2 Inspector's left, 3 bottom panel's top
    Point press{};
    PanelLayout start{};  // the sizes at the press
};

// A held right button: turning the camera, or a click that opens a menu.
struct MouseLook {
    bool armed = false;
    bool moved = false;      // more than 5 pixels away from the press: no menu opens
    bool turnsView = false;  // the press lay inside the viewport
    Point press{};
};

// Dragging an axis of the gizmo. Every move recomputes from these start values.
struct GizmoDrag {
    int32_t axis = 0;     // 0 none, 1 X, 2 Y, 3 Z
    int32_t object = -1;  // that is dragged; another selection ends the drag
    int32_t tool = 0;     // that it was grabbed with
    Point press{};
    Vec3 startValue{};               // position, rotation or scale of the object, by tool
    Vec3 startWorldPosition{};       // world units
    float screenX = 0, screenY = 0;  // tip minus origin of the axis, pixels
};

// A press on a Hierarchy row that may become a drag.
struct HierarchyDrag {
    bool pressed = false;
    bool dragging = false;
    int32_t source = -1;      // object index
    int32_t dropTarget = -1;  // object index, -1 none
    bool dropAsChild = false;
    bool dropAfter = false;  // else before
    Point press{};
};

// A press on a Files item that may become a drag.
struct FilesDrag {
    bool pressed = false;
    bool dragging = false;
    int32_t source = -1;  // index into EditorState::fileEntries
    Point press{};
};

// A pop-up menu, for an object or an item where the menu is about one.
struct PopupMenu {
    bool open = false;
    Point corner{};     // top left, pixels
    int32_t item = -1;  // object, Files item or project it was opened for
};

// The box in which names and texts are typed.
struct NameEntry {
    enum class Kind { Closed, Object, File, Text };
    Kind kind = Kind::Closed;
    int32_t target = -1;  // object index, or Files item for Kind::File
    std::wstring text{};  // at most 80 units
};

// The box in which a number is typed.
struct NumberEntry {
    enum class Field { Position, Rotation, Scale, TextSize };
    bool open = false;
    int32_t target = -1;  // object index
    Field field = Field::Position;
    int32_t component = -1;  // 0 x, 1 y, 2 z; -1 for the text size
    std::wstring text{};     // at most 32 units
};

// Dragging a node of the Blueprint canvas.
struct BlueprintDrag {
    bool dragging = false;
    int32_t node = -1;
    Point grab{};  // pointer minus node corner, pixels
};
