// Which faces of a mesh may show a pixel: most faces of small or distant objects show none, half of all turn
// away, and others lie behind what was drawn.
#pragma once

#include "render/fill_rows.h"
#include "render/mesh_vertices.h"

#include <vector>

struct FaceView {
    Matrix4 world{};  // object to world space
    Vec3 eye{};       // world space
    Rect viewport{};
    float farthest = 1;  // no depth is greater where the mesh may show; 1 when nothing is known
};

// The faces that may show, in the mesh's order. Left out are only those of which it is certain that drawing
// them changes nothing: without area, without the centre of a pixel in the viewport, with their back to the
// eye, or nowhere before `farthest`. The box of a face is that inside the viewport, where no corner of it is
// cut away or hidden. Every level gives the same; `out` is replaced.
void ScanFaces(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view, SimdLevel level,
               std::vector<ScannedFace>& out);
