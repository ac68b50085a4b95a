// The three axes by which the selected object is moved, turned and scaled.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"
#include "render/raster/camera.h"
#include "state/game_object.h"
#include "state/gesture.h"

#include <array>
#include <cstdint>
#include <optional>

// The gizmo on the screen, not rounded: far away an axis is a few pixels long, and a rounded one would lead a
// drag past the pointer. Axes are those of the world, X, Y and Z.
struct GizmoOnScreen {
    bool visible = false;
    ScreenCorner origin{};
    std::array<bool, 3> tipVisible{};
    std::array<ScreenCorner, 3> tip{};
};

GizmoOnScreen ProjectGizmo(Vec3 origin, const Matrix4& viewProjection, const Rect& viewport);

// `activeAxis` is the one that is dragged.
void DrawGizmo(const GizmoOnScreen& gizmo, std::optional<GizmoAxis> activeAxis);

// The axis at a point. Up to 8 pixels from the pixel of a tip on both axes, else up to 10 from the line; the
// nearest one, of equal ones the first.
std::optional<GizmoAxis> GizmoAxisAt(const GizmoOnScreen& gizmo, Point pointer);

// The unit vector of an axis.
Vec3 AxisDirection(GizmoAxis axis);

// How far along its axis a drag has come, in world units: `pointer` minus `press` along the axis's direction
// on the screen, in pixels. False when the axis has no length on the screen.
bool GizmoTravel(Point press, Point pointer, float axisX, float axisY, float& travel);

// Grabs the axis under the pointer: one undo step. False when there is none.
bool StartGizmoDrag(Point pointer, const Rect& viewport);

// Moves, turns or scales the object to where the pointer is now; with Ctrl held in steps of 0.25 units, 15
// degrees or 0.1. Ends the drag when the object is gone or another one is selected.
void MoveGizmoDrag(const GizmoDrag& drag, Point pointer);

// Says that the drag has come to its end.
void FinishGizmoDrag(const GizmoDrag& drag);
