#include "render/draw_mesh.h"

#include "render/clip_triangle.h"
#include "render/face_light.h"
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

struct Face : FaceInWorld {
    std::array<size_t, 3> index{};
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

// Faces that are each whole in view.
struct FlatFacesToDraw {
    const MeshToDraw& whole;
    std::span<const ScannedFace> faces;
    const FaceLight* lights;  // by face; null: each is found when it is needed
};

struct TexturedFacesToDraw {
    const MeshToDraw& whole;
    std::span<const ScannedFace> faces;
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

// False for a face that turns its back to the eye.
static bool SetUpFace(const Mesh& mesh, const MeshTriangle& triangle, const MeshDraw& draw, Face& face) {
    static_cast<FaceInWorld&>(face) = PlaceFace(mesh, draw, triangle);
    for (size_t c = 0; c < 3; ++c) face.index[c] = static_cast<size_t>(triangle[c]);
    return Dot(face.toEye, face.normal) > 0;
}

static std::array<TexturePoint, 3> TexturePointsOf(const Mesh& mesh, const MeshDraw& draw, const Face& face,
                                                   const AxisScales& scales) {
    std::array<TexturePoint, 3> points;
    for (size_t c = 0; c < 3; ++c) {
        const Vec3& position = mesh.vertices[face.index[c]].position;
        points[c] = TextureCoordinates(position, face.normal, scales, draw.repeat);
    }
    return points;
}

// A face that lies beyond the near plane and is wholly visible.
static ScreenFace WholeFace(const Mesh& mesh, const MeshDraw& draw, const MeshVertices& vertices,
                            const Face& face, const AxisScales& scales) {
    ScreenFace whole{.color = mesh.vertices[face.index[0]].color};
    for (size_t c = 0; c < 3; ++c) whole.corners[c] = vertices.corners[face.index[c]];
    if (draw.texture != nullptr) whole.points = TexturePointsOf(mesh, draw, face, scales);
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
        triangle[c] = {TransformToClip(draw.viewProjection, face.corners[c]), point.u, point.v, vertex.color};
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
static bool ColorOfFlatFace(const void* source, uint32_t number, Pixel& color) {
    const auto& [whole, faces, lights] = *static_cast<const FlatFacesToDraw*>(source);
    const Mesh& mesh = whole.mesh;
    const MeshDraw& draw = whole.draw;
    const uint32_t triangle = faces[number].triangle;
    const FaceLight light = lights != nullptr ? lights[number] : LightOfFace(mesh, draw, triangle);
    if (!(light.eye > 0)) return false;
    const auto vertex = static_cast<size_t>(mesh.triangles[triangle][0]);
    const float brightness = Brightness(light.light, light.halfway, draw.roughness, draw.gloss);
    color = Lit(Tinted(mesh.vertices[vertex].color, draw.tint), brightness);
    return true;
}

static bool TextureOfFace(const void* source, uint32_t number, TexturedFace& textured) {
    const auto& [whole, faces] = *static_cast<const TexturedFacesToDraw*>(source);
    const MeshDraw& draw = whole.draw;
    Face face;
    if (!SetUpFace(whole.mesh, whole.mesh.triangles[faces[number].triangle], draw, face)) return false;
    textured = {TexturePointsOf(whole.mesh, draw, face, whole.scales),
                {draw.texture, draw.repeat, draw.tint, BrightnessOf(face, draw)}};
    return true;
}

static MeshFaces FacesOf(const MeshToDraw& whole, std::span<const ScannedFace> faces) {
    return {faces, whole.mesh.triangles.data(), whole.vertices.corners.data()};
}

// Many faces are turned to the light together. That of a few waits, as the colour of each does, for its first
// pixel.
static void DrawFlatFaces(const MeshToDraw& whole, std::span<const ScannedFace> faces) {
    constexpr size_t kMany = 8;
    static std::vector<FaceLight> lights;
    const bool areMany = frameBuffer.simd == SimdLevel::Avx2 && faces.size() >= kMany;
    if (areMany) FindLightsOfFaces(whole.mesh, whole.draw, faces, lights);
    const FlatFacesToDraw source{whole, faces, areMany ? lights.data() : nullptr};
    FillTriangles(FacesOf(whole, faces), FlatFill{ColorOfFlatFace, &source});
}

static void DrawTexturedFaces(const MeshToDraw& whole, std::span<const ScannedFace> faces) {
    const TexturedFacesToDraw source{whole, faces};
    FillTriangles(FacesOf(whole, faces), TexturedFill{TextureOfFace, &source});
}

static void DrawWholeFaces(const MeshToDraw& whole, std::span<const ScannedFace> faces) {
    if (whole.draw.texture == nullptr) {
        DrawFlatFaces(whole, faces);
    } else {
        DrawTexturedFaces(whole, faces);
    }
}

static void DrawAnyFace(const MeshToDraw& whole, const ScannedFace& scanned) {
    const auto& [mesh, draw, vertices, scales] = whole;
    const MeshTriangle& triangle = mesh.triangles[scanned.triangle];
    if (IsWhole(vertices, triangle)) {
        DrawWholeFaces(whole, {&scanned, 1});
    } else {
        DrawParts(mesh, draw, vertices, scales, triangle);
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
    assert(LiesWithin(covered, frameBuffer.depthTiles.area));  // what lies outside has no depth
    const float farthest = FarthestDepth(covered);
    ScanFaces(mesh, vertices, {draw.world, draw.eye, frameBuffer.viewport, farthest}, frameBuffer.simd,
              faces);
    if (faces.empty()) return;
    PrepareDepth(covered);
    const MeshToDraw source{mesh, draw, vertices, WorldScales(draw.world)};
    if (vertices.arePlain) {
        DrawWholeFaces(source, faces);
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
