// Moving, turning and scaling the selected object by an axis of its gizmo.
#pragma once

#include "base/rect.h"
#include "state/gesture.h"

// Grabs the axis under the pointer: one undo step. False when there is none.
bool StartGizmoDrag(Point pointer, const Rect& viewport);

// Changes the object to where the pointer is now. Ends the drag when the object is gone or another one
// selected.
void MoveGizmoDrag(const GizmoDrag& drag, Point pointer);

// Says that the drag has come to its end.
void FinishGizmoDrag(const GizmoDrag& drag);
