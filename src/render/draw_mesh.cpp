#include "render/draw_mesh.h"

#include "render/clip_triangle.h"
#include "render/fill_triangle.h"
#include "render/frame_buffer.h"
#include "render/line.h"
#include "render/projection.h"
#include "render/surface.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <vector>

constexpr Pixel kOutline{0x56D6FF};
constexpr float kSmallestScale = 0.001f;  // of a world axis, for texture coordinates

namespace {

// A mesh's vertices after both steps, each transformed once: world positions as separate arrays, screen
// corners as records. The memory is kept from mesh to mesh.
struct TransformedVertices {
    std::vector<float> worldX{}, worldY{}, worldZ{};
    std::vector<ScreenCorner> corners{};     // only where visible
    std::vector<uint8_t> visible{};          // 1 where the projection accepted the vertex
    std::vector<uint8_t> beyondNearPlane{};  // 1 where clip z >= 0

    Vec3 World(size_t i) const { return {worldX[i], worldY[i], worldZ[i]}; }
};

// The world scale along x, y and z.
struct AxisScales {
    float x = 1, y = 1, z = 1;
};

struct Face {
    std::array<size_t, 3> index{};
    std::array<Vec3, 3> world{};
    Vec3 normal{};  // unit
    Vec3 toEye{};   // unit, from the first vertex
};

// A part of a face as it lies on the screen: all of it, or a piece of what the near plane left.
struct ScreenFace {
    std::array<ScreenCorner, 3> corners{};
    std::array<TexturePoint, 3> points{};  // only for a textured mesh
    Pixel color{};                         // of the face's first corner
};

}  // namespace

static void TransformVertices(const Mesh& mesh, const MeshDraw& draw, TransformedVertices& out) {
    const size_t count = mesh.vertices.size();
    out.worldX.resize(count);
    out.worldY.resize(count);
    out.worldZ.resize(count);
    out.corners.resize(count);
    out.visible.resize(count);
    out.beyondNearPlane.resize(count);
    for (size_t i = 0; i < count; ++i) {
        const Vec3 world = TransformPoint(draw.world, mesh.vertices[i].position);
        out.worldX[i] = world.x;
        out.worldY[i] = world.y;
        out.worldZ[i] = world.z;
        const Vec4 clip = TransformToClip(draw.viewProjection, world);
        out.beyondNearPlane[i] = clip.z >= 0;
        out.visible[i] = ProjectToViewport(clip, frameBuffer.viewport, out.corners[i]);
    }
}

static float ColumnLength(const Matrix4& a, size_t column) {
    return std::max(Length({a.m[0][column], a.m[1][column], a.m[2][column]}), kSmallestScale);
}

static AxisScales WorldScales(const Matrix4& world) {
    return {ColumnLength(world, 0), ColumnLength(world, 1), ColumnLength(world, 2)};
}

// Projects the object-space position along the axis that the face mostly looks along.
static TexturePoint TextureCoordinates(Vec3 p, Vec3 normal, const AxisScales& scales, bool repeat) {
    const float nx = std::abs(normal.x), ny = std::abs(normal.y), nz = std::abs(normal.z);
    float a = p.x, b = p.y, scaleA = scales.x, scaleB = scales.y;
    if (ny >= nx && ny >= nz) {
        b = p.z;
        scaleB = scales.z;
    } else if (nx >= nz) {
        a = p.z;
        scaleA = scales.z;
    }
    if (repeat) return {a * scaleA * 0.5f, b * scaleB * 0.5f};
    return {a * 0.5f + 0.5f, b * 0.5f + 0.5f};
}

// False for a face that turns its back to the eye.
static bool SetUpFace(const MeshTriangle& triangle, const MeshDraw& draw, const TransformedVertices& vertices,
                      Face& face) {
    for (size_t c = 0; c < 3; ++c) {
        face.index[c] = static_cast<size_t>(triangle[c]);
        assert(face.index[c] < vertices.visible.size());
        face.world[c] = vertices.World(face.index[c]);
    }
    const auto& p = face.world;
    face.normal = Normalise(Cross(p[1] - p[0], p[2] - p[0]));
    face.toEye = Normalise(draw.eye - p[0]);
    return Dot(face.toEye, face.normal) > 0;
}

// A face that lies beyond the near plane and is wholly visible.
static ScreenFace WholeFace(const Mesh& mesh, const MeshDraw& draw, const TransformedVertices& vertices,
                            const Face& face, const AxisScales& scales) {
    ScreenFace whole{.color = mesh.vertices[face.index[0]].color};
    for (size_t c = 0; c < 3; ++c) whole.corners[c] = vertices.corners[face.index[c]];
    if (draw.texture == nullptr) return whole;
    for (size_t c = 0; c < 3; ++c) {
        whole.points[c] =
            TextureCoordinates(mesh.vertices[face.index[c]].position, face.normal, scales, draw.repeat);
    }
    return whole;
}

