#include "render/draw_mesh.h"

#include "render/clip_triangle.h"
#include "render/face_scan.h"
#include "render/fill_triangle.h"
#include "render/frame_buffer.h"
#include "render/line.h"
#include "render/mesh_bounds.h"
#include "render/mesh_vertices.h"
#include "render/projection.h"
#include "render/surface.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <span>
#include <vector>

constexpr Pixel kOutline{0x56D6FF};
constexpr float kSmallestScale = 0.001f;  // of a world axis, for texture coordinates

namespace {

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

// What the faces of a mesh are drawn with.
struct MeshToDraw {
    const Mesh& mesh;
    const MeshDraw& draw;
    const MeshVertices& vertices;
    AxisScales scales;
};

}  // namespace

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

// Both vectors at length 1, as Normalise makes them, at the price of one.
static void NormaliseBoth(Vec3& a, Vec3& b) {
    const __m128 x = _mm_setr_ps(a.x, b.x, 1, 1), y = _mm_setr_ps(a.y, b.y, 0, 0),
                 z = _mm_setr_ps(a.z, b.z, 0, 0);
    const __m128 squares = _mm_add_ps(_mm_add_ps(_mm_mul_ps(x, x), _mm_mul_ps(y, y)), _mm_mul_ps(z, z));
    const __m128 length = _mm_sqrt_ps(squares);
    const __m128 isZero = _mm_cmple_ps(length, _mm_set1_ps(kZeroLength));
    alignas(16) float unit[3][4];
    _mm_store_ps(unit[0], _mm_andnot_ps(isZero, _mm_div_ps(x, length)));
    _mm_store_ps(unit[1], _mm_andnot_ps(isZero, _mm_div_ps(y, length)));
    _mm_store_ps(unit[2], _mm_andnot_ps(isZero, _mm_div_ps(z, length)));
    a = {unit[0][0], unit[1][0], unit[2][0]};
    b = {unit[0][1], unit[1][1], unit[2][1]};
}

// False for a face that turns its back to the eye.
static bool SetUpFace(const Mesh& mesh, const MeshTriangle& triangle, const MeshDraw& draw, Face& face) {
    for (size_t c = 0; c < 3; ++c) {
        face.index[c] = static_cast<size_t>(triangle[c]);
        assert(face.index[c] < mesh.vertices.size());
        face.world[c] = TransformPoint(draw.world, mesh.vertices[face.index[c]].position);
    }
    const auto& p = face.world;
    face.normal = Cross(p[1] - p[0], p[2] - p[0]);
    face.toEye = draw.eye - p[0];
    NormaliseBoth(face.normal, face.toEye);
    return Dot(face.toEye, face.normal) > 0;
}

