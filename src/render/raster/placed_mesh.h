// A mesh on the screen: its transformed vertices, and its faces, whole or cut at the near plane.
#pragma once

#include "render/raster/face_ink.h"
#include "render/raster/mesh_to_draw.h"
#include "render/raster/simd_level.h"

#include <array>
#include <span>

// Replaces what `out` holds and uses its memory again. Every level gives the same bits.
void TransformVertices(std::span<const MeshVertex> vertices, const VertexTransform& transform,
                       SimdLevel level, MeshVertices& out);

struct ClipVertex {
    Vec4 position{};     // clip space
    float u = 0, v = 0;  // texture coordinates
    Pixel color{};

    friend constexpr bool operator==(const ClipVertex&, const ClipVertex&) = default;
};

// Up to four vertices in the order of the triangle's edges. The first one carries the face's colour.
struct ClippedPolygon {
    std::array<ClipVertex, 4> vertices{};
    int32_t count = 0;  // 0, 3 or 4
};

// The part of a triangle with z >= 0 (the near plane), by Sutherland and Hodgman: edge by edge v0-v1, v1-v2,
// v2-v0.
ClippedPolygon ClipTriangle(const std::array<ClipVertex, 3>& triangle);

// A mesh whose vertices have been transformed.
struct PlacedMesh {
    std::span<const MeshVertex> vertexList;
    std::span<const MeshTriangle> triangles;
    const MeshDraw& draw;
    const MeshVertices& vertices;
    AxisScales scales;
    Rect viewport;
    SimdLevel level;
};

// True when all vertices of the face are plain: nothing has to be cut off.
bool IsWhole(const MeshVertices& vertices, const MeshTriangle& triangle);

// A triangle of a face as it lies on the screen.
struct FacePart {
    std::array<ScreenCorner, 3> corners{};
    std::array<TexturePoint, 3> points{};  // only of use for a textured mesh
    Pixel color{};                         // of the face's first corner
};

// The parts of a face on the screen: the face itself, or up to two triangles if the near plane cuts it. No
// parts if the face turns its back to the eye. A triangle that reaches beyond the range of depths is left
// out.
struct FaceParts {
    FaceInWorld face{};
    std::array<FacePart, 2> parts{};
    size_t count = 0;
};
FaceParts PartsOf(const PlacedMesh& placed, const MeshTriangle& triangle);
