#include "render/raster/draw_mesh.h"

#include "render/frame_buffer.h"
#include "render/line.h"
#include "render/projection.h"
#include "render/raster/clip_triangle.h"
#include "render/raster/face_ink.h"
#include "render/raster/face_scan.h"
#include "render/raster/fill_triangle.h"
#include "render/raster/front_faces.h"
#include "render/raster/hidden_faces.h"
#include "render/raster/kernels.h"
#include "render/raster/mesh_bounds.h"
#include "render/raster/mesh_vertices.h"
#include "render/raster/surface.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <span>
#include <vector>

constexpr Pixel kOutline{0x56D6FF};

// With fewer than one face to so many vertices, the faces' own vertices are transformed in place of all.
constexpr size_t kFewFronts = 5;

namespace {

// A part of a face as it lies on the screen: all of it, or a piece of what the near plane left.
struct ScreenFace {
    std::array<ScreenCorner, 3> corners{};
    std::array<TexturePoint, 3> points{};  // only for a textured mesh
    Pixel color{};                         // of the face's first corner
};

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

}  // namespace

// ---- Faces that are cut at the near plane, and single ones that are picked: part by part.

static bool LiesBeyondNearPlane(const MeshVertices& vertices, const MeshTriangle& triangle) {
    return std::ranges::all_of(triangle, [&](int32_t i) { return vertices.beyondNearPlane[i] != 0; });
}

// True when all of the face is in view and nothing of it has to be cut.
static bool IsWhole(const MeshVertices& vertices, const MeshTriangle& triangle) {
    return std::ranges::all_of(triangle, [&](int32_t i) { return vertices.IsPlain(i); });
}

static ScreenFace WholeFace(const PlacedMesh& placed, const MeshTriangle& triangle, const FaceInWorld& face) {
    const auto& [list, triangles, draw, vertices, scales, viewport, level] = placed;
    ScreenFace whole{.color = list[triangle[0]].color};
    for (size_t c = 0; c < 3; ++c) {
        const Vec3& position = list[triangle[c]].position;
        whole.corners[c] = vertices.corners[triangle[c]];
        whole.points[c] = TextureCoordinates(position, face.normal, scales, draw.repeat);
    }
    return whole;
}

// Cuts a face at the near plane and gives `visit` the visible triangles of the fan that is left.
template <typename Visit>
static void VisitCutFace(const PlacedMesh& placed, const MeshTriangle& triangle, const FaceInWorld& face,
                         Visit visit) {
    const auto& [list, triangles, draw, vertices, scales, viewport, level] = placed;
    std::array<ClipVertex, 3> uncut;
    for (size_t c = 0; c < 3; ++c) {
        const MeshVertex& vertex = list[triangle[c]];
        const TexturePoint point = TextureCoordinates(vertex.position, face.normal, scales, draw.repeat);
        uncut[c] = {TransformToClip(draw.viewProjection, face.corners[c]), point.u, point.v, vertex.color};
    }
    const ClippedPolygon polygon = ClipTriangle(uncut);
    for (int32_t k = 1; k + 1 < polygon.count; ++k) {
        ScreenFace part{.color = polygon.vertices[0].color};
        bool visible = true;
        for (size_t c = 0; c < 3; ++c) {
            const ClipVertex& corner = polygon.vertices[c == 0 ? 0 : static_cast<size_t>(k) + c - 1];
            visible = visible && ProjectToViewport(corner.position, viewport, part.corners[c]);
            part.points[c] = {corner.u, corner.v};
        }
        if (visible) visit(part);
    }
}

// Gives `visit` the parts of a face on the screen. None of a face that turns its back to the eye.
template <typename Visit>
static void VisitParts(const PlacedMesh& placed, const MeshTriangle& triangle, Visit visit) {
    const auto& [list, triangles, draw, vertices, scales, viewport, level] = placed;
    const FaceInWorld face = PlaceFace(list.data(), triangle, draw);
    if (!(Dot(face.toEye, face.normal) > 0)) return;
    if (!LiesBeyondNearPlane(vertices, triangle)) {
        VisitCutFace(placed, triangle, face, [&](const ScreenFace& part) { visit(face, part); });
    } else if (IsWhole(vertices, triangle)) {
        visit(face, WholeFace(placed, triangle, face));
    }
}

