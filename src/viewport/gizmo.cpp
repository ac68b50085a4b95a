#include "viewport/gizmo.h"

#include "platform/window.h"
#include "render/frame_buffer.h"
#include "render/raster/camera.h"
#include "render/raster/line.h"
#include "scene/interaction.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/transform.h"
#include "scene/undo.h"
#include "state/editor_state.h"
#include "viewport/scene_view.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

constexpr float kAxisLength = 1.25f;       // world units
constexpr int32_t kTipReach = 8;           // pixels around a tip that grab it
constexpr float kLineReach = 10;           // pixels around a line that grab it
constexpr float kShortestSegment = 0.01f;  // pixels; shorter ones count as a point
constexpr float kShortestAxis = 0.0001f;   // square pixels
constexpr Pixel kOriginMark{0x78E2FF};

namespace {

struct AxisColors {
    Pixel idle{}, active{};
};

}  // namespace

constexpr GizmoAxis kAxes[] = {GizmoAxis::X, GizmoAxis::Y, GizmoAxis::Z};

// By GizmoAxis.
constexpr AxisColors kAxisColors[] = {
    {Pixel{0x4A4BEB}, Pixel{0x808AFF}},
    {Pixel{0x76D25F}, Pixel{0x7EECA0}},
    {Pixel{0xF59152}, Pixel{0xFFB47E}},
};

Vec3 AxisDirection(GizmoAxis axis) {
    return {axis == GizmoAxis::X ? 1.0f : 0.0f, axis == GizmoAxis::Y ? 1.0f : 0.0f,
            axis == GizmoAxis::Z ? 1.0f : 0.0f};
}

GizmoOnScreen ProjectGizmo(Vec3 origin, const Matrix4& viewProjection, const Rect& viewport) {
    const auto project = [&](Vec3 point, ScreenCorner& corner) {
        return ProjectToViewport(TransformToClip(viewProjection, point), viewport, corner);
    };
    GizmoOnScreen gizmo;
    gizmo.visible = project(origin, gizmo.origin);
    if (!gizmo.visible) return gizmo;
    for (const GizmoAxis axis : kAxes) {
        const auto i = static_cast<size_t>(axis);
        gizmo.tipVisible[i] = project(origin + AxisDirection(axis) * kAxisLength, gizmo.tip[i]);
    }
    return gizmo;
}

static Point PixelOf(const ScreenCorner& corner) {
    return {static_cast<int32_t>(corner.x), static_cast<int32_t>(corner.y)};
}

// A square of 2 * reach + 1 pixels.
static void FillSquare(Point centre, int32_t reach, Pixel color) {
    FillRect({centre.x - reach, centre.y - reach, centre.x + reach + 1, centre.y + reach + 1}, color);
}

// Axis by axis, each as a line with a square at its tip, and the square of the origin over all three. An axis
// whose tip cannot be projected is left out and cannot be grabbed either.
void DrawGizmo(const GizmoOnScreen& gizmo, std::optional<GizmoAxis> activeAxis) {
    if (!gizmo.visible) return;
    for (const GizmoAxis axis : kAxes) {
        const auto i = static_cast<size_t>(axis);
        if (!gizmo.tipVisible[i]) continue;
        const Pixel color = activeAxis == axis ? kAxisColors[i].active : kAxisColors[i].idle;
        DrawLine(PixelOf(gizmo.origin), PixelOf(gizmo.tip[i]), color);
        FillSquare(PixelOf(gizmo.tip[i]), 4, color);
    }
    FillSquare(PixelOf(gizmo.origin), 5, kOriginMark);
}

static float DistanceToSegment(Point p, const ScreenCorner& a, const ScreenCorner& b) {
    const float px = static_cast<float>(p.x) - a.x, py = static_cast<float>(p.y) - a.y;
    const float dx = b.x - a.x, dy = b.y - a.y;
    const float squared = dx * dx + dy * dy;
    if (std::sqrt(squared) < kShortestSegment) return std::sqrt(px * px + py * py);
    const float t = std::clamp((px * dx + py * dy) / squared, 0.0f, 1.0f);
    const float ex = px - t * dx, ey = py - t * dy;
    return std::sqrt(ex * ex + ey * ey);
}

