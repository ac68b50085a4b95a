// Cutting triangles at the near plane.
#pragma once

#include "base/color.h"
#include "base/matrix4.h"

#include <array>
#include <cstdint>

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
