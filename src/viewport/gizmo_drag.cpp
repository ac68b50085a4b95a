#include "viewport/gizmo_drag.h"

#include "scene/gestures.h"
#include "scene/local_position.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/transform.h"
#include "scene/undo.h"
#include "state/editor_state.h"
#include "viewport/current_view.h"
#include "viewport/gizmo.h"

#include <algorithm>
#include <optional>

constexpr float kTurnPerUnit = 1.6f;  // radians per world unit of the drag
constexpr float kSmallestScale = 0.1f;

namespace {

// What a tool edits, and what it says.
struct ToolDrag {
    Vec3 GameObject::*field;
    const wchar_t* grabbed;
    const wchar_t* moving;
    const wchar_t* finished;
};

}  // namespace

// By Tool.
constexpr ToolDrag kToolDrags[] = {
    {&GameObject::position, L"Tahni levym tlacitkem po ose gizma pro posun objektu.",
     L"Move gizmo: posouvam vybrany objekt mysi.", L"Move gizmo dokoncil posun objektu."},
    {&GameObject::rotation, L"Tahni levym tlacitkem po ose gizma pro rotaci objektu.",
     L"Rotate gizmo: otacim vybrany objekt mysi.", L"Rotate gizmo dokoncil rotaci objektu."},
    {&GameObject::scale, L"Tahni levym tlacitkem po ose gizma pro zmenu velikosti.",
     L"Scale gizmo: menim velikost vybraneho objektu mysi.",
     L"Scale gizmo dokoncil zmenu velikosti objektu."},
};

static const ToolDrag& DragOf(Tool tool) { return kToolDrags[static_cast<size_t>(tool)]; }

bool StartGizmoDrag(Point pointer, const Rect& viewport) {
    if (ShowsGame() || !SelectionIsValid() || !HasGizmo(SelectedObject())) return false;
    if (!Contains(viewport, pointer)) return false;

    const Vec3 origin = WorldPosition(editorState.scene, editorState.selectedIndex);
    const FrameView view = CurrentView(viewport);
    const GizmoOnScreen gizmo = ProjectGizmo(origin, view.viewProjection, view.viewport);
    const std::optional<GizmoAxis> axis = GizmoAxisAt(gizmo, pointer);
    if (!axis) return false;
    if (GestureIsUnderWay()) return true;

    pushUndo("Gizmo transform");
    const Tool tool = editorState.tool;
    const ScreenCorner& tip = gizmo.tip[static_cast<size_t>(*axis)];
    StartGesture(GizmoDrag{.axis = *axis,
                           .object = editorState.selectedIndex,
                           .tool = tool,
                           .press = pointer,
                           .startValue = SelectedObject().*DragOf(tool).field,
                           .startWorldPosition = origin,
                           .screenX = tip.x - gizmo.origin.x,
                           .screenY = tip.y - gizmo.origin.y});
    SetStatus(DragOf(tool).grabbed);
    return true;
}

static Vec3 AtLeast(Vec3 v, float low) {
    return {std::max(v.x, low), std::max(v.y, low), std::max(v.z, low)};
}

static void ApplyDrag(GameObject& object, const GizmoDrag& drag, float travel) {
    const Vec3 axis = AxisDirection(drag.axis);
    switch (drag.tool) {
        case Tool::Move:
            object.position = LocalPositionUnder(editorState.scene, object.parentIndex,
                                                 drag.startWorldPosition + axis * travel);
            break;
        case Tool::Rotate: object.rotation = drag.startValue + axis * (kTurnPerUnit * travel); break;
        case Tool::Scale: object.scale = AtLeast(drag.startValue + axis * travel, kSmallestScale); break;
    }
}

void MoveGizmoDrag(const GizmoDrag& drag, Point pointer) {
    if (!SelectionIsValid() || editorState.selectedIndex != drag.object) return DropGesture();
    float travel = 0;
    if (!GizmoTravel(drag.press, pointer, drag.screenX, drag.screenY, travel)) return;
    ApplyDrag(SelectedObject(), drag, travel);
    MarkPrefabChanged();
    SetStatus(DragOf(drag.tool).moving);
}

void FinishGizmoDrag(const GizmoDrag& drag) { SetStatus(DragOf(drag.tool).finished); }
