#include "render/fill_triangle.h"

#include "render/frame_buffer.h"

#include <algorithm>
#include <cmath>

// Boxes up to this width are looked at whole: finding their covered columns costs more than it saves.
constexpr int32_t kNarrow = 16;

// The triangle's box within the viewport. False when it is empty.
static bool AreaOf(const std::array<ScreenCorner, 3>& corners, const TriangleSetup& setup, FillArea& area) {
    const auto [minX, maxX] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
    const auto [minY, maxY] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
    FrameBuffer& fb = frameBuffer;
    area.box = {std::max(fb.viewport.left, static_cast<int32_t>(std::floor(minX))),
                std::max(fb.viewport.top, static_cast<int32_t>(std::floor(minY))),
                std::min(static_cast<int32_t>(std::ceil(maxX)) + 1, fb.viewport.right),
                std::min(static_cast<int32_t>(std::ceil(maxY)) + 1, fb.viewport.bottom)};
    if (Width(area.box) <= 0 || Height(area.box) <= 0) return false;
    area.isBounded = Width(area.box) > kNarrow;
    if (area.isBounded) area.bounds = BoundColumns(setup);
    area.pixels = fb.pixels;
    area.depth = fb.depth.data();
    area.width = fb.width;
    area.size = static_cast<int64_t>(fb.depth.size());
    return true;
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color) {
    TriangleSetup setup;
    FillArea area;
    if (frameBuffer.pixels == nullptr || !SetUpTriangle(corners, setup) || !AreaOf(corners, setup, area))
        return;
    RowFillsOf(frameBuffer.simd).flat(setup, area, color);
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill) {
    TriangleSetup setup;
    FillArea area;
    if (frameBuffer.pixels == nullptr || !SetUpTriangle(corners, setup) || !AreaOf(corners, setup, area))
        return;
    for (size_t i = 0; i < 3; ++i) {
        setup.u[i] = points[i].u;
        setup.v[i] = points[i].v;
    }
    RowFillsOf(frameBuffer.simd).textured(setup, area, fill);
}
