#include "render/raster/clip_triangle.h"

#include "base/limit.h"

#include <cmath>

constexpr float kSmallestRise = 1e-6f;  // below it an edge counts as parallel to the plane

static bool IsInside(const ClipVertex& vertex) { return vertex.position.z >= 0; }

static float Between(float a, float b, float t) { return a + t * (b - a); }

static Pixel ColorBetween(Pixel a, Pixel b, float t) {
    uint32_t color = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const auto from = static_cast<float>(static_cast<uint32_t>(a) >> shift & 0xFF);
        const auto to = static_cast<float>(static_cast<uint32_t>(b) >> shift & 0xFF);
        color |= static_cast<uint32_t>(Between(from, to, t)) << shift;
    }
    return Pixel{color};
}

// Where the edge from a to b meets the plane.
static ClipVertex Crossing(const ClipVertex& a, const ClipVertex& b) {
    const Vec4 p = a.position, q = b.position;
    const float rise = p.z - q.z;
    const float t = std::abs(rise) > kSmallestRise ? Limit(p.z / rise, 0.0f, 1.0f) : 0.0f;
    return {{Between(p.x, q.x, t), Between(p.y, q.y, t), Between(p.z, q.z, t), Between(p.w, q.w, t)},
            Between(a.u, b.u, t),
            Between(a.v, b.v, t),
            ColorBetween(a.color, b.color, t)};
}

ClippedPolygon ClipTriangle(const std::array<ClipVertex, 3>& triangle) {
    ClippedPolygon polygon;
    const auto append = [&polygon](const ClipVertex& vertex) { polygon.vertices[polygon.count++] = vertex; };
    for (int i = 0; i < 3; ++i) {
        const ClipVertex& a = triangle[i];
        const ClipVertex& b = triangle[(i + 1) % 3];
        if (IsInside(a)) append(a);
        if (IsInside(a) != IsInside(b)) append(Crossing(a, b));
    }
    return polygon;
}
