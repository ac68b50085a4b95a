// Which faces of a mesh may be visible. Most are not: half of all turn away, others lie behind what was
// drawn, and most faces of small or distant objects hold no pixel's centre. Only what certainly changes no
// pixel is left out, and every level leaves out the same.
#pragma once

#include "render/raster/mesh_bounds.h"
#include "render/raster/mesh_to_draw.h"
#include "render/raster/simd_level.h"

#include <span>

EyeInObject FindEye(const Mesh& mesh, const Matrix4& world, Vec3 eye);

// The height of the eye over a face's plane, in the measure of FindFrontFaces, from which on the face draws
// nothing: all that it could cover shows something nearer than `farthest` then. Infinite where no height is
// enough.
float HiddenHeight(const Mesh& mesh, const MeshPlace& place, const EyeInObject& eye, const Rect& viewport,
                   float farthest);

// How many faces may turn to the eye and are not hidden. Their indices are the first of `out`, in their
// order. All faces when nothing is known.
size_t FindFrontFaces(const Mesh& mesh, const EyeInObject& eye, SimdLevel level, std::vector<uint32_t>& out);

// Those of the first `fronts` faces of scratch.fronts that may be visible, in their order. Left out are faces
// without area, without the centre of a pixel in the viewport, or nowhere before `farthest`. The box of a
// face is that inside the viewport, where no corner of it is cut away or hidden. The result lies in
// `scratch`.
std::span<const ScannedFace> ScanFaces(const MeshTriangle* triangles, const MeshVertices& vertices,
                                       const Rect& viewport, float farthest, SimdLevel level, size_t fronts,
                                       MeshScratch& scratch);
