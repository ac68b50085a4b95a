// Four pixels at a time.
#include "render/fill_pixels.h"
#include "render/surface.h"
#include "scene/limit.h"

#include <algorithm>

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

// Lanes at the depth that was drawn, by an object that comes after this one.
static __m128 WinsTieSse2(const FillTarget& to, int64_t at, __m128 depth, __m128 drawnDepth) {
    const __m128i owners = _mm_loadu_si128(reinterpret_cast<const __m128i*>(to.owners + at));
    const __m128i own = _mm_set1_epi32(to.owner);
    const __m128i isEarlier = _mm_cmplt_epi32(own, owners);
    return _mm_and_ps(_mm_cmpeq_ps(depth, drawnDepth), _mm_castsi128_ps(isEarlier));
}

// Lanes inside the triangle and before what was drawn.
static __m128 SeenSse2(const TriangleSse2& t, const WeightsSse2& w, const FillTarget& to, int64_t at,
                       __m128 drawnDepth, __m128& depth) {
    const __m128 zero = _mm_setzero_ps();
    __m128 seen = _mm_and_ps(_mm_cmpge_ps(w.w0, zero), _mm_cmpge_ps(w.w1, zero));
    seen = _mm_and_ps(seen, _mm_cmpge_ps(w.w2, zero));
    depth = WeightedSse2(w.w0, w.w1, w.w2, t.depth);
    __m128 before = _mm_cmplt_ps(depth, drawnDepth);
    if (to.owners != nullptr) before = _mm_or_ps(before, WinsTieSse2(to, at, depth, drawnDepth));
    return _mm_and_ps(seen, _mm_and_ps(_mm_cmpge_ps(depth, zero), before));
}

static __m128 SelectSse2(__m128 mask, __m128 yes, __m128 no) {
    return _mm_or_ps(_mm_and_ps(mask, yes), _mm_andnot_ps(mask, no));
}

static void StoreNumbersSse2(void* to, __m128 seen, __m128i numbers) {
    const __m128 old = _mm_loadu_ps(static_cast<const float*>(to));
    _mm_storeu_ps(static_cast<float*>(to), SelectSse2(seen, _mm_castsi128_ps(numbers), old));
}

static void StoreSse2(const FillTarget& to, int64_t at, __m128 seen, __m128 depth, __m128 drawnDepth,
                      __m128i colors) {
    StoreNumbersSse2(to.pixels + at, seen, colors);
    _mm_storeu_ps(to.depth + at, SelectSse2(seen, depth, drawnDepth));
    if (to.owners == nullptr) return;
    StoreNumbersSse2(to.owners + at, seen, _mm_set1_epi32(to.owner));
}

// False when the triangle is not to be drawn.
static bool FillRowFlatSse2(const TriangleSetup& setup, const TriangleSse2& t, const FillTarget& to,
                            int32_t y, const RowSpan& span, LateColor& color) {
    const RowEdges edges = EdgesOfRow(setup, y);
    int32_t x = span.left;
    for (; x < span.right && span.start + x + 4 <= to.size; x += 4) {
        const int64_t at = span.start + x;
        const __m128 drawnDepth = _mm_loadu_ps(to.depth + at);
        __m128 depth;
        __m128 seen = SeenSse2(t, WeightsAtSse2(t, edges, x), to, at, drawnDepth, depth);
        seen = _mm_and_ps(seen, LanesBeforeSse2(x, span.right));
        if (_mm_movemask_ps(seen) == 0) continue;
        if (!color.IsKnown()) return false;
        StoreSse2(to, at, seen, depth, drawnDepth, _mm_set1_epi32(static_cast<int32_t>(color.value)));
    }
    return FillFlatPixels(setup, edges, to, span, x, color);
}

static void FillFlatSse2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill) {
    TriangleSetup setup;
    if (!SetUpTriangle(triangle.corners, setup)) return;
    const FillArea area = AreaOf(setup, triangle.box, to);
    const TriangleSse2 t = SpreadSse2(setup);
    LateColor color{fill};
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        if (!FillRowFlatSse2(setup, t, to, y, SpanOfRow(area, y), color)) return;
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

static void FillRowTexturedSse2(const TriangleSetup& setup, const TriangleSse2& t, const FillTarget& to,
                                int32_t y, const RowSpan& span, const TextureFill& fill) {
    const RowEdges edges = EdgesOfRow(setup, y);
    int32_t x = span.left;
    for (; x < span.right && span.start + x + 4 <= to.size; x += 4) {
        const int64_t at = span.start + x;
        const __m128 drawnDepth = _mm_loadu_ps(to.depth + at);
        const WeightsSse2 w = WeightsAtSse2(t, edges, x);
        __m128 depth;
        __m128 seen = _mm_and_ps(SeenSse2(t, w, to, at, drawnDepth, depth), LanesBeforeSse2(x, span.right));
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
        StoreSse2(to, at, seen, depth, drawnDepth, colors);
    }
    FillTexturedPixels(setup, edges, to, span, x, fill);
}

static void FillTexturedSse2(const PlacedTriangle& triangle, const std::array<TexturePoint, 3>& points,
                             const FillTarget& to, const TextureFill& fill) {
    TriangleSetup setup;
    if (!SetUpTextured(triangle.corners, points, setup)) return;
    const FillArea area = AreaOf(setup, triangle.box, to);
    const TriangleSse2 t = SpreadSse2(setup);
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        FillRowTexturedSse2(setup, t, to, y, SpanOfRow(area, y), fill);
    }
}

const RowFills& RowFillsSse2() {
    static constexpr RowFills kFills{FillFlatSse2, FillTexturedSse2};
    return kFills;
}
