#include "render/raster/face_scan.h"

#include "render/raster/kernels.h"

#include <algorithm>

std::span<const ScannedFace> ScanFaces(const MeshTriangle* triangles, const MeshVertices& vertices,
                                       const Rect& viewport, float farthest, SimdLevel level, size_t fronts,
                                       FaceLists& lists) {
    if (fronts == 0) return {};
    Reserve(lists.shown, fronts);
    std::fill_n(lists.fronts.begin() + static_cast<ptrdiff_t>(fronts), kListMargin, lists.fronts[fronts - 1]);
    const FacesToScan scan{triangles, vertices.PlainCorners(), lists.fronts.data(), fronts, viewport,
                           farthest};
    return {lists.shown.data(), KernelsOf(level).scanFaces(scan, lists.shown.data())};
}
