// Which faces of a mesh may show a pixel: most faces of small or distant objects show none, half of all turn
// away, and others lie behind what was drawn.
#pragma once

#include "render/raster/mesh_to_draw.h"
#include "render/raster/mesh_vertices.h"
#include "render/raster/simd_level.h"

#include <span>
#include <vector>

// Some faces of a mesh and the vertices that they need, each as often as it is needed.
struct MeshPart {
    std::vector<MeshVertex> vertices{};
    std::vector<MeshTriangle> triangles{};
};

// Memory for the faces of the mesh at hand, used again for the next.
struct FaceLists {
    std::vector<uint32_t> fronts{};
    std::vector<ScannedFace> shown{};
    std::vector<FaceLight> lights{};
    MeshPart few{};
};

// The first `fronts` faces of lists.fronts that may show, in their order. Left out are only those of which it
// is certain that drawing them changes nothing: without area, without the centre of a pixel in the viewport,
// or nowhere before `farthest`. The box of a face is that inside the viewport, where no corner of it is cut
// away or hidden. Every level gives the same.
std::span<const ScannedFace> ScanFaces(const MeshTriangle* triangles, const MeshVertices& vertices,
                                       const Rect& viewport, float farthest, SimdLevel level, size_t fronts,
                                       FaceLists& lists);
