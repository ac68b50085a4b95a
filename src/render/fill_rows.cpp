#include "render/fill_rows.h"

#include "render/surface.h"
#include "scene/limit.h"

#include <algorithm>
#include <cmath>

constexpr float kSmallestQ = 1e-6f;  // interpolated 1 / w below which a pixel is skipped

constexpr int32_t kBandRows = 8;  // rows that share the products of their columns

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

// ---- One pixel at a time: the definition.

namespace {

// The part of a row that the triangle may cover.
struct RowSpan {
    int32_t left, right;  // right exclusive
    int64_t available;    // pixels from the row's first to the buffer's end
    Pixel* pixels;        // of the row's first pixel
    float* depth;
};

// The second products of the edge functions: the same along a row.
struct RowEdges {
    float product[3];
};

struct Weights {
    float w0, w1, w2;
};

// A flat triangle's colour, from when it is first needed.
struct LateColor {
    const FlatFill& fill;
    Pixel value{};
    bool isMade = false;

    // False when the triangle is not to be drawn.
    bool IsKnown() { return isMade || (isMade = fill.colorOf(fill.source, value)); }
};

}  // namespace

static ZEL_INLINE RowSpan SpanOfRow(const FillArea& area, int32_t y) {
    ColumnRange columns{area.box.left, area.box.right};
    if (area.isBounded) columns = CoveredColumns(area.bounds, y, columns);
    const FillTarget& to = area.target;
    const int64_t start = static_cast<int64_t>(y) * to.width;
    return {columns.left, columns.right, to.size - start, to.pixels + start, to.depth + start};
}

static ZEL_INLINE RowEdges EdgesOfRow(const TriangleSetup& t, int32_t y) {
    const float centreY = static_cast<float>(y) + 0.5f;
    RowEdges edges;
    for (int i = 0; i < 3; ++i) edges.product[i] = (centreY - t.startY[i]) * t.runX[i];
    return edges;
}

static float Weight(const TriangleSetup& t, const RowEdges& edges, int i, float centreX) {
    return ((centreX - t.startX[i]) * t.runY[i] - edges.product[i]) / t.area;
}

static Weights WeightsAt(const TriangleSetup& t, const RowEdges& edges, int32_t x) {
    const float centreX = static_cast<float>(x) + 0.5f;
    return {Weight(t, edges, 0, centreX), Weight(t, edges, 1, centreX), Weight(t, edges, 2, centreX)};
}

// True where the triangle covers the pixel's centre and lies before what was drawn; `depth` is then its
// depth.
static bool IsSeen(const TriangleSetup& t, const Weights& w, float drawnDepth, float& depth) {
    if (!(w.w0 >= 0 && w.w1 >= 0 && w.w2 >= 0)) return false;
    depth = w.w0 * t.depth[0] + w.w1 * t.depth[1] + w.w2 * t.depth[2];
    return depth >= 0 && depth < drawnDepth;
}

bool CoversPixel(const TriangleSetup& setup, Point pixel, float& depth) {
    float found;
    if (!IsSeen(setup, WeightsAt(setup, EdgesOfRow(setup, pixel.y), pixel.x), depth, found)) return false;
    depth = found;
    return true;
}

// Returns false when the triangle is not to be drawn.
static bool FillFlatPixels(const TriangleSetup& t, const RowEdges& edges, const RowSpan& span, int32_t from,
                           LateColor& color) {
    for (int32_t x = from; x < span.right; ++x) {
        float depth;
        if (!IsSeen(t, WeightsAt(t, edges, x), span.depth[x], depth)) continue;
        if (!color.IsKnown()) return false;
        span.depth[x] = depth;
        span.pixels[x] = color.value;
    }
    return true;
}

static void FillTexturedPixels(const TriangleSetup& t, const RowEdges& edges, const RowSpan& span,
                               int32_t from, const TextureFill& fill) {
    for (int32_t x = from; x < span.right; ++x) {
        const Weights w = WeightsAt(t, edges, x);
        float depth;
        if (!IsSeen(t, w, span.depth[x], depth)) continue;

        const float q0 = w.w0 * t.inverseW[0], q1 = w.w1 * t.inverseW[1], q2 = w.w2 * t.inverseW[2];
        const float q = q0 + q1 + q2;
        if (!(std::abs(q) > kSmallestQ)) continue;
        const float u = (q0 * t.u[0] + q1 * t.u[1] + q2 * t.u[2]) / q;
        const float v = (q0 * t.v[0] + q1 * t.v[1] + q2 * t.v[2]) / q;

        span.depth[x] = depth;
        span.pixels[x] =
            Lit(Tinted(SampleTexture(*fill.texture, u, v, fill.repeat), fill.tint), fill.brightness);
    }
}

