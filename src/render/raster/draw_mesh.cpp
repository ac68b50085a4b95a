#include "render/raster/draw_mesh.h"

#include "render/raster/face_ink.h"
#include "render/raster/fill_triangle.h"
#include "render/raster/kernels.h"
#include "render/raster/line.h"
#include "render/raster/mesh_bounds.h"
#include "render/raster/placed_mesh.h"
#include "render/raster/visible_faces.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <span>
#include <vector>

constexpr Pixel kOutline{0x56D6FF};

// With fewer than one face to so many vertices, the faces' own vertices are transformed in place of all.
constexpr size_t kFewFronts = 5;

// ---- Meshes that reach beyond the near plane or the range of depths: their faces are drawn one by one.

static void DrawParts(const PlacedMesh& placed, const MeshTriangle& triangle, Surface& surface) {
    const MeshDraw& draw = placed.draw;
    const FaceParts found = PartsOf(placed, triangle);
    if (found.count == 0) return;
    const FaceInWorld& face = found.face;
    const float brightness = FaceBrightness(face.normal, face.toEye, draw.light, draw.roughness, draw.gloss);
    for (size_t i = 0; i < found.count; ++i) {
        const FacePart& part = found.parts[i];
        if (draw.texture == nullptr) {
            FillTriangle(part.corners, Lit(Tinted(part.color, draw.tint), brightness), surface);
        } else {
            FillTriangle(part.corners, part.points, {draw.texture, draw.repeat, draw.tint, brightness},
                         surface);
        }
    }
}

static void DrawFaceByFace(const PlacedMesh& placed, const MeshToDraw& whole, Surface& surface) {
    for (size_t i = 0; i < whole.faceCount; ++i) {
        const MeshTriangle& triangle = whole.triangles[whole.faces[i].triangle];
        if (IsWhole(placed.vertices, triangle)) {
            MeshToDraw one = whole;
            one.faces += i;
            one.faceCount = 1;
            FillFaces(one, one.faces->box, placed.level, surface);
        } else {
            DrawParts(placed, triangle, surface);
        }
    }
}

// ---- The others: all faces of a mesh together.

static MeshToDraw FacesToDraw(const PlacedMesh& placed, std::span<const ScannedFace> faces) {
    const MeshDraw& draw = placed.draw;
    MeshToDraw whole{&draw, placed.vertexList.data(), placed.triangles.data(), placed.vertices.corners.data(),
                     placed.scales};
    whole.isTextured = draw.texture != nullptr;
    if (whole.isTextured) whole.texture = SourceOf(*draw.texture, draw.repeat, draw.tint);
    whole.findInk = whole.isTextured ? FindTexturedInk : FindFlatInk;
    whole.faces = faces.data();
    whole.faceCount = faces.size();
    return whole;
}

// Turns many flat faces to the light together. That of a few waits, as the colour of each does, for its first
// pixel.
static void LightManyFaces(MeshToDraw& mesh, SimdLevel level, MeshScratch& scratch) {
    const RasterKernels& kernels = KernelsOf(level);
    if (mesh.isTextured || kernels.lanes == 1 || mesh.faceCount < static_cast<size_t>(kernels.lanes)) return;
    Reserve(scratch.lights, mesh.faceCount);
    kernels.lightFaces(mesh, scratch.lights.data());
    mesh.lights = scratch.lights.data();
}

// The pixels of the viewport that the mesh may cover. All of them where a vertex is not plain.
static Rect CoveredPixels(const VertexExtent& extent, const Rect& viewport) {
    if (!extent.arePlain) return viewport;
    return {std::max(viewport.left, static_cast<int32_t>(std::floor(extent.left))),
            std::max(viewport.top, static_cast<int32_t>(std::floor(extent.top))),
            std::min(static_cast<int32_t>(std::ceil(extent.right)) + 1, viewport.right),
            std::min(static_cast<int32_t>(std::ceil(extent.bottom)) + 1, viewport.bottom)};
}

