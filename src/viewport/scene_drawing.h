// The scene in its viewport.
#pragma once

#include "viewport/scene_view.h"

// Draws background, grid, objects, markers and gizmo as the camera of this mode sees them, in scene order:
// depth alone decides between meshes. Markers come last, over every mesh. All of it
// stays within the view's viewport, where the depths must be far.
void DrawScene(const FrameView& view);