static void FillRowsFlatScalar(const TriangleSetup& t, const FillArea& area, const FlatFill& fill) {
    LateColor color{fill};
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        const RowSpan span = SpanOfRow(area, y);
        if (!FillFlatPixels(t, EdgesOfRow(t, y), span, span.left, color)) return;
    }
}

// By way of the fill of any triangle.
template <FillRowsFlat fillRows>
static void FillSmallFlatAsRows(const std::array<ScreenCorner, 3>& corners, const Rect& box,
                                const FillTarget& target, const FlatFill& fill) {
    TriangleSetup setup;
    if (SetUpTriangle(corners, setup)) fillRows(setup, {.box = box, .target = target}, fill);
}

static void FillRowsTexturedScalar(const TriangleSetup& t, const FillArea& area, const TextureFill& fill) {
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        const RowSpan span = SpanOfRow(area, y);
        FillTexturedPixels(t, EdgesOfRow(t, y), span, span.left, fill);
    }
}

// ---- Four pixels at a time.

namespace {

// A triangle's numbers in every lane, made once so that no store to the picture makes them be read again.
struct TriangleSse2 {
    __m128 startX[3], runY[3], depth[3], inverseW[3], u[3], v[3];
    __m128 area;
};

struct WeightsSse2 {
    __m128 w0, w1, w2;
};

}  // namespace

static TriangleSse2 SpreadSse2(const TriangleSetup& setup) {
    TriangleSse2 t;
    for (size_t i = 0; i < 3; ++i) {
        t.startX[i] = _mm_set1_ps(setup.startX[i]);
        t.runY[i] = _mm_set1_ps(setup.runY[i]);
        t.depth[i] = _mm_set1_ps(setup.depth[i]);
        t.inverseW[i] = _mm_set1_ps(setup.inverseW[i]);
        t.u[i] = _mm_set1_ps(setup.u[i]);
        t.v[i] = _mm_set1_ps(setup.v[i]);
    }
    t.area = _mm_set1_ps(setup.area);
    return t;
}

static __m128 WeightSse2(const TriangleSse2& t, const RowEdges& edges, int i, __m128 centreX) {
    const __m128 first = _mm_mul_ps(_mm_sub_ps(centreX, t.startX[i]), t.runY[i]);
    return _mm_div_ps(_mm_sub_ps(first, _mm_set1_ps(edges.product[i])), t.area);
}

static WeightsSse2 WeightsAtSse2(const TriangleSse2& t, const RowEdges& edges, int32_t x) {
    const __m128i columns = _mm_add_epi32(_mm_set1_epi32(x), _mm_setr_epi32(0, 1, 2, 3));
    const __m128 centreX = _mm_add_ps(_mm_cvtepi32_ps(columns), _mm_set1_ps(0.5f));
    return {WeightSse2(t, edges, 0, centreX), WeightSse2(t, edges, 1, centreX),
            WeightSse2(t, edges, 2, centreX)};
}

// a * x + b * y + c * z, summed from the left.
static __m128 WeightedSse2(__m128 a, __m128 b, __m128 c, const __m128 (&values)[3]) {
    const __m128 sum = _mm_add_ps(_mm_mul_ps(a, values[0]), _mm_mul_ps(b, values[1]));
    return _mm_add_ps(sum, _mm_mul_ps(c, values[2]));
}

// All bits set in lanes left of `right`.
static __m128 LanesBeforeSse2(int32_t x, int32_t right) {
    const __m128i columns = _mm_add_epi32(_mm_set1_epi32(x), _mm_setr_epi32(0, 1, 2, 3));
    return _mm_castsi128_ps(_mm_cmplt_epi32(columns, _mm_set1_epi32(right)));
}

static __m128 SeenSse2(const TriangleSse2& t, const WeightsSse2& w, __m128 drawnDepth, __m128& depth) {
    const __m128 zero = _mm_setzero_ps();
    __m128 seen = _mm_and_ps(_mm_cmpge_ps(w.w0, zero), _mm_cmpge_ps(w.w1, zero));
    seen = _mm_and_ps(seen, _mm_cmpge_ps(w.w2, zero));
    depth = WeightedSse2(w.w0, w.w1, w.w2, t.depth);
    return _mm_and_ps(seen, _mm_and_ps(_mm_cmpge_ps(depth, zero), _mm_cmplt_ps(depth, drawnDepth)));
}

