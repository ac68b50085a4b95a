// Geometry: coloured vertices and the triangles between them.
#pragma once

#include "render/color.h"
#include "scene/vec3.h"

#include <array>
#include <cstdint>
#include <vector>

struct MeshVertex {
    Vec3 position{};  // object space
    Pixel color{};

    friend constexpr bool operator==(const MeshVertex&, const MeshVertex&) = default;
};

// Three vertex indices. The front is the side towards which (p1 - p0) x (p2 - p0) points.
using MeshTriangle = std::array<int32_t, 3>;

struct Mesh {
    std::vector<MeshVertex> vertices{};
    std::vector<MeshTriangle> triangles{};  // every index is a valid vertex index
};