// A face that lies beyond the near plane and is wholly visible.
static ScreenFace WholeFace(const Mesh& mesh, const MeshDraw& draw, const MeshVertices& vertices,
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

// True when all of the face is in view and nothing of it has to be cut.
static bool IsWhole(const MeshVertices& vertices, const MeshTriangle& triangle) {
    return std::ranges::all_of(triangle,
                               [&vertices](int32_t i) { return vertices.IsPlain(static_cast<size_t>(i)); });
}

static bool LiesBeyondNearPlane(const MeshVertices& vertices, const MeshTriangle& triangle) {
    return std::ranges::all_of(
        triangle, [&vertices](int32_t i) { return vertices.beyondNearPlane[static_cast<size_t>(i)] != 0; });
}

// Gives `visit` the parts of a face on the screen. None of a face that turns its back to the eye.
template <typename Visit>
static void VisitParts(const Mesh& mesh, const MeshDraw& draw, const MeshVertices& vertices,
                       const AxisScales& scales, const MeshTriangle& triangle, Visit visit) {
    Face face;
    if (!SetUpFace(mesh, triangle, draw, face)) return;
    if (!LiesBeyondNearPlane(vertices, triangle)) {
        VisitCutFace(mesh, draw, face, scales, [&](const ScreenFace& part) { visit(face, part); });
    } else if (IsWhole(vertices, triangle)) {
        visit(face, WholeFace(mesh, draw, vertices, face, scales));
    }
}

static float BrightnessOf(const Face& face, const MeshDraw& draw) {
    return FaceBrightness(face.normal, face.toEye, draw.light, draw.roughness, draw.gloss);
}

static void DrawParts(const Mesh& mesh, const MeshDraw& draw, const MeshVertices& vertices,
                      const AxisScales& scales, const MeshTriangle& triangle) {
    VisitParts(mesh, draw, vertices, scales, triangle, [&draw](const Face& face, const ScreenFace& part) {
        const float brightness = BrightnessOf(face, draw);
        if (draw.texture == nullptr) {
            FillTriangle(part.corners, Lit(Tinted(part.color, draw.tint), brightness));
        } else {
            FillTriangle(part.corners, part.points, {draw.texture, draw.repeat, draw.tint, brightness});
        }
    });
}

// False for a face that turns its back to the eye.
static bool ColorOfFlatFace(const void* source, uint32_t triangle, Pixel& color) {
    const auto& [mesh, draw, vertices, scales] = *static_cast<const MeshToDraw*>(source);
    Face face;
    if (!SetUpFace(mesh, mesh.triangles[triangle], draw, face)) return false;
    color = Lit(Tinted(mesh.vertices[face.index[0]].color, draw.tint), BrightnessOf(face, draw));
    return true;
}

// Their cull tests and their lights wait for their first pixels. Every face lies whole in view.
static void DrawFlatFaces(const MeshToDraw& source, std::span<const ScannedFace> faces) {
    FillTriangles(
        {faces, source.mesh.triangles.data(), source.vertices.corners.data(), {ColorOfFlatFace, &source}});
}

static void DrawTexturedFace(const MeshToDraw& source, const ScannedFace& scanned) {
    const auto& [mesh, draw, vertices, scales] = source;
    Face face;
    if (!SetUpFace(mesh, mesh.triangles[scanned.triangle], draw, face)) return;
    const ScreenFace part = WholeFace(mesh, draw, vertices, face, scales);
    FillTriangle(part.corners, scanned.box, part.points,
                 {draw.texture, draw.repeat, draw.tint, BrightnessOf(face, draw)});
}

static void DrawAnyFace(const MeshToDraw& source, const ScannedFace& scanned) {
    const auto& [mesh, draw, vertices, scales] = source;
    const MeshTriangle& triangle = mesh.triangles[scanned.triangle];
    if (!IsWhole(vertices, triangle)) {
        DrawParts(mesh, draw, vertices, scales, triangle);
    } else if (draw.texture == nullptr) {
        DrawFlatFaces(source, {&scanned, 1});
    } else {
        DrawTexturedFace(source, scanned);
    }
}

// The pixels of the viewport that the mesh may show. All of them where a vertex is not plain.
static Rect CoveredPixels(const MeshVertices& vertices) {
    const Rect& viewport = frameBuffer.viewport;
    if (!vertices.arePlain) return viewport;
    return {std::max(viewport.left, static_cast<int32_t>(std::floor(vertices.left))),
            std::max(viewport.top, static_cast<int32_t>(std::floor(vertices.top))),
            std::min(static_cast<int32_t>(std::ceil(vertices.right)) + 1, viewport.right),
            std::min(static_cast<int32_t>(std::ceil(vertices.bottom)) + 1, viewport.bottom)};
}

static void DrawFaces(const Mesh& mesh, const MeshDraw& draw, const MeshVertices& vertices) {
    static std::vector<ScannedFace> faces;
    const Rect covered = CoveredPixels(vertices);
    if (Width(covered) <= 0 || Height(covered) <= 0) return;
    const float farthest = FarthestDepth(covered);
    ScanFaces(mesh, vertices, {draw.world, draw.eye, frameBuffer.viewport, farthest}, frameBuffer.simd,
              faces);
    if (faces.empty()) return;
    PrepareDepth(covered);
    const MeshToDraw source{mesh, draw, vertices, WorldScales(draw.world)};
    if (vertices.arePlain && draw.texture == nullptr) {
        DrawFlatFaces(source, faces);
    } else {
        for (const ScannedFace& face : faces) DrawAnyFace(source, face);
    }
    DepthChanged(covered);
}

static Point PixelOf(const ScreenCorner& corner) {
    return {static_cast<int32_t>(corner.x), static_cast<int32_t>(corner.y)};
}

// Ignores depth, so that the selection shows through what stands before it.
static void DrawOutline(const Mesh& mesh, const MeshVertices& vertices) {
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (size_t c = 0; c < 3; ++c) {
            const auto from = static_cast<size_t>(triangle[c]),
                       to = static_cast<size_t>(triangle[(c + 1) % 3]);
            if (!vertices.visible[from] || !vertices.visible[to]) continue;
            DrawLine(PixelOf(vertices.corners[from]), PixelOf(vertices.corners[to]), kOutline);
        }
    }
}

static VertexTransform TransformOf(const MeshDraw& draw) {
    return {draw.world, draw.viewProjection, frameBuffer.viewport};
}

// The vertices of the mesh at hand, in memory that is kept from mesh to mesh.
static const MeshVertices& Transformed(const Mesh& mesh, const MeshDraw& draw) {
    static MeshVertices vertices;
    TransformVertices(mesh, TransformOf(draw), frameBuffer.simd, vertices);
    return vertices;
}

void DrawMesh(const Mesh& mesh, const MeshDraw& draw) {
    if (frameBuffer.pixels == nullptr || (!draw.selected && IsBesideView(mesh, TransformOf(draw)))) return;
    PreparePixelAccess();
    const MeshVertices& vertices = Transformed(mesh, draw);
    DrawFaces(mesh, draw, vertices);
    if (draw.selected) DrawOutline(mesh, vertices);
}

bool MeshDepthAt(const Mesh& mesh, const MeshDraw& draw, Point pixel, float& depth) {
    if (IsBesideView(mesh, TransformOf(draw))) return false;
    bool covered = false;
    const MeshVertices& vertices = Transformed(mesh, draw);
    const AxisScales scales = WorldScales(draw.world);
    for (const MeshTriangle& triangle : mesh.triangles) {
        VisitParts(mesh, draw, vertices, scales, triangle, [&](const Face&, const ScreenFace& part) {
            TriangleSetup setup;
            if (!SetUpTriangle(part.corners, setup)) return;
            covered = CoversPixel(setup, pixel, depth) || covered;
        });
    }
    return covered;
}