static __m128 SelectSse2(__m128 mask, __m128 yes, __m128 no) {
    return _mm_or_ps(_mm_and_ps(mask, yes), _mm_andnot_ps(mask, no));
}

static void StoreSse2(const RowSpan& span, int32_t x, __m128 seen, __m128 depth, __m128 drawnDepth,
                      __m128i colors) {
    auto* pixels = reinterpret_cast<__m128i*>(span.pixels + x);
    const __m128 drawn = _mm_castsi128_ps(_mm_loadu_si128(pixels));
    _mm_storeu_si128(pixels, _mm_castps_si128(SelectSse2(seen, _mm_castsi128_ps(colors), drawn)));
    _mm_storeu_ps(span.depth + x, SelectSse2(seen, depth, drawnDepth));
}

// Returns false when the triangle is not to be drawn.
static bool FillRowFlatSse2(const TriangleSetup& setup, const TriangleSse2& t, int32_t y, const RowSpan& span,
                            LateColor& color) {
    const RowEdges edges = EdgesOfRow(setup, y);
    int32_t x = span.left;
    for (; x < span.right && x + 4 <= span.available; x += 4) {
        const __m128 drawnDepth = _mm_loadu_ps(span.depth + x);
        __m128 depth;
        __m128 seen = SeenSse2(t, WeightsAtSse2(t, edges, x), drawnDepth, depth);
        seen = _mm_and_ps(seen, LanesBeforeSse2(x, span.right));
        if (_mm_movemask_ps(seen) == 0) continue;
        if (!color.IsKnown()) return false;
        StoreSse2(span, x, seen, depth, drawnDepth, _mm_set1_epi32(static_cast<int32_t>(color.value)));
    }
    return FillFlatPixels(setup, edges, span, x, color);
}

static void FillRowsFlatSse2(const TriangleSetup& setup, const FillArea& area, const FlatFill& fill) {
    const TriangleSse2 t = SpreadSse2(setup);
    LateColor color{fill};
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        if (!FillRowFlatSse2(setup, t, y, SpanOfRow(area, y), color)) return;
    }
}

// value limited to 0 .. 1, not a number to 0.
static __m128 LimitToUnitSse2(__m128 value) {
    return _mm_min_ps(_mm_max_ps(value, _mm_setzero_ps()), _mm_set1_ps(1));
}

// Values from 2^23 on have no fraction; they, infinities and not a number are returned as they are.
static __m128 FloorSse2(__m128 value) {
    const __m128 magnitude = _mm_andnot_ps(_mm_set1_ps(-0.0f), value);
    const __m128 hasFraction = _mm_cmplt_ps(magnitude, _mm_set1_ps(8388608.0f));
    const __m128 truncated = _mm_cvtepi32_ps(_mm_cvttps_epi32(value));
    const __m128 step = _mm_and_ps(_mm_cmpgt_ps(truncated, value), _mm_set1_ps(1));
    return SelectSse2(hasFraction, _mm_sub_ps(truncated, step), value);
}

static __m128 WrappedSse2(__m128 coordinate, bool repeat) {
    return LimitToUnitSse2(repeat ? _mm_sub_ps(coordinate, FloorSse2(coordinate)) : coordinate);
}

// One channel of four pixels, lit, in the low byte of each lane.
static __m128i LitChannelSse2(__m128i colors, int shift, __m128 brightness) {
    const __m128i channel = _mm_and_si128(_mm_srli_epi32(colors, shift), _mm_set1_epi32(0xFF));
    const __m128 lit = _mm_mul_ps(_mm_cvtepi32_ps(channel), brightness);
    return _mm_cvttps_epi32(_mm_min_ps(lit, _mm_set1_ps(255)));
}

static __m128i LitSse2(__m128i colors, float brightness) {
    const __m128 factor = _mm_set1_ps(Limit(brightness, kDarkest, kBrightest));
    const __m128i red = _mm_slli_epi32(LitChannelSse2(colors, 16, factor), 16);
    const __m128i green = _mm_slli_epi32(LitChannelSse2(colors, 8, factor), 8);
    return _mm_or_si128(_mm_or_si128(red, green), LitChannelSse2(colors, 0, factor));
}

static __m128i TintedSse2(__m128i colors, uint32_t tint) {
    if (tint == 0) return colors;
    const __m128i tints = _mm_set1_epi32(static_cast<int32_t>(tint));
    const __m128i differing = _mm_and_si128(_mm_xor_si128(colors, tints), _mm_set1_epi32(0xFEFEFE));
    const __m128i average = _mm_add_epi32(_mm_and_si128(colors, tints), _mm_srli_epi32(differing, 1));
    return _mm_and_si128(average, _mm_set1_epi32(0xFFFFFF));
}

