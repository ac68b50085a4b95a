// The vertices of one mesh on their way to the screen, each transformed once.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"
#include "render/projection.h"
#include "render/raster/simd_level.h"
#include "state/mesh.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// Where the corners of a mesh lie.
struct VertexExtent {
    float left = 0, top = 0, right = 0, bottom = 0;  // pixels; only when all are plain
    bool arePlain = false;                           // all of them: see MeshVertices::IsPlain
};

// By vertex, and a margin at the end of each list: see kListMargin.
struct MeshVertices {
    std::vector<ScreenCorner> corners{};     // only where visible
    std::vector<uint8_t> visible{};          // 1 where the projection accepted the vertex
    std::vector<uint8_t> beyondNearPlane{};  // 1 where clip z >= 0
    VertexExtent extent{};
    std::vector<ScreenCorner> plainCorners{};  // not a number where a vertex is not plain; see PlainCorners

    bool IsPlain(size_t i) const { return visible[i] && beyondNearPlane[i]; }

    // By vertex: as in `corners` where it is plain, else not a number.
    const ScreenCorner* PlainCorners() const {
        return extent.arePlain ? corners.data() : plainCorners.data();
    }
};

// What a kernel writes of a MeshVertices.
struct VertexLists {
    ScreenCorner* corners = nullptr;
    uint8_t* visible = nullptr;
    uint8_t* beyondNearPlane = nullptr;
};

// How the vertices of a mesh are transformed: to the world, then to the screen.
struct VertexTransform {
    Matrix4 world{};
    Matrix4 viewProjection{};
    Rect viewport{};
};

// Replaces what `out` holds; its memory is used again. Every level gives the same bits.
void TransformVertices(std::span<const MeshVertex> vertices, const VertexTransform& transform,
                       SimdLevel level, MeshVertices& out);
