// What the fills of eight pixels at a time share.
#pragma once

#include "render/fill_pixels.h"
#include "render/surface.h"
#include "scene/limit.h"

struct WeightsAvx2 {
    __m256 w0, w1, w2;
};

// Eight pixels of a row.
struct RowOfEight {
    int64_t at;  // of the first pixel in the buffer

    ZEL_AVX2 ZEL_INLINE __m256 Load(const void* buffer) const {
        return _mm256_loadu_ps(static_cast<const float*>(buffer) + at);
    }
    ZEL_AVX2 ZEL_INLINE void Store(void* buffer, __m256 values) const {
        _mm256_storeu_ps(static_cast<float*>(buffer) + at, values);
    }
};

// Four pixels of a row in the lower lanes and four of the row below it in the upper ones. Both may be the
// same row; the lower lanes then hold what is to be stored.
struct TwoRowsOfFour {
    int64_t upper, lower;

    ZEL_AVX2 ZEL_INLINE __m256 Load(const void* buffer) const {
        const auto* first = static_cast<const float*>(buffer);
        return LoadPairAvx2(first + upper, first + lower);
    }
    ZEL_AVX2 ZEL_INLINE void Store(void* buffer, __m256 values) const {
        auto* first = static_cast<float*>(buffer);
        _mm_storeu_ps(first + lower, _mm256_extractf128_ps(values, 1));
        _mm_storeu_ps(first + upper, _mm256_castps256_ps128(values));
    }
};

