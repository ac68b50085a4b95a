// Which faces of a mesh may be visible. Most are not: half of them turn away, others lie behind what was
// drawn, and most faces of small or distant objects contain no pixel centre. A face is left out only if it
// certainly changes no pixel, and every level leaves out the same faces.
#pragma once

#include "render/raster/mesh_bounds.h"
#include "render/raster/mesh_to_draw.h"
#include "render/raster/simd_level.h"

#include <span>

EyeInObject FindEye(const Mesh& mesh, const Matrix4& world, Vec3 eye);

// A face draws nothing if the eye stands higher over its plane than this, in the measure of FindFrontFaces:
// everything that the face could cover already shows something nearer. No depth drawn there exceeds
// `farthest`. Infinite if no height is enough.
float HiddenHeight(const Mesh& mesh, const MeshPlace& place, const EyeInObject& eye, const Rect& viewport,
                   float farthest);

// Writes the indices of the faces that may turn to the eye and are not hidden to the front of `out`, in
// order, and returns how many they are. All faces when nothing is known.
size_t FindFrontFaces(const Mesh& mesh, const EyeInObject& eye, SimdLevel level, std::vector<uint32_t>& out);

// The faces among the first `fronts` of scratch.fronts that may be visible, in their order. Faces are left
// out if they have no area, contain no pixel centre of the viewport, or are nowhere nearer than `farthest`.
// Each face comes with its box inside the viewport, which means nothing if a vertex of the face is not
// plain. The result lies in `scratch`.
std::span<const ScannedFace> ScanFaces(const MeshTriangle* triangles, const MeshVertices& vertices,
                                       const Rect& viewport, float farthest, SimdLevel level, size_t fronts,
                                       MeshScratch& scratch);