static VertexTransform TransformOf(const MeshDraw& draw, const Rect& viewport) {
    return {draw.world, draw.viewProjection, viewport};
}

// Draws the first faces of scratch.fronts, which are those that may turn to the eye. In go placed vertices,
// out come pixels: the scan leaves out what certainly changes none, and what is left is lit and filled as one
// mesh, so that each step runs over many faces at a time.
static void DrawFronts(const PlacedMesh& placed, size_t fronts, Surface& surface) {
    const Rect covered = CoveredPixels(placed.vertices.extent, placed.viewport);
    if (Width(covered) <= 0 || Height(covered) <= 0) return;
    assert(LiesWithin(covered, surface.depthTiles.area));  // what lies outside has no depth
    const std::span<const ScannedFace> faces =
        ScanFaces(placed.triangles.data(), placed.vertices, placed.viewport, FarthestDepth(covered, surface),
                  placed.level, fronts, surface.scratch);
    if (faces.empty()) return;
    MeshToDraw whole = FacesToDraw(placed, faces);
    if (placed.vertices.extent.arePlain) {
        LightManyFaces(whole, placed.level, surface.scratch);
        FillFaces(whole, covered, placed.level, surface);
    } else {
        DrawFaceByFace(placed, whole, surface);
    }
}

// Draws the faces with those vertices alone that they need. They stand in the order of the mesh, as ever.
static void DrawFewFronts(const Mesh& mesh, const MeshDraw& draw, SimdLevel level, size_t fronts,
                          Surface& surface) {
    MeshScratch& scratch = surface.scratch;
    auto& [vertices, triangles] = scratch.few;
    vertices.clear();
    triangles.clear();
    for (size_t i = 0; i < fronts; ++i) {
        const auto first = static_cast<int32_t>(vertices.size());
        for (int32_t vertex : mesh.triangles[scratch.fronts[i]]) vertices.push_back(mesh.vertices[vertex]);
        triangles.push_back({first, first + 1, first + 2});
        scratch.fronts[i] = static_cast<uint32_t>(i);
    }
    TransformVertices(vertices, TransformOf(draw, surface.viewport), level, scratch.vertices);
    DrawFronts(
        {vertices, triangles, draw, scratch.vertices, WorldScales(draw.world), surface.viewport, level},
        fronts, surface);
}

static Point PixelOf(const ScreenCorner& corner) {
    return {static_cast<int32_t>(corner.x), static_cast<int32_t>(corner.y)};
}

// Ignores depth, so that the selection shows through what stands before it.
static void DrawOutline(const Mesh& mesh, const MeshVertices& vertices, Surface& surface) {
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (size_t c = 0; c < 3; ++c) {
            const auto from = static_cast<size_t>(triangle[c]),
                       to = static_cast<size_t>(triangle[(c + 1) % 3]);
            if (!vertices.visible[from] || !vertices.visible[to]) continue;
            DrawLine(PixelOf(vertices.corners[from]), PixelOf(vertices.corners[to]), kOutline, surface);
        }
    }
}

// How many faces may be visible: of a mesh that nothing is drawn before, all that turn to the eye.
static size_t FindVisibleFronts(const Mesh& mesh, const MeshDraw& draw, const MeshPlace& place,
                                SimdLevel level, Surface& surface) {
    EyeInObject eye = FindEye(mesh, draw.world, draw.eye);
    if (place.isBounded && eye.isUsable) {
        const float farthest = FarthestDepth(place.pixels, surface);
        eye.hiddenFrom = HiddenHeight(mesh, place, eye, surface.viewport, farthest);
    }
    return FindFrontFaces(mesh, eye, level, surface.scratch.fronts);
}

// Sixteen lanes do not pay for a flat mesh of few faces: most of them stay empty, and processors run the
// other code beside them more slowly.
static SimdLevel LevelFor(const Mesh& mesh, const MeshDraw& draw, const Surface& surface) {
    constexpr size_t kFewFaces = 16;
    const bool isSmall = draw.texture == nullptr && mesh.triangles.size() < kFewFaces;
    return isSmall && surface.simd == SimdLevel::Avx512 ? SimdLevel::Avx2 : surface.simd;
}

