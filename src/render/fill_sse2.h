// What the fills of four pixels at a time share.
#pragma once

#include "render/fill_pixels.h"
#include "render/surface.h"
#include "scene/limit.h"

#include <algorithm>

struct WeightsSse2 {
    __m128 w0, w1, w2;
};

// a * x + b * y + c * z, summed from the left.
ZEL_INLINE __m128 WeightedSse2(const WeightsSse2& w, const __m128 (&values)[3]) {
    const __m128 sum = _mm_add_ps(_mm_mul_ps(w.w0, values[0]), _mm_mul_ps(w.w1, values[1]));
    return _mm_add_ps(sum, _mm_mul_ps(w.w2, values[2]));
}

ZEL_INLINE __m128i ColumnNumbersSse2(int32_t x) {
    return _mm_add_epi32(_mm_set1_epi32(x), _mm_setr_epi32(0, 1, 2, 3));
}

// All bits set in lanes left of `right`.
ZEL_INLINE __m128 LanesBeforeSse2(int32_t x, int32_t right) {
    return _mm_castsi128_ps(_mm_cmplt_epi32(ColumnNumbersSse2(x), _mm_set1_epi32(right)));
}

// value limited to 0 .. 1, not a number to 0.
ZEL_INLINE __m128 LimitToUnitSse2(__m128 value) {
    return _mm_min_ps(_mm_max_ps(value, _mm_setzero_ps()), _mm_set1_ps(1));
}

// Values from 2^23 on have no fraction; they, infinities and not a number are returned as they are.
ZEL_INLINE __m128 FloorSse2(__m128 value) {
    const __m128 magnitude = _mm_andnot_ps(_mm_set1_ps(-0.0f), value);
    const __m128 hasFraction = _mm_cmplt_ps(magnitude, _mm_set1_ps(8388608.0f));
    const __m128 truncated = _mm_cvtepi32_ps(_mm_cvttps_epi32(value));
    const __m128 step = _mm_and_ps(_mm_cmpgt_ps(truncated, value), _mm_set1_ps(1));
    return SelectSse2(hasFraction, _mm_sub_ps(truncated, step), value);
}

ZEL_INLINE __m128 WrappedSse2(__m128 coordinate, bool repeat) {
    return LimitToUnitSse2(repeat ? _mm_sub_ps(coordinate, FloorSse2(coordinate)) : coordinate);
}

// One channel of four pixels, lit, in the low byte of each lane.
ZEL_INLINE __m128i LitChannelSse2(__m128i colors, int shift, __m128 brightness) {
    const __m128i channel = _mm_and_si128(_mm_srli_epi32(colors, shift), _mm_set1_epi32(0xFF));
    const __m128 lit = _mm_mul_ps(_mm_cvtepi32_ps(channel), brightness);
    return _mm_cvttps_epi32(_mm_min_ps(lit, _mm_set1_ps(255)));
}

ZEL_INLINE __m128i LitSse2(__m128i colors, float brightness) {
    const __m128 factor = _mm_set1_ps(Limit(brightness, kDarkest, kBrightest));
    const __m128i red = _mm_slli_epi32(LitChannelSse2(colors, 16, factor), 16);
    const __m128i green = _mm_slli_epi32(LitChannelSse2(colors, 8, factor), 8);
    return _mm_or_si128(_mm_or_si128(red, green), LitChannelSse2(colors, 0, factor));
}

ZEL_INLINE __m128i TintedSse2(__m128i colors, uint32_t tint) {
    if (tint == 0) return colors;
    const __m128i tints = _mm_set1_epi32(static_cast<int32_t>(tint));
    const __m128i differing = _mm_and_si128(_mm_xor_si128(colors, tints), _mm_set1_epi32(0xFEFEFE));
    const __m128i average = _mm_add_epi32(_mm_and_si128(colors, tints), _mm_srli_epi32(differing, 1));
    return _mm_and_si128(average, _mm_set1_epi32(0xFFFFFF));
}