// The texels of the lanes in `seen`; the others are undefined.
static __m128i SampleSse2(const TextureFill& fill, __m128 u, __m128 v, __m128 seen) {
    const TextureImage& texture = *fill.texture;
    if (texture.texels.empty()) return _mm_set1_epi32(0xFFFFFF);
    const __m128 lastColumn = _mm_set1_ps(static_cast<float>(texture.width - 1));
    const __m128 lastRow = _mm_set1_ps(static_cast<float>(texture.height - 1));
    const __m128 across = _mm_mul_ps(WrappedSse2(u, fill.repeat), lastColumn);
    const __m128 down = _mm_mul_ps(_mm_sub_ps(_mm_set1_ps(1), WrappedSse2(v, fill.repeat)), lastRow);

    alignas(16) int32_t columns[4], rows[4], texels[4] = {};
    _mm_store_si128(reinterpret_cast<__m128i*>(columns), _mm_cvttps_epi32(across));
    _mm_store_si128(reinterpret_cast<__m128i*>(rows), _mm_cvttps_epi32(down));
    const int lanes = _mm_movemask_ps(seen);
    for (int lane = 0; lane < 4; ++lane) {
        if ((lanes >> lane & 1) == 0) continue;
        // The float of a side beyond 2^24 may lie above it.
        const auto row = static_cast<size_t>(std::min(rows[lane], texture.height - 1));
        const auto column = static_cast<size_t>(std::min(columns[lane], texture.width - 1));
        const size_t index = row * static_cast<size_t>(texture.width) + column;
        texels[lane] = static_cast<int32_t>(texture.texels[index]);
    }
    return _mm_load_si128(reinterpret_cast<const __m128i*>(texels));
}

static void FillRowTexturedSse2(const TriangleSetup& setup, const TriangleSse2& t, int32_t y,
                                const RowSpan& span, const TextureFill& fill) {
    const RowEdges edges = EdgesOfRow(setup, y);
    int32_t x = span.left;
    for (; x < span.right && x + 4 <= span.available; x += 4) {
        const __m128 drawnDepth = _mm_loadu_ps(span.depth + x);
        const WeightsSse2 w = WeightsAtSse2(t, edges, x);
        __m128 depth;
        __m128 seen = _mm_and_ps(SeenSse2(t, w, drawnDepth, depth), LanesBeforeSse2(x, span.right));
        if (_mm_movemask_ps(seen) == 0) continue;

        const __m128 q0 = _mm_mul_ps(w.w0, t.inverseW[0]);
        const __m128 q1 = _mm_mul_ps(w.w1, t.inverseW[1]);
        const __m128 q2 = _mm_mul_ps(w.w2, t.inverseW[2]);
        const __m128 q = _mm_add_ps(_mm_add_ps(q0, q1), q2);
        const __m128 magnitude = _mm_andnot_ps(_mm_set1_ps(-0.0f), q);
        seen = _mm_and_ps(seen, _mm_cmpgt_ps(magnitude, _mm_set1_ps(kSmallestQ)));
        const __m128 u = _mm_div_ps(WeightedSse2(q0, q1, q2, t.u), q);
        const __m128 v = _mm_div_ps(WeightedSse2(q0, q1, q2, t.v), q);

        const __m128i colors = LitSse2(TintedSse2(SampleSse2(fill, u, v, seen), fill.tint), fill.brightness);
        StoreSse2(span, x, seen, depth, drawnDepth, colors);
    }
    FillTexturedPixels(setup, edges, span, x, fill);
}

static void FillRowsTexturedSse2(const TriangleSetup& setup, const FillArea& area, const TextureFill& fill) {
    const TriangleSse2 t = SpreadSse2(setup);
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        FillRowTexturedSse2(setup, t, y, SpanOfRow(area, y), fill);
    }
}

// ---- Eight pixels at a time.

namespace {

// A triangle's numbers in every lane, made once so that no store to the picture makes them be read again.
struct TriangleAvx2 {
    __m256 startX[3], runY[3], depth[3], inverseW[3], u[3], v[3];
    __m256 area;
};

struct WeightsAvx2 {
    __m256 w0, w1, w2;
};

}  // namespace

ZEL_AVX2 static TriangleAvx2 SpreadAvx2(const TriangleSetup& setup) {
    TriangleAvx2 t;
    for (size_t i = 0; i < 3; ++i) {
        t.startX[i] = _mm256_set1_ps(setup.startX[i]);
        t.runY[i] = _mm256_set1_ps(setup.runY[i]);
        t.depth[i] = _mm256_set1_ps(setup.depth[i]);
        t.inverseW[i] = _mm256_set1_ps(setup.inverseW[i]);
        t.u[i] = _mm256_set1_ps(setup.u[i]);
        t.v[i] = _mm256_set1_ps(setup.v[i]);
    }
    t.area = _mm256_set1_ps(setup.area);
    return t;
}

