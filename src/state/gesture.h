// What the pointer is in the middle of while a button is held: one gesture at a time, each with what it began
// with.
#pragma once

#include "base/rect.h"
#include "base/vec3.h"
#include "state/hit_zone.h"
#include "state/modes.h"
#include "state/panel_layout.h"

#include <cstdint>
#include <optional>
#include <variant>

enum class PanelEdge : int32_t { HierarchyRight, InspectorLeft, BottomTop };
enum class GizmoAxis : int32_t { X, Y, Z };

// Dragging a panel's edge.
struct PanelResize {
    PanelEdge edge{};
    Point press{};
    PanelLayout start{};  // the sizes at the press
};

// The right button: turning the camera, or a click that opens a menu.
struct MouseLook {
    bool turnsView = false;  // the press lay inside the viewport
    bool moved = false;      // more than 5 pixels away from the press: no menu opens
    Point press{};
};

// Dragging an axis of the gizmo. Every move starts again from these values.
struct GizmoDrag {
    GizmoAxis axis{};
    int32_t object = 0;  // index of the dragged object; selecting another one ends the drag
    Tool tool{};         // that it was grabbed with
    Point press{};
    Vec3 startValue{};               // position, rotation or scale of the object, by tool
    Vec3 startWorldPosition{};       // world units
    float screenX = 0, screenY = 0;  // tip minus origin of the axis, pixels
};

// Where a dragged Hierarchy row lands.
struct DropPlace {
    int32_t target = 0;    // object index
    bool asChild = false;  // else beside the target
    bool after = false;    // else before it

    friend constexpr bool operator==(const DropPlace&, const DropPlace&) = default;
};

// A press on a Hierarchy row that may become a drag.
struct HierarchyDrag {
    int32_t source = 0;  // object index
    Point press{};
    bool dragging = false;
    std::optional<DropPlace> drop{};  // none where it cannot land
};

// A press on an item of the Files page that may become a drag.
struct FilesDrag {
    int32_t source = 0;  // index into EditorState::fileEntries
    Point press{};
    bool dragging = false;
};

// Dragging a bar or a colour wheel of the Inspector, which go on setting their value.
struct InspectorDrag {
    HitZone zone{};      // as it was drawn when it was pressed, also if another size of it is shown by now
    int32_t object = 0;  // index of the object; selecting another one ends the drag
};

// Dragging a node of the Blueprint canvas.
struct BlueprintDrag {
    int32_t node = 0;  // index into EditorState::blueprintNodes
    Point grab{};      // pointer minus node corner, pixels
};

// The first alternative: no button holds anything.
using Gesture = std::variant<std::monostate, PanelResize, MouseLook, GizmoDrag, HierarchyDrag, FilesDrag,
                             InspectorDrag, BlueprintDrag>;

// Who took the last press of the left button. A double click is its second half and has to go to the same
// place.
enum class PressTaker : int32_t { Nobody, Hub, OpenMenu, MenuOpener, Editor };