// Cuts a face at the near plane and gives `visit` the visible triangles of the fan that is left.
template <typename Visit>
static void VisitCutFace(const Mesh& mesh, const MeshDraw& draw, const Face& face, const AxisScales& scales,
                         Visit visit) {
    std::array<ClipVertex, 3> triangle;
    for (size_t c = 0; c < 3; ++c) {
        const MeshVertex& vertex = mesh.vertices[face.index[c]];
        const TexturePoint point = TextureCoordinates(vertex.position, face.normal, scales, draw.repeat);
        triangle[c] = {TransformToClip(draw.viewProjection, face.world[c]), point.u, point.v, vertex.color};
    }
    const ClippedPolygon polygon = ClipTriangle(triangle);
    for (int32_t k = 1; k + 1 < polygon.count; ++k) {
        ScreenFace part{.color = polygon.vertices[0].color};
        bool visible = true;
        for (size_t c = 0; c < 3; ++c) {
            const ClipVertex& corner = polygon.vertices[c == 0 ? 0 : static_cast<size_t>(k) + c - 1];
            visible = visible && ProjectToViewport(corner.position, frameBuffer.viewport, part.corners[c]);
            part.points[c] = {corner.u, corner.v};
        }
        if (visible) visit(part);
    }
}

// True when the face's pixels, if any, lie outside the viewport.
static bool MissesViewport(const TransformedVertices& vertices, const Face& face) {
    const ScreenCorner& a = vertices.corners[face.index[0]];
    const ScreenCorner& b = vertices.corners[face.index[1]];
    const ScreenCorner& c = vertices.corners[face.index[2]];
    const Rect& v = frameBuffer.viewport;
    return std::max({a.x, b.x, c.x}) < static_cast<float>(v.left) ||
           std::max({a.y, b.y, c.y}) < static_cast<float>(v.top) ||
           std::min({a.x, b.x, c.x}) > static_cast<float>(v.right) ||
           std::min({a.y, b.y, c.y}) > static_cast<float>(v.bottom);
}

// Gives `visit` every face that turns its front to the eye, as parts on the screen, in the mesh's order.
template <typename Visit>
static void VisitFrontFaces(const Mesh& mesh, const MeshDraw& draw, const TransformedVertices& vertices,
                            Visit visit) {
    const AxisScales scales = WorldScales(draw.world);
    for (const MeshTriangle& triangle : mesh.triangles) {
        Face face;
        if (!SetUpFace(triangle, draw, vertices, face)) continue;

        const auto [i, j, k] = face.index;
        const bool uncut =
            vertices.beyondNearPlane[i] && vertices.beyondNearPlane[j] && vertices.beyondNearPlane[k];
        const bool visible = vertices.visible[i] && vertices.visible[j] && vertices.visible[k];
        if (!uncut) {
            VisitCutFace(mesh, draw, face, scales, [&](const ScreenFace& part) { visit(face, part); });
        } else if (visible && !MissesViewport(vertices, face)) {
            visit(face, WholeFace(mesh, draw, vertices, face, scales));
        }
    }
}

static void DrawFaces(const Mesh& mesh, const MeshDraw& draw, const TransformedVertices& vertices) {
    VisitFrontFaces(mesh, draw, vertices, [&draw](const Face& face, const ScreenFace& part) {
        const float brightness =
            FaceBrightness(face.normal, face.toEye, draw.light, draw.roughness, draw.gloss);
        if (draw.texture == nullptr) {
            FillTriangle(part.corners, Lit(Tinted(part.color, draw.tint), brightness));
        } else {
            FillTriangle(part.corners, part.points, {draw.texture, draw.repeat, draw.tint, brightness});
        }
    });
}

static Point PixelOf(const ScreenCorner& corner) {
    return {static_cast<int32_t>(corner.x), static_cast<int32_t>(corner.y)};
}

// Ignores depth, so that the selection shows through what stands before it.
static void DrawOutline(const Mesh& mesh, const TransformedVertices& vertices) {
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (size_t c = 0; c < 3; ++c) {
            const auto from = static_cast<size_t>(triangle[c]),
                       to = static_cast<size_t>(triangle[(c + 1) % 3]);
            if (!vertices.visible[from] || !vertices.visible[to]) continue;
            DrawLine(PixelOf(vertices.corners[from]), PixelOf(vertices.corners[to]), kOutline);
        }
    }
}

// The vertices of the mesh at hand, in memory that is kept from mesh to mesh.
static const TransformedVertices& Transformed(const Mesh& mesh, const MeshDraw& draw) {
    static TransformedVertices vertices;
    TransformVertices(mesh, draw, vertices);
    return vertices;
}

void DrawMesh(const Mesh& mesh, const MeshDraw& draw) {
    if (frameBuffer.pixels == nullptr) return;
    PreparePixelAccess();
    const TransformedVertices& vertices = Transformed(mesh, draw);
    DrawFaces(mesh, draw, vertices);
    if (draw.selected) DrawOutline(mesh, vertices);
}

bool MeshDepthAt(const Mesh& mesh, const MeshDraw& draw, Point pixel, float& depth) {
    bool covered = false;
    VisitFrontFaces(mesh, draw, Transformed(mesh, draw), [&](const Face&, const ScreenFace& part) {
        TriangleSetup setup;
        if (!SetUpTriangle(part.corners, setup)) return;
        covered = CoversPixel(setup, pixel, depth) || covered;
    });
    return covered;
}
