// Which faces of a mesh lie certainly behind what was drawn, told from their planes alone.
#pragma once

#include "render/raster/front_faces.h"
#include "render/raster/mesh_bounds.h"

// The height of the eye over a face's plane, in the measure of FindFrontFaces, from which on the face draws
// nothing: all that it could cover shows something nearer than `farthest` then. Infinite where no height is
// enough.
//
// A face is hidden where the depths of its corners lie beyond `farthest` by more than rounding can take off a
// pixel's depth. Rounding takes much off a thin triangle, up to all of it, and any face may be seen so nearly
// from its side that it is thin. So a mesh is never left out for its box alone: the height of the eye over a
// face's plane says how large the face is on the screen, and only faces that are large enough are hidden. The
// few others go the usual way.
float HiddenHeight(const Mesh& mesh, const MeshPlace& place, const EyeInObject& eye, const Rect& viewport,
                   float farthest);
