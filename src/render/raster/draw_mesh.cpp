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

// If there are more vertices than this for each visible face, only the vertices of those faces are
// transformed.
constexpr size_t kFewFronts = 5;

// A mesh of fewer faces than this is small: finding out what is certain about it costs as much as drawing it.
constexpr size_t kLargeMesh = 32;

// Vertices of a small mesh within so many pixels, across and down, lie close together.
constexpr float kCloseTogether = 6;

// ---- Meshes that reach through the near plane or beyond the range of depths. Their faces are drawn one
// by one: whole faces as elsewhere, the others as the parts that the near plane leaves.

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

// Lights many flat faces together. A few faces are cheaper to light one by one, when their first pixel has
// passed the depth test.
static void LightManyFaces(MeshToDraw& mesh, SimdLevel level, MeshScratch& scratch) {
    const RasterKernels& kernels = KernelsOf(level);
    if (mesh.isTextured || kernels.lanes == 1 || mesh.faceCount < static_cast<size_t>(kernels.lanes)) return;
    Reserve(scratch.lights, mesh.faceCount);
    kernels.lightFaces(mesh, scratch.lights.data());
    mesh.lights = scratch.lights.data();
}

// The pixels of the viewport that the mesh may cover. All of them if a vertex is not plain.
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

// Draws the first `fronts` faces of scratch.fronts, which may turn to the eye. In go transformed vertices,
// out come pixels. The scan drops the faces that certainly change no pixel; those that are left are lit
// and filled as one mesh, so that each step runs over many faces at a time. Faces keep the order of the
// mesh, which decides between equal depths.
static void DrawFronts(const PlacedMesh& placed, size_t fronts, Surface& surface) {
    if (fronts == 0) return;
    const Rect covered = CoveredPixels(placed.vertices.extent, placed.viewport);
    if (Width(covered) <= 0 || Height(covered) <= 0) return;
    assert(LiesWithin(covered, surface.depthTiles.area));  // what lies outside has no depth
    const std::span<const ScannedFace> faces =
        ScanFaces(placed.triangles.data(), placed.vertices, placed.viewport, FarthestDepth(covered, surface),
                  placed.level, fronts, surface.scratch);
    if (faces.empty()) return;
    PreparePixelAccess(surface);
    MeshToDraw whole = FacesToDraw(placed, faces);
    if (placed.vertices.extent.arePlain) {
        LightManyFaces(whole, placed.level, surface.scratch);
        FillFaces(whole, covered, placed.level, surface);
    } else {
        DrawFaceByFace(placed, whole, surface);
    }
}

// Only a texture asks for them.
static AxisScales ScalesOf(const MeshDraw& draw) {
    return draw.texture != nullptr ? WorldScales(draw.world) : AxisScales{};
}

// For a mesh with few visible faces: copies their vertices and transforms only those. The faces keep the
// order of the mesh.
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
    DrawFronts({vertices, triangles, draw, scratch.vertices, ScalesOf(draw), surface.viewport, level}, fronts,
               surface);
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

// Writes the faces that may be visible to scratch.fronts and returns how many they are. If nothing was
// drawn in front of the mesh, these are all that turn to the eye.
static size_t FindVisibleFronts(const Mesh& mesh, const MeshDraw& draw, const MeshPlace& place,
                                SimdLevel level, Surface& surface) {
    EyeInObject eye = FindEye(mesh, draw.world, draw.eye);
    if (place.isBounded && eye.isUsable) {
        const float farthest = FarthestDepth(place.pixels, surface);
        eye.hiddenFrom = HiddenHeight(mesh, place, eye, surface.viewport, farthest);
    }
    return FindFrontFaces(mesh, eye, level, surface.scratch.fronts);
}

// Sixteen lanes do not pay for a flat mesh of few faces: most lanes stay empty, and processors run the
// code around them more slowly.
static SimdLevel LevelFor(const Mesh& mesh, const MeshDraw& draw, const Surface& surface) {
    constexpr size_t kFewFaces = 16;
    const bool hasFew = draw.texture == nullptr && mesh.triangles.size() < kFewFaces;
    return hasFew && surface.simd == SimdLevel::Avx512 ? SimdLevel::Avx2 : surface.simd;
}

static bool AreCloseTogether(const VertexExtent& extent) {
    return extent.arePlain && extent.right - extent.left <= kCloseTogether &&
           extent.bottom - extent.top <= kCloseTogether;
}

// The vertices are few, so they are transformed first. If they lie close together on the screen, looking at
// all faces is cheaper than finding out on which side of each the eye stands.
static void DrawSmallMesh(const Mesh& mesh, const MeshDraw& draw, SimdLevel level, Surface& surface) {
    MeshVertices& vertices = surface.scratch.vertices;
    TransformVertices(mesh.vertices, TransformOf(draw, surface.viewport), level, vertices);
    const EyeInObject unknown;
    const EyeInObject eye = AreCloseTogether(vertices.extent) ? unknown : FindEye(mesh, draw.world, draw.eye);
    const size_t fronts = FindFrontFaces(mesh, eye, level, surface.scratch.fronts);
    DrawFronts({mesh.vertices, mesh.triangles, draw, vertices, ScalesOf(draw), surface.viewport, level},
               fronts, surface);
}

// The cheapest question comes first, and each leaves less for the next: is the mesh in view at all, which
// faces turn to the eye and are not hidden, where do their vertices lie on the screen.
static void DrawLargeMesh(const Mesh& mesh, const MeshDraw& draw, SimdLevel level, Surface& surface) {
    const MeshPlace place = PlaceMesh(mesh, TransformOf(draw, surface.viewport));
    if (place.isBeside || place.isTooSmall) return;
    const size_t fronts = FindVisibleFronts(mesh, draw, place, level, surface);
    if (fronts * kFewFronts < mesh.vertices.size()) {
        DrawFewFronts(mesh, draw, level, fronts, surface);
        return;
    }
    MeshVertices& vertices = surface.scratch.vertices;
    TransformVertices(mesh.vertices, TransformOf(draw, surface.viewport), level, vertices);
    DrawFronts({mesh.vertices, mesh.triangles, draw, vertices, ScalesOf(draw), surface.viewport, level},
               fronts, surface);
}

// A mesh and its matrices go in, pixels and depths come out. All questions on the way only save work: the
// fill decides about every pixel.
void DrawMesh(const Mesh& mesh, const MeshDraw& draw, Surface& surface) {
    if (surface.pixels == nullptr) return;
    const SimdLevel level = LevelFor(mesh, draw, surface);
    const bool isLarge = mesh.triangles.size() >= kLargeMesh;
    (isLarge ? DrawLargeMesh : DrawSmallMesh)(mesh, draw, level, surface);
    if (!draw.selected) return;
    TransformVertices(mesh.vertices, TransformOf(draw, surface.viewport), level, surface.scratch.vertices);
    DrawOutline(mesh, surface.scratch.vertices, surface);
}

// Asks the same questions as drawing, but scans for one pixel. A few faces are left, which may cover its
// centre at a smaller depth than found so far. Their parts are then placed and tested exactly as the fill
// does it, so that a click always hits what is seen.
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