ZEL_AVX2 static __m256i ColumnNumbersAvx2(int32_t x) {
    return _mm256_add_epi32(_mm256_set1_epi32(x), _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
}

ZEL_AVX2 static __m256 WeightedAvx2(__m256 a, __m256 b, __m256 c, const __m256 (&values)[3]) {
    const __m256 sum = _mm256_add_ps(_mm256_mul_ps(a, values[0]), _mm256_mul_ps(b, values[1]));
    return _mm256_add_ps(sum, _mm256_mul_ps(c, values[2]));
}

ZEL_AVX2 static __m256 LanesBeforeAvx2(int32_t x, int32_t right) {
    return _mm256_castsi256_ps(_mm256_cmpgt_epi32(_mm256_set1_epi32(right), ColumnNumbersAvx2(x)));
}

// Lanes inside the triangle and nearer than what was drawn.
ZEL_AVX2 static ZEL_INLINE __m256 PassesAvx2(const WeightsAvx2& w, __m256 depth, __m256 drawnDepth) {
    const __m256 zero = _mm256_setzero_ps();
    __m256 seen = _mm256_and_ps(_mm256_cmp_ps(w.w0, zero, _CMP_GE_OQ), _mm256_cmp_ps(w.w1, zero, _CMP_GE_OQ));
    seen = _mm256_and_ps(seen, _mm256_cmp_ps(w.w2, zero, _CMP_GE_OQ));
    return _mm256_and_ps(seen, _mm256_and_ps(_mm256_cmp_ps(depth, zero, _CMP_GE_OQ),
                                             _mm256_cmp_ps(depth, drawnDepth, _CMP_LT_OQ)));
}

ZEL_AVX2 static __m256 SeenAvx2(const TriangleAvx2& t, const WeightsAvx2& w, __m256 drawnDepth,
                                __m256& depth) {
    depth = WeightedAvx2(w.w0, w.w1, w.w2, t.depth);
    return PassesAvx2(w, depth, drawnDepth);
}

ZEL_AVX2 static void StoreAvx2(const RowSpan& span, int32_t x, __m256 seen, __m256 depth, __m256 drawnDepth,
                               __m256i colors) {
    auto* pixels = reinterpret_cast<__m256i*>(span.pixels + x);
    const __m256 drawn = _mm256_castsi256_ps(_mm256_loadu_si256(pixels));
    const __m256 blended = _mm256_blendv_ps(drawn, _mm256_castsi256_ps(colors), seen);
    _mm256_storeu_si256(pixels, _mm256_castps_si256(blended));
    _mm256_storeu_ps(span.depth + x, _mm256_blendv_ps(drawnDepth, depth, seen));
}

namespace {

// Some rows of a triangle, and what does not change along them.
struct RowBand {
    int32_t count = 0, left = 0, right = 0;  // the columns of all its rows
    std::array<RowSpan, kBandRows> spans;
    std::array<RowEdges, kBandRows> edges;
};

// The first products of the edge functions in eight columns: the same along a column.
struct ColumnsAvx2 {
    __m256 product[3];
    __m256 inside;  // lanes left of the area's right edge
};

}  // namespace

static ZEL_INLINE void SetUpBand(const TriangleSetup& setup, const FillArea& area, int32_t top,
                                 RowBand& band) {
    band.count = std::min(kBandRows, area.box.bottom - top);
    band.left = area.box.right;
    band.right = area.box.left;
    for (int32_t i = 0; i < band.count; ++i) {
        const auto row = static_cast<size_t>(i);
        band.spans[row] = SpanOfRow(area, top + i);
        band.edges[row] = EdgesOfRow(setup, top + i);
        if (band.spans[row].left >= band.spans[row].right) continue;
        band.left = std::min(band.left, band.spans[row].left);
        band.right = std::max(band.right, band.spans[row].right);
    }
}

ZEL_AVX2 static ZEL_INLINE ColumnsAvx2 ColumnsAtAvx2(const TriangleAvx2& t, int32_t x, int32_t right) {
    const __m256 centreX = _mm256_add_ps(_mm256_cvtepi32_ps(ColumnNumbersAvx2(x)), _mm256_set1_ps(0.5f));
    ColumnsAvx2 made;
    for (int i = 0; i < 3; ++i)
        made.product[i] = _mm256_mul_ps(_mm256_sub_ps(centreX, t.startX[i]), t.runY[i]);
    made.inside = LanesBeforeAvx2(x, right);
    return made;
}

ZEL_AVX2 static ZEL_INLINE WeightsAvx2 WeightsInRowAvx2(const TriangleAvx2& t, const ColumnsAvx2& columns,
                                                        const RowEdges& edges) {
    __m256 weight[3];
    for (int i = 0; i < 3; ++i) {
        const __m256 edge = _mm256_sub_ps(columns.product[i], _mm256_set1_ps(edges.product[i]));
        weight[i] = _mm256_div_ps(edge, t.area);
    }
    return {weight[0], weight[1], weight[2]};
}

// Returns false when the triangle is not to be drawn.
ZEL_AVX2 static ZEL_INLINE bool FillBandFlatAvx2(const TriangleSetup& setup, const TriangleAvx2& t,
                                                 const RowBand& band, int32_t right, LateColor& color) {
    for (int32_t x = band.left; x < band.right; x += 8) {
        const ColumnsAvx2 columns = ColumnsAtAvx2(t, x, right);
        for (size_t row = 0; row < static_cast<size_t>(band.count); ++row) {
            const RowSpan& span = band.spans[row];
            if (x >= span.right || x + 8 <= span.left) continue;
            if (x + 8 > span.available) {
                _mm256_zeroupper();
                if (!FillFlatPixels(setup, band.edges[row], span, std::max(x, span.left), color))
                    return false;
                continue;
            }
            const __m256 drawnDepth = _mm256_loadu_ps(span.depth + x);
            __m256 depth;
            const __m256 passes =
                SeenAvx2(t, WeightsInRowAvx2(t, columns, band.edges[row]), drawnDepth, depth);
            const __m256 seen = _mm256_and_ps(columns.inside, passes);
            if (_mm256_movemask_ps(seen) == 0) continue;
            if (!color.IsKnown()) return false;
            StoreAvx2(span, x, seen, depth, drawnDepth, _mm256_set1_epi32(static_cast<int32_t>(color.value)));
        }
    }
    return true;
}

ZEL_AVX2 static void FillRowsFlatAvx2(const TriangleSetup& setup, const FillArea& area,
                                      const FlatFill& fill) {
    const TriangleAvx2 t = SpreadAvx2(setup);
    LateColor color{fill};
    RowBand band;
    for (int32_t top = area.box.top; top < area.box.bottom; top += kBandRows) {
        SetUpBand(setup, area, top, band);
        if (!FillBandFlatAvx2(setup, t, band, area.box.right, color)) return;
    }
}

namespace {

// A triangle of few pixels, every number in all lanes. It is made out of whole corners: scalars that are
// written one by one and read again as vectors would wait for their way through memory.
struct SmallTriangleAvx2 {
    __m256 startX[3], startY[3], runX[3], runY[3], depth[3];
    __m256 area;
};

}  // namespace

template <int lane>
ZEL_AVX2 static ZEL_INLINE __m256 LaneAvx2(__m128 corner) {
    return _mm256_broadcastss_ps(_mm_permute_ps(corner, lane * 0x55));
}

// The same operations as those of SetUpTriangle.
ZEL_AVX2 static ZEL_INLINE SmallTriangleAvx2 SetUpSmallAvx2(const std::array<ScreenCorner, 3>& corners) {
    const __m128 a = _mm_loadu_ps(&corners[0].x), b = _mm_loadu_ps(&corners[1].x),
                 c = _mm_loadu_ps(&corners[2].x);
    const __m128 start[3] = {b, c, a}, end[3] = {c, a, b}, corner[3] = {a, b, c};
    SmallTriangleAvx2 t;
    for (int i = 0; i < 3; ++i) {
        const __m128 run = _mm_sub_ps(end[i], start[i]);
        t.startX[i] = LaneAvx2<0>(start[i]);
        t.startY[i] = LaneAvx2<1>(start[i]);
        t.runX[i] = LaneAvx2<0>(run);
        t.runY[i] = LaneAvx2<1>(run);
        t.depth[i] = LaneAvx2<2>(corner[i]);
    }
    const __m128 fromA = _mm_sub_ps(b, a);
    const __m128 products = _mm_mul_ps(_mm_sub_ps(c, a), _mm_permute_ps(fromA, _MM_SHUFFLE(3, 2, 0, 1)));
    t.area = _mm256_sub_ps(LaneAvx2<0>(products), LaneAvx2<1>(products));
    return t;
}

// One pixel at a time at the end of the buffer.
static void FillSmallRowFlat(const std::array<ScreenCorner, 3>& corners, const RowSpan& span, int32_t y,
                             LateColor& color) {
    TriangleSetup setup;
    if (SetUpTriangle(corners, setup)) FillFlatPixels(setup, EdgesOfRow(setup, y), span, span.left, color);
}

ZEL_AVX2 static void FillSmallFlatAvx2(const std::array<ScreenCorner, 3>& corners, const Rect& box,
                                       const FillTarget& target, const FlatFill& fill) {
    const SmallTriangleAvx2 t = SetUpSmallAvx2(corners);
    LateColor color{fill};
    for (int32_t x = box.left; x < box.right; x += 8) {
        const __m256 centreX = _mm256_add_ps(_mm256_cvtepi32_ps(ColumnNumbersAvx2(x)), _mm256_set1_ps(0.5f));
        const __m256 inside = LanesBeforeAvx2(x, box.right);
        __m256 column[3];
        for (int i = 0; i < 3; ++i) column[i] = _mm256_mul_ps(_mm256_sub_ps(centreX, t.startX[i]), t.runY[i]);
        for (int32_t y = box.top; y < box.bottom; ++y) {
            const int64_t start = static_cast<int64_t>(y) * target.width;
            const RowSpan span{x, box.right, target.size - start, target.pixels + start,
                               target.depth + start};
            if (x + 8 > span.available) {
                _mm256_zeroupper();
                FillSmallRowFlat(corners, span, y, color);
                continue;
            }
            const __m256 centreY = _mm256_set1_ps(static_cast<float>(y) + 0.5f);
            __m256 weight[3];
            for (int i = 0; i < 3; ++i) {
                const __m256 row = _mm256_mul_ps(_mm256_sub_ps(centreY, t.startY[i]), t.runX[i]);
                weight[i] = _mm256_div_ps(_mm256_sub_ps(column[i], row), t.area);
            }
            const __m256 drawnDepth = _mm256_loadu_ps(span.depth + x);
            const __m256 depth = WeightedAvx2(weight[0], weight[1], weight[2], t.depth);
            const __m256 passes = PassesAvx2({weight[0], weight[1], weight[2]}, depth, drawnDepth);
            const __m256 seen = _mm256_and_ps(inside, passes);
            if (_mm256_movemask_ps(seen) == 0) continue;
            if (!color.IsKnown()) return;
            StoreAvx2(span, x, seen, depth, drawnDepth, _mm256_set1_epi32(static_cast<int32_t>(color.value)));
        }
    }
}

ZEL_AVX2 static __m256 WrappedAvx2(__m256 coordinate, bool repeat) {
    const __m256 wrapped = repeat ? _mm256_sub_ps(coordinate, _mm256_floor_ps(coordinate)) : coordinate;
    return _mm256_min_ps(_mm256_max_ps(wrapped, _mm256_setzero_ps()), _mm256_set1_ps(1));
}

ZEL_AVX2 static __m256i LitChannelAvx2(__m256i colors, int shift, __m256 brightness) {
    const __m256i channel = _mm256_and_si256(_mm256_srli_epi32(colors, shift), _mm256_set1_epi32(0xFF));
    const __m256 lit = _mm256_mul_ps(_mm256_cvtepi32_ps(channel), brightness);
    return _mm256_cvttps_epi32(_mm256_min_ps(lit, _mm256_set1_ps(255)));
}

ZEL_AVX2 static __m256i LitAvx2(__m256i colors, float brightness) {
    const __m256 factor = _mm256_set1_ps(Limit(brightness, kDarkest, kBrightest));
    const __m256i red = _mm256_slli_epi32(LitChannelAvx2(colors, 16, factor), 16);
    const __m256i green = _mm256_slli_epi32(LitChannelAvx2(colors, 8, factor), 8);
    return _mm256_or_si256(_mm256_or_si256(red, green), LitChannelAvx2(colors, 0, factor));
}

ZEL_AVX2 static __m256i TintedAvx2(__m256i colors, uint32_t tint) {
    if (tint == 0) return colors;
    const __m256i tints = _mm256_set1_epi32(static_cast<int32_t>(tint));
    const __m256i differing = _mm256_and_si256(_mm256_xor_si256(colors, tints), _mm256_set1_epi32(0xFEFEFE));
    const __m256i average =
        _mm256_add_epi32(_mm256_and_si256(colors, tints), _mm256_srli_epi32(differing, 1));
    return _mm256_and_si256(average, _mm256_set1_epi32(0xFFFFFF));
}

ZEL_AVX2 static __m256i SampleAvx2(const TextureFill& fill, __m256 u, __m256 v, __m256 seen) {
    const TextureImage& texture = *fill.texture;
    if (texture.texels.empty()) return _mm256_set1_epi32(0xFFFFFF);
    const __m256 lastColumn = _mm256_set1_ps(static_cast<float>(texture.width - 1));
    const __m256 lastRow = _mm256_set1_ps(static_cast<float>(texture.height - 1));
    const __m256 across = _mm256_mul_ps(WrappedAvx2(u, fill.repeat), lastColumn);
    const __m256 down = _mm256_mul_ps(_mm256_sub_ps(_mm256_set1_ps(1), WrappedAvx2(v, fill.repeat)), lastRow);
    const __m256i columns =
        _mm256_min_epi32(_mm256_cvttps_epi32(across), _mm256_set1_epi32(texture.width - 1));
    const __m256i rows = _mm256_min_epi32(_mm256_cvttps_epi32(down), _mm256_set1_epi32(texture.height - 1));
    const __m256i indices =
        _mm256_add_epi32(_mm256_mullo_epi32(rows, _mm256_set1_epi32(texture.width)), columns);
    return _mm256_mask_i32gather_epi32(_mm256_setzero_si256(),
                                       reinterpret_cast<const int*>(texture.texels.data()), indices,
                                       _mm256_castps_si256(seen), 4);
}

ZEL_AVX2 static ZEL_INLINE void FillBandTexturedAvx2(const TriangleSetup& setup, const TriangleAvx2& t,
                                                     const RowBand& band, int32_t right,
                                                     const TextureFill& fill) {
    for (int32_t x = band.left; x < band.right; x += 8) {
        const ColumnsAvx2 columns = ColumnsAtAvx2(t, x, right);
        for (size_t row = 0; row < static_cast<size_t>(band.count); ++row) {
            const RowSpan& span = band.spans[row];
            if (x >= span.right || x + 8 <= span.left) continue;
            if (x + 8 > span.available) {
                _mm256_zeroupper();
                FillTexturedPixels(setup, band.edges[row], span, std::max(x, span.left), fill);
                continue;
            }
            const __m256 drawnDepth = _mm256_loadu_ps(span.depth + x);
            const WeightsAvx2 w = WeightsInRowAvx2(t, columns, band.edges[row]);
            __m256 depth;
            __m256 seen = _mm256_and_ps(columns.inside, SeenAvx2(t, w, drawnDepth, depth));
            if (_mm256_movemask_ps(seen) == 0) continue;

            const __m256 q0 = _mm256_mul_ps(w.w0, t.inverseW[0]);
            const __m256 q1 = _mm256_mul_ps(w.w1, t.inverseW[1]);
            const __m256 q2 = _mm256_mul_ps(w.w2, t.inverseW[2]);
            const __m256 q = _mm256_add_ps(_mm256_add_ps(q0, q1), q2);
            const __m256 magnitude = _mm256_andnot_ps(_mm256_set1_ps(-0.0f), q);
            seen = _mm256_and_ps(seen, _mm256_cmp_ps(magnitude, _mm256_set1_ps(kSmallestQ), _CMP_GT_OQ));
            const __m256 u = _mm256_div_ps(WeightedAvx2(q0, q1, q2, t.u), q);
            const __m256 v = _mm256_div_ps(WeightedAvx2(q0, q1, q2, t.v), q);

            const __m256i texels = TintedAvx2(SampleAvx2(fill, u, v, seen), fill.tint);
            StoreAvx2(span, x, seen, depth, drawnDepth, LitAvx2(texels, fill.brightness));
        }
    }
}

ZEL_AVX2 static void FillRowsTexturedAvx2(const TriangleSetup& setup, const FillArea& area,
                                          const TextureFill& fill) {
    const TriangleAvx2 t = SpreadAvx2(setup);
    RowBand band;
    for (int32_t top = area.box.top; top < area.box.bottom; top += kBandRows) {
        SetUpBand(setup, area, top, band);
        FillBandTexturedAvx2(setup, t, band, area.box.right, fill);
    }
}

const RowFills& RowFillsOf(SimdLevel level) {
    static constexpr RowFills kFills[] = {
        {FillRowsFlatScalar, FillSmallFlatAsRows<FillRowsFlatScalar>, FillRowsTexturedScalar},
        {FillRowsFlatSse2, FillSmallFlatAsRows<FillRowsFlatSse2>, FillRowsTexturedSse2},
        {FillRowsFlatAvx2, FillSmallFlatAvx2, FillRowsTexturedAvx2},
    };
    return kFills[static_cast<size_t>(level)];
}
