#include "render/fill_triangle.h"

#include "render/frame_buffer.h"

#include <algorithm>
#include <cmath>

// Boxes up to this width are looked at whole: finding their covered columns costs more than it saves.
constexpr int32_t kNarrow = 32;

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
    return {fb.pixels, fb.depth.data(), fb.width, static_cast<int64_t>(fb.depth.size())};
}

static FillArea AreaOf(const TriangleSetup& setup, const Rect& box) {
    FillArea area{.box = box, .isBounded = Width(box) > kNarrow, .target = Target()};
    if (area.isBounded) area.bounds = BoundColumns(setup);
    return area;
}

static bool KnownColor(const void* source, Pixel& color) {
    color = *static_cast<const Pixel*>(source);
    return true;
}

// False also where a corner is not a number: such a triangle has no box.
static bool HasArea(const std::array<ScreenCorner, 3>& corners) {
    TriangleSetup setup;
    return SetUpTriangle(corners, setup);
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color) {
    Rect box;
    if (!HasArea(corners) || !BoxOf(corners, box)) return;
    FillTriangle(corners, box, FlatFill{KnownColor, &color});
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill) {
    Rect box;
    if (HasArea(corners) && BoxOf(corners, box)) FillTriangle(corners, box, points, fill);
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, const Rect& box, const FlatFill& fill) {
    if (frameBuffer.pixels == nullptr) return;
    if (Width(box) <= kNarrow) {
        RowFillsOf(frameBuffer.simd).smallFlat(corners, box, Target(), fill);
        return;
    }
    TriangleSetup setup;
    if (SetUpTriangle(corners, setup)) RowFillsOf(frameBuffer.simd).flat(setup, AreaOf(setup, box), fill);
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, const Rect& box,
                  const std::array<TexturePoint, 3>& points, const TextureFill& fill) {
    TriangleSetup setup;
    if (frameBuffer.pixels == nullptr || !SetUpTriangle(corners, setup)) return;
    for (size_t i = 0; i < 3; ++i) {
        setup.u[i] = points[i].u;
        setup.v[i] = points[i].v;
    }
    RowFillsOf(frameBuffer.simd).textured(setup, AreaOf(setup, box), fill);
}