static void DrawParts(const PlacedMesh& placed, const MeshTriangle& triangle) {
    const MeshDraw& draw = placed.draw;
    VisitParts(placed, triangle, [&draw](const FaceInWorld& face, const ScreenFace& part) {
        const float brightness =
            FaceBrightness(face.normal, face.toEye, draw.light, draw.roughness, draw.gloss);
        if (draw.texture == nullptr) {
            FillTriangle(part.corners, Lit(Tinted(part.color, draw.tint), brightness));
        } else {
            FillTriangle(part.corners, part.points, {draw.texture, draw.repeat, draw.tint, brightness});
        }
    });
}

// ---- The others: all faces of a mesh together.

static MeshToDraw FacesToDraw(const PlacedMesh& placed, std::span<const ScannedFace> faces) {
    const auto& [list, triangles, draw, vertices, scales, viewport, level] = placed;
    MeshToDraw whole{&draw, list.data(), triangles.data(), vertices.corners.data(), scales};
    whole.isTextured = draw.texture != nullptr;
    if (whole.isTextured) whole.texture = SourceOf(*draw.texture, draw.repeat, draw.tint);
    whole.findInk = whole.isTextured ? FindTexturedInk : FindFlatInk;
    whole.faces = faces.data();
    whole.faceCount = faces.size();
    return whole;
}

// Turns many flat faces to the light together. That of a few waits, as the colour of each does, for its first
// pixel.
static void LightManyFaces(MeshToDraw& mesh, SimdLevel level, FaceLists& lists) {
    const RasterKernels& kernels = KernelsOf(level);
    if (mesh.isTextured || kernels.lanes == 1 || mesh.faceCount < static_cast<size_t>(kernels.lanes)) return;
    Reserve(lists.lights, mesh.faceCount);
    kernels.lightFaces(mesh, lists.lights.data());
    mesh.lights = lists.lights.data();
}

// A mesh that reaches beyond the near plane or the range of depths: its faces are drawn one by one.
static void DrawFaceByFace(const PlacedMesh& placed, const MeshToDraw& whole) {
    for (size_t i = 0; i < whole.faceCount; ++i) {
        const MeshTriangle& triangle = whole.triangles[whole.faces[i].triangle];
        if (IsWhole(placed.vertices, triangle)) {
            MeshToDraw one = whole;
            one.faces += i;
            one.faceCount = 1;
            FillFaces(one, one.faces->box, placed.level);
        } else {
            DrawParts(placed, triangle);
        }
    }
}

// The pixels of the viewport that the mesh may show. All of them where a vertex is not plain.
static Rect CoveredPixels(const VertexExtent& extent) {
    const Rect& viewport = frameBuffer.viewport;
    if (!extent.arePlain) return viewport;
    return {std::max(viewport.left, static_cast<int32_t>(std::floor(extent.left))),
            std::max(viewport.top, static_cast<int32_t>(std::floor(extent.top))),
            std::min(static_cast<int32_t>(std::ceil(extent.right)) + 1, viewport.right),
            std::min(static_cast<int32_t>(std::ceil(extent.bottom)) + 1, viewport.bottom)};
}

static VertexTransform TransformOf(const MeshDraw& draw, const Rect& viewport) {
    return {draw.world, draw.viewProjection, viewport};
}

// The vertices at hand, in memory that is kept from mesh to mesh.
static const MeshVertices& Transformed(std::span<const MeshVertex> list, const MeshDraw& draw,
                                       const Rect& viewport, SimdLevel level) {
    static MeshVertices vertices;
    TransformVertices(list, TransformOf(draw, viewport), level, vertices);
    return vertices;
}

// Draws the first faces of lists.fronts, which are those that may turn to the eye.
static void DrawFronts(const PlacedMesh& placed, size_t fronts, FaceLists& lists) {
    const Rect covered = CoveredPixels(placed.vertices.extent);
    if (Width(covered) <= 0 || Height(covered) <= 0) return;
    assert(LiesWithin(covered, frameBuffer.depthTiles.area));  // what lies outside has no depth
    const std::span<const ScannedFace> faces =
        ScanFaces(placed.triangles.data(), placed.vertices, frameBuffer.viewport, FarthestDepth(covered),
                  placed.level, fronts, lists);
    if (faces.empty()) return;
    MeshToDraw whole = FacesToDraw(placed, faces);
    if (placed.vertices.extent.arePlain) {
        LightManyFaces(whole, placed.level, lists);
        FillFaces(whole, covered, placed.level);
    } else {
        DrawFaceByFace(placed, whole);
    }
}

