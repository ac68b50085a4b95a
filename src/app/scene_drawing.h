// The scene in its viewport.
#pragma once

#include "render/rect.h"

// Draws background, grid, objects, markers and gizmo as the camera of this mode sees them, in scene order:
// depth alone decides between meshes. Markers come last, over every mesh.
void DrawScene(const Rect& viewport);
