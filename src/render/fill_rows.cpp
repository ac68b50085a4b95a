#include "render/fill_rows.h"

#include "render/fill_pixels.h"
#include "render/surface.h"

#include <algorithm>
#include <cmath>

bool SetUpTriangle(const std::array<ScreenCorner, 3>& corners, TriangleSetup& setup) {
    const auto& [a, b, c] = corners;
    setup.area = (c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x);
    if (!(std::abs(setup.area) >= kSmallestArea)) return false;
    for (size_t i = 0; i < 3; ++i) {
        const ScreenCorner& start = corners[(i + 1) % 3];
        const ScreenCorner& end = corners[(i + 2) % 3];
        setup.startX[i] = start.x;
        setup.startY[i] = start.y;
        setup.runX[i] = end.x - start.x;
        setup.runY[i] = end.y - start.y;
        setup.depth[i] = corners[i].depth;
        setup.inverseW[i] = corners[i].inverseW;
    }
    return true;
}

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

namespace {

struct Weights {
    float w0, w1, w2;
};

}  // namespace

static float Weight(const TriangleSetup& t, const RowEdges& edges, int i, float centreX) {
    return ((centreX - t.startX[i]) * t.runY[i] - edges.product[i]) / t.area;
}

static Weights WeightsAt(const TriangleSetup& t, const RowEdges& edges, int32_t x) {
    const float centreX = static_cast<float>(x) + 0.5f;
    return {Weight(t, edges, 0, centreX), Weight(t, edges, 1, centreX), Weight(t, edges, 2, centreX)};
}

// True where the triangle covers the pixel's centre at a depth from 0 on, which `depth` then is.
static bool IsCovered(const TriangleSetup& t, const Weights& w, float& depth) {
    if (!(w.w0 >= 0 && w.w1 >= 0 && w.w2 >= 0)) return false;
    depth = w.w0 * t.depth[0] + w.w1 * t.depth[1] + w.w2 * t.depth[2];
    return depth >= 0;
}

// True where a depth lies before what the buffer holds.
static bool IsBefore(const FillTarget& to, int64_t at, float depth) {
    return depth < to.depth[at] ||
           (to.owners != nullptr && depth == to.depth[at] && to.owner < to.owners[at]);
}

static void Write(const FillTarget& to, int64_t at, float depth, Pixel color) {
    to.pixels[at] = color;
    to.depth[at] = depth;
    if (to.owners != nullptr) to.owners[at] = to.owner;
}

bool CoversPixel(const TriangleSetup& setup, Point pixel, float& depth) {
    float found;
    if (!IsCovered(setup, WeightsAt(setup, EdgesOfRow(setup, pixel.y), pixel.x), found)) return false;
    if (!(found < depth)) return false;
    depth = found;
    return true;
}

bool FillFlatPixels(const TriangleSetup& t, const RowEdges& edges, const FillTarget& to, const RowSpan& span,
                    int32_t from, LateColor& color) {
    for (int32_t x = from; x < span.right; ++x) {
        const int64_t at = span.start + x;
        float depth;
        if (!IsCovered(t, WeightsAt(t, edges, x), depth) || !IsBefore(to, at, depth)) continue;
        if (!color.IsKnown()) return false;
        Write(to, at, depth, color.value);
    }
    return true;
}

bool FillTexturedPixels(const TriangleSetup& t, const RowEdges& edges, const FillTarget& to,
                        const RowSpan& span, int32_t from, LateTexture& texture) {
    const auto& [points, fill] = texture.value;
    for (int32_t x = from; x < span.right; ++x) {
        const int64_t at = span.start + x;
        const Weights w = WeightsAt(t, edges, x);
        float depth;
        if (!IsCovered(t, w, depth) || !IsBefore(to, at, depth)) continue;
        if (!texture.IsKnown()) return false;

        const float q0 = w.w0 * t.inverseW[0], q1 = w.w1 * t.inverseW[1], q2 = w.w2 * t.inverseW[2];
        const float q = q0 + q1 + q2;
        if (!(std::abs(q) > kSmallestQ)) continue;
        const float u = (q0 * points[0].u + q1 * points[1].u + q2 * points[2].u) / q;
        const float v = (q0 * points[0].v + q1 * points[1].v + q2 * points[2].v) / q;
        const Pixel texel = Tinted(SampleTexture(*fill.texture, u, v, fill.repeat), fill.tint);
        Write(to, at, depth, Lit(texel, fill.brightness));
    }
    return true;
}

static void FillFlatScalar(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill) {
    TriangleSetup t;
    if (!SetUpTriangle(triangle.corners, t)) return;
    const FillArea area = AreaOf(t, triangle.box, to);
    LateColor color{fill};
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        const RowSpan span = SpanOfRow(area, y);
        if (!FillFlatPixels(t, EdgesOfRow(t, y), to, span, span.left, color)) return;
    }
}

static void FillFlatFacesScalar(const MeshFaces& mesh, const FillTarget& to, FlatFill fill) {
    FillEach(mesh, to, fill, FillFlatScalar);
}

static void FillTexturedScalar(const PlacedTriangle& triangle, const FillTarget& to,
                               const TexturedFill& fill) {
    TriangleSetup t;
    if (!SetUpTriangle(triangle.corners, t)) return;
    const FillArea area = AreaOf(t, triangle.box, to);
    LateTexture texture{fill};
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        const RowSpan span = SpanOfRow(area, y);
        if (!FillTexturedPixels(t, EdgesOfRow(t, y), to, span, span.left, texture)) return;
    }
}

const RowFills& RowFillsOf(SimdLevel level) {
    static constexpr RowFills kScalar{FillFlatScalar, FillFlatFacesScalar, FillTexturedScalar};
    if (level == SimdLevel::Avx2) return RowFillsAvx2();
    return level == SimdLevel::Sse2 ? RowFillsSse2() : kScalar;
}