// Where the mesh lies. Whether it is hidden costs as much to find out as drawing a mesh of few faces.
static MeshPlace PlaceToDraw(const Mesh& mesh, const MeshDraw& draw, const Rect& viewport) {
    constexpr size_t kFewFaces = 32;
    if (mesh.triangles.size() < kFewFaces) return {};
    return PlaceMesh(mesh, TransformOf(draw, viewport));
}

// The cheapest question comes first, each leaves less for the next: is the mesh in view, do its faces turn to
// the eye before what was drawn, where do their vertices lie, which of them hold a pixel's centre.
void DrawMeshInView(const Mesh& mesh, const MeshDraw& draw, Surface& surface) {
    const MeshPlace place = PlaceToDraw(mesh, draw, surface.viewport);
    if (surface.pixels == nullptr || (!draw.selected && (place.isBeside || place.isTooSmall))) return;
    const SimdLevel level = LevelFor(mesh, draw, surface);
    const size_t fronts = FindVisibleFronts(mesh, draw, place, level, surface);
    if (fronts == 0 && !draw.selected) return;
    PreparePixelAccess(surface);
    if (!draw.selected && fronts * kFewFronts < mesh.vertices.size()) {
        DrawFewFronts(mesh, draw, level, fronts, surface);
        return;
    }
    const Rect& viewport = surface.viewport;
    MeshVertices& vertices = surface.scratch.vertices;
    TransformVertices(mesh.vertices, TransformOf(draw, viewport), level, vertices);
    DrawFronts({mesh.vertices, mesh.triangles, draw, vertices, WorldScales(draw.world), viewport, level},
               fronts, surface);
    if (draw.selected) DrawOutline(mesh, vertices, surface);
}

void DrawMesh(const Mesh& mesh, const MeshDraw& draw, Surface& surface) {
    if (!draw.selected && IsInvisible(mesh, TransformOf(draw, surface.viewport))) return;
    DrawMeshInView(mesh, draw, surface);
}

// The questions of drawing, asked for a viewport of one pixel: what they leave of the mesh are the few faces
// that may cover its centre before the depth found so far, and those are placed and asked exactly.
bool MeshCoversPixel(const Mesh& mesh, const MeshDraw& draw, PickedPixel& picked, Surface& surface) {
    const VertexTransform transform = TransformOf(draw, picked.viewport);
    const MeshPlace place = PlaceMesh(mesh, transform);
    if (place.isBeside || place.isTooSmall) return false;
    if (place.isBounded && !Contains(place.pixels, picked.pixel)) return false;

    const SimdLevel level = LevelFor(mesh, draw, surface);
    MeshScratch& scratch = surface.scratch;
    EyeInObject eye = FindEye(mesh, draw.world, draw.eye);
    if (place.isBounded && eye.isUsable)
        eye.hiddenFrom = HiddenHeight(mesh, place, eye, picked.viewport, picked.depth);
    const size_t fronts = FindFrontFaces(mesh, eye, level, scratch.fronts);
    if (fronts == 0) return false;
    TransformVertices(mesh.vertices, transform, level, scratch.vertices);
    const Point& p = picked.pixel;
    const std::span<const ScannedFace> faces =
        ScanFaces(mesh.triangles.data(), scratch.vertices, {p.x, p.y, p.x + 1, p.y + 1}, picked.depth, level,
                  fronts, scratch);
    const PlacedMesh placed{mesh.vertices,           mesh.triangles,  draw, scratch.vertices,
                            WorldScales(draw.world), picked.viewport, level};
    bool covered = false;
    for (const ScannedFace& face : faces) {
        const FaceParts found = PartsOf(placed, mesh.triangles[face.triangle]);
        for (size_t i = 0; i < found.count; ++i)
            covered = CoversPixel(found.parts[i].corners, p, picked.depth) || covered;
    }
    return covered;
}
