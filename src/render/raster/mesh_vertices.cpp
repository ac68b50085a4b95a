#include "render/raster/mesh_vertices.h"

#include "render/raster/kernels.h"

#include <limits>

// Kernels load vertices and corners as records of four floats.
static_assert(sizeof(MeshVertex) == 16 && sizeof(ScreenCorner) == 16);

static void CopyPlainCorners(size_t count, MeshVertices& out) {
    constexpr float kNowhere = std::numeric_limits<float>::quiet_NaN();
    out.plainCorners.resize(count);
    for (size_t i = 0; i < count; ++i) {
        out.plainCorners[i] =
            out.IsPlain(i) ? out.corners[i] : ScreenCorner{kNowhere, kNowhere, kNowhere, kNowhere};
    }
}

void TransformVertices(std::span<const MeshVertex> vertices, const VertexTransform& transform,
                       SimdLevel level, MeshVertices& out) {
    const size_t count = vertices.size();
    Reserve(out.corners, count);
    Reserve(out.visible, count);
    Reserve(out.beyondNearPlane, count);
    out.extent = {.arePlain = true};
    if (count == 0) return;
    const VertexLists lists{out.corners.data(), out.visible.data(), out.beyondNearPlane.data()};
    KernelsOf(level).transformVertices(vertices.data(), count, transform, lists, out.extent);
    if (!out.extent.arePlain) CopyPlainCorners(count, out);
}