ZEL_AVX2 ZEL_INLINE __m256i ColumnNumbersAvx2(int32_t x) {
    return _mm256_add_epi32(_mm256_set1_epi32(x), _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
}

ZEL_AVX2 ZEL_INLINE __m256 LanesBeforeAvx2(int32_t x, int32_t right) {
    return _mm256_castsi256_ps(_mm256_cmpgt_epi32(_mm256_set1_epi32(right), ColumnNumbersAvx2(x)));
}

// a * x + b * y + c * z, summed from the left.
ZEL_AVX2 ZEL_INLINE __m256 WeightedAvx2(const WeightsAvx2& w, const __m256 (&values)[3]) {
    const __m256 sum = _mm256_add_ps(_mm256_mul_ps(w.w0, values[0]), _mm256_mul_ps(w.w1, values[1]));
    return _mm256_add_ps(sum, _mm256_mul_ps(w.w2, values[2]));
}

ZEL_AVX2 ZEL_INLINE __m256 WrappedAvx2(__m256 coordinate, bool repeat) {
    const __m256 wrapped = repeat ? _mm256_sub_ps(coordinate, _mm256_floor_ps(coordinate)) : coordinate;
    return _mm256_min_ps(_mm256_max_ps(wrapped, _mm256_setzero_ps()), _mm256_set1_ps(1));
}

ZEL_AVX2 ZEL_INLINE __m256i LitChannelAvx2(__m256i colors, int shift, __m256 brightness) {
    const __m256i channel = _mm256_and_si256(_mm256_srli_epi32(colors, shift), _mm256_set1_epi32(0xFF));
    const __m256 lit = _mm256_mul_ps(_mm256_cvtepi32_ps(channel), brightness);
    return _mm256_cvttps_epi32(_mm256_min_ps(lit, _mm256_set1_ps(255)));
}

ZEL_AVX2 ZEL_INLINE __m256i LitAvx2(__m256i colors, float brightness) {
    const __m256 factor = _mm256_set1_ps(Limit(brightness, kDarkest, kBrightest));
    const __m256i red = _mm256_slli_epi32(LitChannelAvx2(colors, 16, factor), 16);
    const __m256i green = _mm256_slli_epi32(LitChannelAvx2(colors, 8, factor), 8);
    return _mm256_or_si256(_mm256_or_si256(red, green), LitChannelAvx2(colors, 0, factor));
}

ZEL_AVX2 ZEL_INLINE __m256i TintedAvx2(__m256i colors, uint32_t tint) {
    if (tint == 0) return colors;
    const __m256i tints = _mm256_set1_epi32(static_cast<int32_t>(tint));
    const __m256i differing = _mm256_and_si256(_mm256_xor_si256(colors, tints), _mm256_set1_epi32(0xFEFEFE));
    const __m256i average =
        _mm256_add_epi32(_mm256_and_si256(colors, tints), _mm256_srli_epi32(differing, 1));
    return _mm256_and_si256(average, _mm256_set1_epi32(0xFFFFFF));
}

ZEL_AVX2 ZEL_INLINE __m256i SampleAvx2(const TextureFill& fill, __m256 u, __m256 v, __m256 seen) {
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

// A flat triangle's colour. It is kept here once it is known, so that it stays in a register.
struct FlatInkAvx2 {
    LateColor& color;
    bool isMade = false;
    __m256i colors{};

    // False when the triangle is not to be drawn.
    ZEL_AVX2 ZEL_INLINE bool ColorsOf(const WeightsAvx2&, __m256&, __m256i& made) {
        if (!isMade) {
            if (!color.IsKnown()) return false;
            colors = _mm256_set1_epi32(static_cast<int32_t>(color.value));
            isMade = true;
        }
        made = colors;
        return true;
    }
};

// A textured triangle's colours, by what is kept here once it is known.
struct TextureInkAvx2 {
    const std::array<ScreenCorner, 3>& corners;
    LateTexture& texture;
    bool isMade = false;
    __m256 inverseW[3], u[3], v[3];

    ZEL_AVX2 ZEL_INLINE void Make() {
        for (size_t i = 0; i < 3; ++i) {
            inverseW[i] = _mm256_set1_ps(corners[i].inverseW);
            u[i] = _mm256_set1_ps(texture.value.points[i].u);
            v[i] = _mm256_set1_ps(texture.value.points[i].v);
        }
        isMade = true;
    }

    // Takes lanes out of `seen` in which there is no texel. False when the triangle is not to be drawn.
    ZEL_AVX2 ZEL_INLINE bool ColorsOf(const WeightsAvx2& w, __m256& seen, __m256i& colors) {
        if (!isMade) {
            if (!texture.IsKnown()) return false;
            Make();
        }
        const TextureFill& fill = texture.value.fill;
        const WeightsAvx2 q{_mm256_mul_ps(w.w0, inverseW[0]), _mm256_mul_ps(w.w1, inverseW[1]),
                            _mm256_mul_ps(w.w2, inverseW[2])};
        const __m256 sum = _mm256_add_ps(_mm256_add_ps(q.w0, q.w1), q.w2);
        const __m256 magnitude = _mm256_andnot_ps(_mm256_set1_ps(-0.0f), sum);
        seen = _mm256_and_ps(seen, _mm256_cmp_ps(magnitude, _mm256_set1_ps(kSmallestQ), _CMP_GT_OQ));
        const __m256 atU = _mm256_div_ps(WeightedAvx2(q, u), sum),
                     atV = _mm256_div_ps(WeightedAvx2(q, v), sum);
        colors = LitAvx2(TintedAvx2(SampleAvx2(fill, atU, atV, seen), fill.tint), fill.brightness);
        return true;
    }
};

// Lanes inside the triangle.
ZEL_AVX2 ZEL_INLINE __m256 InsideAvx2(const WeightsAvx2& w) {
    const __m256 zero = _mm256_setzero_ps();
    const __m256 two =
        _mm256_and_ps(_mm256_cmp_ps(w.w0, zero, _CMP_GE_OQ), _mm256_cmp_ps(w.w1, zero, _CMP_GE_OQ));
    return _mm256_and_ps(two, _mm256_cmp_ps(w.w2, zero, _CMP_GE_OQ));
}

// True where all of what was drawn lies before a triangle whose nearest depth is given.
template <typename Place>
ZEL_AVX2 ZEL_INLINE bool AreHiddenAvx2(const FillTarget& to, const Place& place, __m256 nearest,
                                       __m256 allowed) {
    const __m256 hidden = _mm256_cmp_ps(place.Load(to.depth), nearest, _CMP_LT_OQ);
    return _mm256_movemask_ps(_mm256_andnot_ps(hidden, allowed)) == 0;
}

// Of the lanes at the depth that was drawn, those in which an object was that comes after this one.
template <typename Place>
ZEL_AVX2 ZEL_INLINE __m256 WonTiesAvx2(const FillTarget& to, const Place& place, __m256 ties) {
    if (to.owners == nullptr || _mm256_movemask_ps(ties) == 0) return _mm256_setzero_ps();
    const __m256i owners = _mm256_castps_si256(place.Load(to.owners));
    const __m256i isEarlier = _mm256_cmpgt_epi32(owners, _mm256_set1_epi32(to.owner));
    return _mm256_and_ps(ties, _mm256_castsi256_ps(isEarlier));
}

// Writes the lanes that are seen. All of them are, mostly.
template <typename Place>
ZEL_AVX2 ZEL_INLINE void StoreSeenAvx2(void* buffer, const Place& place, __m256 seen, bool areAll,
                                       __m256 values) {
    place.Store(buffer, areAll ? values : _mm256_blendv_ps(place.Load(buffer), values, seen));
}

// Eight pixels of a triangle, by its edge functions there; `depths` are those of its corners. False when the
// triangle is not to be drawn.
template <typename Place, typename Ink>
ZEL_AVX2 ZEL_INLINE bool FillEightAvx2(const __m256 (&edges)[3], __m256 area, const __m256 (&depths)[3],
                                       __m256 allowed, const FillTarget& to, const Place& place, Ink& ink) {
    const WeightsAvx2 w{_mm256_div_ps(edges[0], area), _mm256_div_ps(edges[1], area),
                        _mm256_div_ps(edges[2], area)};
    const __m256 depth = WeightedAvx2(w, depths), drawnDepth = place.Load(to.depth);
    const __m256 isDepth = _mm256_cmp_ps(depth, _mm256_setzero_ps(), _CMP_GE_OQ);
    const __m256 inside = _mm256_and_ps(_mm256_and_ps(allowed, InsideAvx2(w)), isDepth);
    const __m256 ties = _mm256_and_ps(inside, _mm256_cmp_ps(depth, drawnDepth, _CMP_EQ_OQ));
    __m256 seen = _mm256_and_ps(inside, _mm256_cmp_ps(depth, drawnDepth, _CMP_LT_OQ));
    seen = _mm256_or_ps(seen, WonTiesAvx2(to, place, ties));
    if (_mm256_movemask_ps(seen) == 0) return true;
    __m256i colors;
    if (!ink.ColorsOf(w, seen, colors)) return false;
    const bool areAll = _mm256_movemask_ps(seen) == 0xFF;
    StoreSeenAvx2(to.pixels, place, seen, areAll, _mm256_castsi256_ps(colors));
    StoreSeenAvx2(to.depth, place, seen, areAll, depth);
    if (to.owners != nullptr)
        StoreSeenAvx2(to.owners, place, seen, areAll, _mm256_castsi256_ps(_mm256_set1_epi32(to.owner)));
    return true;
}

// Boxes up to this width are filled by blocks of columns, larger ones by bands of rows.
constexpr int32_t kSmallWidth = 8 * kMostBlocks;

void FillLargeFlatAvx2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill);
void FillFlatAvx2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill);
void FillFlatFacesAvx2(const MeshFaces& mesh, const FillTarget& to, FlatFill fill);
void FillSmallTexturedAvx2(const PlacedTriangle& triangle, const FillTarget& to, const TexturedFill& fill);
