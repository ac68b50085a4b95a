#include "render/fill_triangle.h"

#include "render/frame_buffer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

// More than what rounding can move an edge's crossing with a row, in pixels.
constexpr double kSlack = 1.0;

// Boxes up to this width are looked at whole: finding their covered columns costs more than it saves.
constexpr int32_t kNarrow = 16;

ColumnBounds BoundColumns(const TriangleSetup& setup) {
    ColumnBounds bounds;
    for (size_t i = 0; i < 3; ++i) {
        // An edge's function grows or falls along a row with the sign of its vertical run.
        const float direction = setup.area > 0 ? setup.runY[i] : -setup.runY[i];
        if (direction == 0) continue;
        bounds.side[i] = direction > 0 ? 1 : -1;
        bounds.startX[i] = setup.startX[i];
        bounds.startY[i] = setup.startY[i];
        bounds.slope[i] = static_cast<double>(setup.runX[i]) / setup.runY[i];
    }
    return bounds;
}

ColumnRange CoveredColumns(const ColumnBounds& bounds, int32_t y, ColumnRange within) {
    double left = within.left, right = within.right;
    for (size_t i = 0; i < 3; ++i) {
        const double crossing = bounds.startX[i] + (y + 0.5 - bounds.startY[i]) * bounds.slope[i] - 0.5;
        if (bounds.side[i] > 0) left = std::max(left, crossing - kSlack);
        if (bounds.side[i] < 0) right = std::min(right, crossing + kSlack + 1);
    }
    if (!(left < right)) return {};
    return {static_cast<int32_t>(left), static_cast<int32_t>(std::ceil(right))};
}

// Runs `fillRow` over the rows of the triangle's box within the viewport.
template <typename FillRow>
static void ForEachRow(const std::array<ScreenCorner, 3>& corners, const TriangleSetup& setup,
                       FillRow fillRow) {
    const auto [minX, maxX] = std::minmax({corners[0].x, corners[1].x, corners[2].x});
    const auto [minY, maxY] = std::minmax({corners[0].y, corners[1].y, corners[2].y});
    FrameBuffer& fb = frameBuffer;
    const int32_t left = std::max(fb.viewport.left, static_cast<int32_t>(std::floor(minX)));
    const int32_t right = std::min(static_cast<int32_t>(std::ceil(maxX)) + 1, fb.viewport.right);
    const int32_t top = std::max(fb.viewport.top, static_cast<int32_t>(std::floor(minY)));
    const int32_t bottom = std::min(static_cast<int32_t>(std::ceil(maxY)) + 1, fb.viewport.bottom);
    if (left >= right) return;

    const bool isNarrow = right - left <= kNarrow;
    const ColumnBounds bounds = isNarrow ? ColumnBounds{} : BoundColumns(setup);
    const auto size = static_cast<ptrdiff_t>(fb.depth.size());
    for (int32_t y = top; y < bottom; ++y) {
        const ColumnRange columns =
            isNarrow ? ColumnRange{left, right} : CoveredColumns(bounds, y, {left, right});
        if (columns.left >= columns.right) continue;
        const ptrdiff_t start = static_cast<ptrdiff_t>(y) * fb.width;
        const auto available = static_cast<int32_t>(std::min<ptrdiff_t>(size - start, INT32_MAX));
        fillRow(
            RowSpan{y, columns.left, columns.right, fb.pixels + start, fb.depth.data() + start, available});
    }
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color) {
    TriangleSetup setup;
    if (frameBuffer.pixels == nullptr || !SetUpTriangle(corners, setup)) return;
    const FillRowFlat fillRow = RowFillsOf(frameBuffer.simd).flat;
    ForEachRow(corners, setup, [&](const RowSpan& span) { fillRow(setup, span, color); });
}

void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill) {
    TriangleSetup setup;
    if (frameBuffer.pixels == nullptr || !SetUpTriangle(corners, setup)) return;
    for (size_t i = 0; i < 3; ++i) {
        setup.u[i] = points[i].u;
        setup.v[i] = points[i].v;
    }
    const FillRowTextured fillRow = RowFillsOf(frameBuffer.simd).textured;
    ForEachRow(corners, setup, [&](const RowSpan& span) { fillRow(setup, span, fill); });
}
