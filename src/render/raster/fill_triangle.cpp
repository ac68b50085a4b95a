#include "render/raster/fill_triangle.h"

#include "render/raster/face_ink.h"
#include "render/raster/kernels.h"

#include <algorithm>
#include <cmath>

static FillTarget TargetOf(Surface& surface) {
    FillTarget to{surface.pixels, surface.depth.data(), surface.width, surface.height};
    if (surface.owners.areKept) to.owners = surface.owners.numbers.data();
    to.owner = surface.owners.current;
    return to;
}

// A surface smaller than a block of pixels is drawn in one lane.
static SimdLevel LevelThatFits(SimdLevel level, const Surface& surface) {
    const bool isTiny = surface.width < kWidestBlock || surface.height < kHighestBlock;
    return isTiny ? SimdLevel::OneLane : level;
}

// The last stage: faces go in, pixels and depths come out of the kernel for the width at hand. The depths
// are kept in tiles. Tiles that the mesh may touch are written first if they still hold an earlier frame,
// and marked afterwards, because their farthest depth may have changed.
void FillFaces(const MeshToDraw& mesh, const Rect& covered, SimdLevel level, Surface& surface) {
    const RasterKernels& kernels = KernelsOf(LevelThatFits(level, surface));
    PrepareDepth(covered, surface);
    (mesh.isTextured ? kernels.fillTexturedFaces : kernels.fillFlatFaces)(mesh, TargetOf(surface));
    DepthChanged(covered, surface);
}

TextureSource SourceOf(const TextureImage& image, bool repeat, uint32_t tint) {
    constexpr int32_t kExactSide = 1 << 24;
    const bool isVast = std::max(image.width, image.height) > kExactSide;
    return {image.texels.empty() ? nullptr : image.texels.data(),
            image.width,
            image.height,
            repeat,
            tint,
            isVast};
}

float AreaOf(const std::array<ScreenCorner, 3>& corners) {
    const auto& [a, b, c] = corners;
    return (c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x);
}

// Also false if a corner is not a number: such a triangle has no box.
static bool HasArea(const std::array<ScreenCorner, 3>& corners) {
    return std::abs(AreaOf(corners)) >= kSmallestArea;
}

// The triangle's box within the viewport. False when it is empty.
static bool BoxOf(const std::array<ScreenCorner, 3>& corners, const Rect& viewport, Rect& box) {
    const auto [minX, maxX] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
    const auto [minY, maxY] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
    box = {std::max(viewport.left, static_cast<int32_t>(std::floor(minX))),
           std::max(viewport.top, static_cast<int32_t>(std::floor(minY))),
           std::min(static_cast<int32_t>(std::ceil(maxX)) + 1, viewport.right),
           std::min(static_cast<int32_t>(std::ceil(maxY)) + 1, viewport.bottom)};
    return Width(box) > 0 && Height(box) > 0;
}

// What is projected is: see ScreenCorner. Others are drawn in one lane, which asks every pixel for its depth.
static bool AreBehindNearPlane(const std::array<ScreenCorner, 3>& corners) {
    return std::ranges::all_of(corners, [](const ScreenCorner& corner) { return corner.depth >= 0; });
}

// Draws a mesh of one face, whose corners are its vertices.
static void FillAlone(const std::array<ScreenCorner, 3>& corners, MeshToDraw mesh, const FaceInk& ink,
                      Surface& surface) {
    constexpr MeshTriangle kTriangle{0, 1, 2};
    ScannedFace face;
    if (surface.pixels == nullptr || !HasArea(corners) || !BoxOf(corners, surface.viewport, face.box)) return;
    mesh.triangles = &kTriangle;
    mesh.corners = corners.data();
    mesh.faces = &face;
    mesh.faceCount = 1;
    mesh.findInk = FindKnownInk;
    mesh.knownInk = &ink;
    FillFaces(mesh, face.box, AreBehindNearPlane(corners) ? surface.simd : SimdLevel::OneLane, surface);
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color, Surface& surface) {
    FaceInk ink;
    ink.color = color;
    FillAlone(corners, {}, ink, surface);
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill, Surface& surface) {
    MeshToDraw mesh;
    mesh.isTextured = true;
    mesh.texture = SourceOf(*fill.texture, fill.repeat, fill.tint);
    FaceInk ink;
    std::ranges::copy(points, ink.points);
    ink.brightness = fill.brightness;
    FillAlone(corners, mesh, ink, surface);
}

bool CoversPixel(const std::array<ScreenCorner, 3>& corners, Point pixel, float& depth) {
    if (!HasArea(corners)) return false;
    const ScreenCorner plain[3] = {corners[0], corners[1], corners[2]};
    return KernelsOneLane().coversPixel(plain, pixel.x, pixel.y, depth);
}