// The texels of the lanes in `seen`; the others are undefined.
ZEL_INLINE __m128i SampleSse2(const TextureFill& fill, __m128 u, __m128 v, __m128 seen) {
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

// A flat triangle's colour. It is kept here once it is known, so that it stays in a register.
struct FlatInkSse2 {
    LateColor& color;
    bool isMade = false;
    __m128i colors{};

    // False when the triangle is not to be drawn.
    ZEL_INLINE bool ColorsOf(const WeightsSse2&, __m128&, __m128i& made) {
        if (!isMade) {
            if (!color.IsKnown()) return false;
            colors = _mm_set1_epi32(static_cast<int32_t>(color.value));
            isMade = true;
        }
        made = colors;
        return true;
    }
};

// A textured triangle's colours, by what is kept here once it is known.
struct TextureInkSse2 {
    const std::array<ScreenCorner, 3>& corners;
    LateTexture& texture;
    bool isMade = false;
    __m128 inverseW[3], u[3], v[3];

    ZEL_INLINE void Make() {
        for (size_t i = 0; i < 3; ++i) {
            inverseW[i] = _mm_set1_ps(corners[i].inverseW);
            u[i] = _mm_set1_ps(texture.value.points[i].u);
            v[i] = _mm_set1_ps(texture.value.points[i].v);
        }
        isMade = true;
    }

    // Takes lanes out of `seen` in which there is no texel. False when the triangle is not to be drawn.
    ZEL_INLINE bool ColorsOf(const WeightsSse2& w, __m128& seen, __m128i& colors) {
        if (!isMade) {
            if (!texture.IsKnown()) return false;
            Make();
        }
        const TextureFill& fill = texture.value.fill;
        const WeightsSse2 q{_mm_mul_ps(w.w0, inverseW[0]), _mm_mul_ps(w.w1, inverseW[1]),
                            _mm_mul_ps(w.w2, inverseW[2])};
        const __m128 sum = _mm_add_ps(_mm_add_ps(q.w0, q.w1), q.w2);
        const __m128 magnitude = _mm_andnot_ps(_mm_set1_ps(-0.0f), sum);
        seen = _mm_and_ps(seen, _mm_cmpgt_ps(magnitude, _mm_set1_ps(kSmallestQ)));
        const __m128 atU = _mm_div_ps(WeightedSse2(q, u), sum), atV = _mm_div_ps(WeightedSse2(q, v), sum);
        colors = LitSse2(TintedSse2(SampleSse2(fill, atU, atV, seen), fill.tint), fill.brightness);
        return true;
    }
};

// True where all of what was drawn lies before a triangle whose nearest depth is given.
ZEL_INLINE bool AreHiddenSse2(const FillTarget& to, int64_t at, __m128 nearest, __m128 allowed) {
    const __m128 hidden = _mm_cmplt_ps(_mm_loadu_ps(to.depth + at), nearest);
    return _mm_movemask_ps(_mm_andnot_ps(hidden, allowed)) == 0;
}

// Of the lanes at the depth that was drawn, those in which an object was that comes after this one.
ZEL_INLINE __m128 WonTiesSse2(const FillTarget& to, int64_t at, __m128 ties) {
    if (to.owners == nullptr || _mm_movemask_ps(ties) == 0) return _mm_setzero_ps();
    const __m128i owners = _mm_loadu_si128(reinterpret_cast<const __m128i*>(to.owners + at));
    const __m128i isEarlier = _mm_cmplt_epi32(_mm_set1_epi32(to.owner), owners);
    return _mm_and_ps(ties, _mm_castsi128_ps(isEarlier));
}

// Writes the lanes that are seen. All of them are, mostly.
ZEL_INLINE void StoreSeenSse2(void* to, __m128 seen, bool areAll, __m128 values) {
    auto* first = static_cast<float*>(to);
    _mm_storeu_ps(first, areAll ? values : SelectSse2(seen, values, _mm_loadu_ps(first)));
}

// Four pixels of a row from `at` on, by the edge functions there; `depths` are those of the corners. False
// when the triangle is not to be drawn.
template <typename Ink>
ZEL_INLINE bool FillFourSse2(const __m128 (&edges)[3], __m128 area, const __m128 (&depths)[3], __m128 allowed,
                             const FillTarget& to, int64_t at, Ink& ink) {
    const WeightsSse2 w{_mm_div_ps(edges[0], area), _mm_div_ps(edges[1], area), _mm_div_ps(edges[2], area)};
    const __m128 zero = _mm_setzero_ps();
    const __m128 depth = WeightedSse2(w, depths), drawnDepth = _mm_loadu_ps(to.depth + at);
    __m128 inside = _mm_and_ps(_mm_cmpge_ps(w.w0, zero), _mm_cmpge_ps(w.w1, zero));
    inside = _mm_and_ps(_mm_and_ps(inside, _mm_cmpge_ps(w.w2, zero)), allowed);
    inside = _mm_and_ps(inside, _mm_cmpge_ps(depth, zero));
    __m128 seen = _mm_and_ps(inside, _mm_cmplt_ps(depth, drawnDepth));
    seen = _mm_or_ps(seen, WonTiesSse2(to, at, _mm_and_ps(inside, _mm_cmpeq_ps(depth, drawnDepth))));
    if (_mm_movemask_ps(seen) == 0) return true;
    __m128i colors;
    if (!ink.ColorsOf(w, seen, colors)) return false;
    const bool areAll = _mm_movemask_ps(seen) == 0xF;
    StoreSeenSse2(to.pixels + at, seen, areAll, _mm_castsi128_ps(colors));
    StoreSeenSse2(to.depth + at, seen, areAll, depth);
    if (to.owners != nullptr)
        StoreSeenSse2(to.owners + at, seen, areAll, _mm_castsi128_ps(_mm_set1_epi32(to.owner)));
    return true;
}

// Boxes up to this width are filled by blocks of columns, larger ones by rows.
constexpr int32_t kSmallWidthSse2 = 4 * kMostBlocks;

void FillLargeFlatSse2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill);
void FillFlatSse2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill);
void FillFlatFacesSse2(const MeshFaces& mesh, const FillTarget& to, FlatFill fill);
void FillSmallTexturedSse2(const PlacedTriangle& triangle, const FillTarget& to, const TexturedFill& fill);
