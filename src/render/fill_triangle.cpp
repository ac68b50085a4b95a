#include "render/fill_triangle.h"

#include "render/fill_pixels.h"
#include "render/frame_buffer.h"

#include <algorithm>
#include <cmath>

// The triangle's box within the viewport. False when it is empty.
static bool BoxOf(const std::array<ScreenCorner, 3>& corners, Rect& box) {
    const auto [minX, maxX] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
    const auto [minY, maxY] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
    const Rect& viewport = frameBuffer.viewport;
    box = {std::max(viewport.left, static_cast<int32_t>(std::floor(minX))),
           std::max(viewport.top, static_cast<int32_t>(std::floor(minY))),
           std::min(static_cast<int32_t>(std::ceil(maxX)) + 1, viewport.right),
           std::min(static_cast<int32_t>(std::ceil(maxY)) + 1, viewport.bottom)};
    return Width(box) > 0 && Height(box) > 0;
}

static FillTarget Target() {
    FrameBuffer& fb = frameBuffer;
    FillTarget to{fb.pixels, fb.depth.data(), fb.width, static_cast<int64_t>(fb.depth.size())};
    if (fb.owners.areKept) to.owners = fb.owners.numbers.data();
    to.owner = fb.owners.current;
    return to;
}

static bool KnownColor(const void* source, uint32_t, Pixel& color) {
    color = *static_cast<const Pixel*>(source);
    return true;
}

static bool KnownFace(const void* source, uint32_t, TexturedFace& face) {
    face = *static_cast<const TexturedFace*>(source);
    return true;
}

// False also where a corner is not a number: such a triangle has no box.
static bool HasArea(const std::array<ScreenCorner, 3>& corners) {
    TriangleSetup setup;
    return SetUpTriangle(corners, setup);
}

// Gives `fill` the place of a triangle that has one.
template <typename Fill>
static void FillPlaced(const std::array<ScreenCorner, 3>& corners, Fill fill) {
    Rect box;
    if (frameBuffer.pixels == nullptr || !HasArea(corners) || !BoxOf(corners, box)) return;
    PrepareDepth(box);
    fill(PlacedTriangle{corners, box, 0});
    DepthChanged(box);
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color) {
    FillPlaced(corners, [&color](const PlacedTriangle& triangle) {
        RowFillsOf(frameBuffer.simd).flat(triangle, Target(), {KnownColor, &color});
    });
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill) {
    const TexturedFace face{points, fill};
    FillPlaced(corners, [&face](const PlacedTriangle& triangle) {
        RowFillsOf(frameBuffer.simd).textured(triangle, Target(), {KnownFace, &face});
    });
}

void FillTriangles(const MeshFaces& mesh, const FlatFill& fill) {
    if (frameBuffer.pixels != nullptr) RowFillsOf(frameBuffer.simd).flatFaces(mesh, Target(), fill);
}

void FillTriangles(const MeshFaces& mesh, const TexturedFill& fill) {
    if (frameBuffer.pixels != nullptr) FillEach(mesh, Target(), fill, RowFillsOf(frameBuffer.simd).textured);
}
