#include "render/raster/placed_mesh.h"

#include "base/limit.h"
#include "render/raster/kernels.h"

#include <algorithm>
#include <cmath>
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

// Each vertex is transformed once, however many faces share it. In most meshes every vertex is plain, that
// is between the near plane and the end of the depth range, and the corners are used as they are. For
// other meshes a second list gives every vertex that is not plain a corner that is not a number. It fails
// every comparison of the scan, which therefore keeps the face for the exact tests.
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

// ---- The near plane. It cuts few faces, those that reach past the eye. They are cut one by one in clip
// space, because the division by w would turn what lies behind the eye inside out.

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

bool IsWhole(const MeshVertices& vertices, const MeshTriangle& triangle) {
    return std::ranges::all_of(triangle, [&](int32_t i) { return vertices.IsPlain(i); });
}

static bool LiesBeyondNearPlane(const MeshVertices& vertices, const MeshTriangle& triangle) {
    return std::ranges::all_of(triangle, [&](int32_t i) { return vertices.beyondNearPlane[i] != 0; });
}

static TexturePoint TexturePointOf(const PlacedMesh& placed, int32_t vertex, Vec3 normal) {
    return TextureCoordinates(placed.vertexList[vertex].position, normal, placed.scales, placed.draw.repeat);
}

static void AddWholeFace(const PlacedMesh& placed, const MeshTriangle& triangle, FaceParts& found) {
    FacePart& whole = found.parts[found.count++];
    whole.color = placed.vertexList[triangle[0]].color;
    for (size_t c = 0; c < 3; ++c) {
        whole.corners[c] = placed.vertices.corners[triangle[c]];
        whole.points[c] = TexturePointOf(placed, triangle[c], found.face.normal);
    }
}

// The near plane leaves a triangle or a quad, which is drawn as a fan around its first vertex. A triangle
// of the fan with a corner that is not visible is not drawn at all.
static void AddCutFace(const PlacedMesh& placed, const MeshTriangle& triangle, FaceParts& found) {
    std::array<ClipVertex, 3> uncut;
    for (size_t c = 0; c < 3; ++c) {
        const TexturePoint point = TexturePointOf(placed, triangle[c], found.face.normal);
        uncut[c] = {TransformToClip(placed.draw.viewProjection, found.face.corners[c]), point.u, point.v,
                    placed.vertexList[triangle[c]].color};
    }
    const ClippedPolygon polygon = ClipTriangle(uncut);
    for (int32_t k = 1; k + 1 < polygon.count; ++k) {
        FacePart part{.color = polygon.vertices[0].color};
        bool visible = true;
        for (size_t c = 0; c < 3; ++c) {
            const ClipVertex& corner = polygon.vertices[c == 0 ? 0 : static_cast<size_t>(k) + c - 1];
            visible = visible && ProjectToViewport(corner.position, placed.viewport, part.corners[c]);
            part.points[c] = {corner.u, corner.v};
        }
        if (visible) found.parts[found.count++] = part;
    }
}

FaceParts PartsOf(const PlacedMesh& placed, const MeshTriangle& triangle) {
    FaceParts found{.face = PlaceFace(placed.vertexList.data(), triangle, placed.draw)};
    if (!(Dot(found.face.toEye, found.face.normal) > 0)) return found;
    if (!LiesBeyondNearPlane(placed.vertices, triangle)) {
        AddCutFace(placed, triangle, found);
    } else if (IsWhole(placed.vertices, triangle)) {
        AddWholeFace(placed, triangle, found);
    }
    return found;
}