static float DistanceToAxis(Point pointer, const ScreenCorner& origin, const ScreenCorner& tip) {
    const Point square = PixelOf(tip);  // around which it is drawn
    const bool isAtTip =
        std::abs(pointer.x - square.x) <= kTipReach && std::abs(pointer.y - square.y) <= kTipReach;
    return isAtTip ? 0 : DistanceToSegment(pointer, origin, tip);
}

// The nearest axis within reach. At its tip an axis counts as hit exactly; where several are equally near, as
// around the origin, the first has it.
std::optional<GizmoAxis> GizmoAxisAt(const GizmoOnScreen& gizmo, Point pointer) {
    std::optional<GizmoAxis> found;
    if (!gizmo.visible) return found;
    float nearest = kLineReach;
    for (const GizmoAxis axis : kAxes) {
        const auto i = static_cast<size_t>(axis);
        if (!gizmo.tipVisible[i]) continue;
        const float distance = DistanceToAxis(pointer, gizmo.origin, gizmo.tip[i]);
        if (distance < nearest || (!found && distance <= nearest)) {
            nearest = distance;
            found = axis;
        }
    }
    return found;
}

// The pointer's way is projected onto the axis as the screen shows it: what goes across the axis does not
// count, and the pointer stays on what it grabbed however near or far the object is.
bool GizmoTravel(Point press, Point pointer, float axisX, float axisY, float& travel) {
    const float squared = axisX * axisX + axisY * axisY;
    if (!(squared > kShortestAxis)) return false;
    const auto dx = static_cast<float>(pointer.x - press.x), dy = static_cast<float>(pointer.y - press.y);
    travel = (dx * axisX + dy * axisY) / squared * kAxisLength;
    return true;
}

constexpr float kTurnPerUnit = 1.6f;  // radians per world unit of the drag
constexpr float kSmallestScale = 0.1f;
// With Ctrl held.
constexpr float kMoveStep = 0.25f;       // world units
constexpr float kTurnStep = 0.2617994f;  // 15 degrees in radians
constexpr float kScaleStep = 0.1f;

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

// The drag keeps the object's values of its beginning, and every move starts from them again: rounding errors
// do not add up, and the way back leads to the same place.
bool StartGizmoDrag(Point pointer, const Rect& viewport) {
    if (ShowsGame() || !SelectionIsValid() || !HasPlace(SelectedObject())) return false;
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

// With Ctrl held a drag goes in whole steps from where it began.
static float InSteps(float amount, float step) {
    return IsControlHeld() ? std::round(amount / step) * step : amount;
}

// Moving goes along the world's axis, so the new place is turned back into the space of the object's parent.
// Turning and scaling change the object's own values by the axis of the same name.
static void ApplyDrag(GameObject& object, const GizmoDrag& drag, float travel) {
    const Vec3 axis = AxisDirection(drag.axis);
    switch (drag.tool) {
        case Tool::Move:
            object.position = LocalPositionUnder(editorState.scene, object.parentIndex,
                                                 drag.startWorldPosition + axis * InSteps(travel, kMoveStep));
            break;
        case Tool::Rotate:
            object.rotation = drag.startValue + axis * InSteps(kTurnPerUnit * travel, kTurnStep);
            break;
        case Tool::Scale:
            object.scale = AtLeast(drag.startValue + axis * InSteps(travel, kScaleStep), kSmallestScale);
            break;
    }
}

void MoveGizmoDrag(const GizmoDrag& drag, Point pointer) {
    if (!SelectionIsValid() || editorState.selectedIndex != drag.object) return DropGesture();
    float travel = 0;
    if (!GizmoTravel(drag.press, pointer, drag.screenX, drag.screenY, travel)) return;
    ApplyDrag(SelectedObject(), drag, travel);
    MarkChanged();
    SetStatus(DragOf(drag.tool).moving);
}

void FinishGizmoDrag(const GizmoDrag& drag) { SetStatus(DragOf(drag.tool).finished); }
