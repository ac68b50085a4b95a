// Moving, turning and scaling the selected object by an axis of its gizmo.
#pragma once

#include "base/rect.h"

// Grabs the axis under the pointer: one undo step. False when there is none.
bool StartGizmoDrag(Point pointer, const Rect& viewport);

// Changes the object to where the pointer is now. Ends the drag when the object is gone.
void MoveGizmoDrag(Point pointer);

// Ends the drag and says so. Nothing without a drag.
void FinishGizmoDrag();