// Draws the faces with those vertices alone that they need. They stand in the order of the mesh, as ever.
static void DrawFewFronts(const Mesh& mesh, const MeshDraw& draw, SimdLevel level, size_t fronts,
                          FaceLists& lists) {
    auto& [vertices, triangles] = lists.few;
    vertices.clear();
    triangles.clear();
    for (size_t i = 0; i < fronts; ++i) {
        const auto first = static_cast<int32_t>(vertices.size());
        for (int32_t vertex : mesh.triangles[lists.fronts[i]]) vertices.push_back(mesh.vertices[vertex]);
        triangles.push_back({first, first + 1, first + 2});
        lists.fronts[i] = static_cast<uint32_t>(i);
    }
    const Rect& viewport = frameBuffer.viewport;
    const PlacedMesh placed{
        vertices, triangles, draw, Transformed(vertices, draw, viewport, level), WorldScales(draw.world),
        viewport, level};
    DrawFronts(placed, fronts, lists);
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

// How many faces may be seen: of a mesh that nothing is drawn before, all that turn to the eye.
static size_t FindVisibleFronts(const Mesh& mesh, const MeshDraw& draw, const MeshPlace& place,
                                SimdLevel level, FaceLists& lists) {
    EyeInObject eye = FindEye(mesh, draw.world, draw.eye);
    if (place.isBounded && eye.isUsable) {
        const float farthest = FarthestDepth(place.pixels);
        eye.hiddenFrom = HiddenHeight(mesh, place, eye, frameBuffer.viewport, farthest);
    }
    return FindFrontFaces(mesh, eye, level, lists.fronts);
}

// Sixteen lanes do not pay for a flat mesh of few faces: most of them stay empty, and processors run the
// other code beside them more slowly.
static SimdLevel LevelFor(const Mesh& mesh, const MeshDraw& draw) {
    constexpr size_t kFewFaces = 16;
    const bool isSmall = draw.texture == nullptr && mesh.triangles.size() < kFewFaces;
    return isSmall && frameBuffer.simd == SimdLevel::Avx512 ? SimdLevel::Avx2 : frameBuffer.simd;
}

// Where the mesh lies. Whether it is hidden costs as much to find out as drawing a mesh of few faces.
static MeshPlace PlaceToDraw(const Mesh& mesh, const MeshDraw& draw) {
    constexpr size_t kFewFaces = 32;
    const VertexTransform transform = TransformOf(draw, frameBuffer.viewport);
    if (mesh.triangles.size() >= kFewFaces) return PlaceMesh(mesh, transform);
    return {.isBeside = IsBesideView(mesh, transform)};
}

void DrawMesh(const Mesh& mesh, const MeshDraw& draw) {
    static FaceLists lists;
    const MeshPlace place = PlaceToDraw(mesh, draw);
    if (frameBuffer.pixels == nullptr || (!draw.selected && place.isBeside)) return;
    const SimdLevel level = LevelFor(mesh, draw);
    const size_t fronts = FindVisibleFronts(mesh, draw, place, level, lists);
    if (fronts == 0 && !draw.selected) return;
    PreparePixelAccess();
    if (!draw.selected && fronts * kFewFronts < mesh.vertices.size()) {
        DrawFewFronts(mesh, draw, level, fronts, lists);
        return;
    }
    const Rect& viewport = frameBuffer.viewport;
    const MeshVertices& vertices = Transformed(mesh.vertices, draw, viewport, level);
    DrawFronts({mesh.vertices, mesh.triangles, draw, vertices, WorldScales(draw.world), viewport, level},
               fronts, lists);
    if (draw.selected) DrawOutline(mesh, vertices);
}

bool MeshDepthAt(const Mesh& mesh, const MeshDraw& draw, const Rect& viewport, Point pixel, float& depth) {
    const MeshPlace place = PlaceMesh(mesh, TransformOf(draw, viewport));
    if (place.isBeside || (place.isBounded && !Contains(place.pixels, pixel))) return false;
    bool covered = false;
    const SimdLevel level = LevelFor(mesh, draw);
    const PlacedMesh placed{
        mesh.vertices,           mesh.triangles, draw, Transformed(mesh.vertices, draw, viewport, level),
        WorldScales(draw.world), viewport,       level};
    for (const MeshTriangle& triangle : mesh.triangles) {
        VisitParts(placed, triangle, [&](const FaceInWorld&, const ScreenFace& part) {
            covered = CoversPixel(part.corners, pixel, depth) || covered;
        });
    }
    return covered;
}
