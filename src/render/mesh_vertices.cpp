#include "render/mesh_vertices.h"

#include "render/points_avx2.h"
#include "render/simd.h"

#include <algorithm>
#include <limits>

static_assert(sizeof(MeshVertex) == 16);

static void TransformScalar(const MeshVertex* vertices, const VertexTransform& transform, MeshVertices& out) {
    out.arePlain = true;
    for (size_t i = 0; i < out.corners.size(); ++i) {
        const Vec3 world = TransformPoint(transform.world, vertices[i].position);
        const Vec4 clip = TransformToClip(transform.viewProjection, world);
        out.beyondNearPlane[i] = clip.z >= 0;
        out.visible[i] = ProjectToViewport(clip, transform.viewport, out.corners[i]);
        out.arePlain = out.arePlain && out.IsPlain(i);
    }
}

// Where all corners lie. There is at least one.
static void MeasureScalar(MeshVertices& out) {
    const ScreenCorner& first = out.corners[0];
    out.left = out.right = first.x;
    out.top = out.bottom = first.y;
    for (const ScreenCorner& corner : out.corners) {
        out.left = std::min(out.left, corner.x);
        out.top = std::min(out.top, corner.y);
        out.right = std::max(out.right, corner.x);
        out.bottom = std::max(out.bottom, corner.y);
    }
}

static void CopyPlainCorners(MeshVertices& out) {
    constexpr float kNowhere = std::numeric_limits<float>::quiet_NaN();
    out.plainCorners.resize(out.corners.size());
    for (size_t i = 0; i < out.corners.size(); ++i) {
        out.plainCorners[i] =
            out.IsPlain(i) ? out.corners[i] : ScreenCorner{kNowhere, kNowhere, kNowhere, kNowhere};
    }
}

// ---- Four vertices at a time.

namespace {

struct PointsSse2 {
    __m128 x, y, z;
};

// Where the corners found so far lie.
struct SpanSse2 {
    __m128 left, top, right, bottom;
    __m128 plain;  // all bits set while every vertex is
};

}  // namespace

static PointsSse2 PositionsSse2(const MeshVertex* v) {
    __m128 x = _mm_loadu_ps(&v[0].position.x), y = _mm_loadu_ps(&v[1].position.x);
    __m128 z = _mm_loadu_ps(&v[2].position.x), color = _mm_loadu_ps(&v[3].position.x);
    _MM_TRANSPOSE4_PS(x, y, z, color);
    return {x, y, z};
}

static __m128 RowTimesSse2(const Matrix4& a, size_t row, const PointsSse2& p) {
    const auto& m = a.m[row];
    const __m128 sum = _mm_add_ps(_mm_mul_ps(_mm_set1_ps(m[0]), p.x), _mm_mul_ps(_mm_set1_ps(m[1]), p.y));
    return _mm_add_ps(_mm_add_ps(sum, _mm_mul_ps(_mm_set1_ps(m[2]), p.z)), _mm_set1_ps(m[3]));
}

// Four records of four floats.
static void StoreRecordsSse2(float* first, __m128 x, __m128 y, __m128 z, __m128 w) {
    _MM_TRANSPOSE4_PS(x, y, z, w);
    const __m128 records[] = {x, y, z, w};
    for (int i = 0; i < 4; ++i) _mm_storeu_ps(first + 4 * i, records[i]);
}

static __m128 PixelsSse2(int32_t count) { return _mm_set1_ps(static_cast<float>(count)); }

// One byte per lane, 1 where the mask is set.
static void StoreFlagsSse2(uint8_t* flags, __m128 mask) {
    const int lanes = _mm_movemask_ps(mask);
    for (int lane = 0; lane < 4; ++lane) flags[lane] = lanes >> lane & 1;
}

static void WidenSse2(SpanSse2& span, __m128 x, __m128 y, __m128 plain) {
    span.left = _mm_min_ps(span.left, x);
    span.top = _mm_min_ps(span.top, y);
    span.right = _mm_max_ps(span.right, x);
    span.bottom = _mm_max_ps(span.bottom, y);
    span.plain = _mm_and_ps(span.plain, plain);
}

// The four vertices from `i` on. The projection is that of ProjectToViewport.
static void TransformFourSse2(const MeshVertex* vertices, const VertexTransform& transform, size_t i,
                              MeshVertices& out, SpanSse2& span) {
    const PointsSse2 object = PositionsSse2(vertices + i);
    const PointsSse2 world{RowTimesSse2(transform.world, 0, object), RowTimesSse2(transform.world, 1, object),
                           RowTimesSse2(transform.world, 2, object)};

    const __m128 clipX = RowTimesSse2(transform.viewProjection, 0, world);
    const __m128 clipY = RowTimesSse2(transform.viewProjection, 1, world);
    const __m128 clipZ = RowTimesSse2(transform.viewProjection, 2, world);
    const __m128 clipW = RowTimesSse2(transform.viewProjection, 3, world);
    const __m128 inverseW = _mm_div_ps(_mm_set1_ps(1), clipW), half = _mm_set1_ps(0.5f);
    const __m128 depth = _mm_mul_ps(clipZ, inverseW);
    const Rect& viewport = transform.viewport;
    const __m128 offX = _mm_mul_ps(_mm_mul_ps(clipX, inverseW), half);
    const __m128 offY = _mm_mul_ps(_mm_mul_ps(clipY, inverseW), half);
    const __m128 x = _mm_add_ps(_mm_mul_ps(_mm_add_ps(offX, half), PixelsSse2(Width(viewport))),
                                PixelsSse2(viewport.left));
    const __m128 y = _mm_add_ps(_mm_mul_ps(_mm_sub_ps(half, offY), PixelsSse2(Height(viewport))),
                                PixelsSse2(viewport.top));

    __m128 visible = _mm_cmpgt_ps(clipW, _mm_set1_ps(kNearestW));
    visible = _mm_and_ps(visible, _mm_cmpge_ps(depth, _mm_set1_ps(-kDepthSlack)));
    visible = _mm_and_ps(visible, _mm_cmple_ps(depth, _mm_set1_ps(1 + kDepthSlack)));
    visible = _mm_and_ps(visible, _mm_cmpord_ps(x, y));
    const __m128 beyond = _mm_cmpge_ps(clipZ, _mm_setzero_ps());
    StoreFlagsSse2(&out.visible[i], visible);
    StoreFlagsSse2(&out.beyondNearPlane[i], beyond);

    const __m128 least = _mm_set1_ps(-kMaxScreen), most = _mm_set1_ps(kMaxScreen);
    const __m128 limitedX = LimitSse2(x, least, most), limitedY = LimitSse2(y, least, most);
    const __m128 limitedDepth = LimitSse2(depth, _mm_setzero_ps(), _mm_set1_ps(1));
    StoreRecordsSse2(&out.corners[i].x, limitedX, limitedY, limitedDepth, inverseW);
    WidenSse2(span, limitedX, limitedY, _mm_and_ps(visible, beyond));
}

static float LeastLaneSse2(__m128 a) {
    a = _mm_min_ps(a, _mm_movehl_ps(a, a));
    return _mm_cvtss_f32(_mm_min_ss(a, _mm_shuffle_ps(a, a, 1)));
}

static float GreatestLaneSse2(__m128 a) { return -LeastLaneSse2(_mm_sub_ps(_mm_setzero_ps(), a)); }

static void StoreSpan(const SpanSse2& span, MeshVertices& out) {
    out.left = LeastLaneSse2(span.left);
    out.top = LeastLaneSse2(span.top);
    out.right = GreatestLaneSse2(span.right);
    out.bottom = GreatestLaneSse2(span.bottom);
    out.arePlain = _mm_movemask_ps(span.plain) == 0xF;
}

// The last four vertices overlap those before them. `count` is at least 4.
static void TransformSse2(const MeshVertex* vertices, const VertexTransform& transform, size_t count,
                          MeshVertices& out) {
    const __m128 most = _mm_set1_ps(kMaxScreen), least = _mm_set1_ps(-kMaxScreen);
    SpanSse2 span{most, most, least, least, _mm_castsi128_ps(_mm_set1_epi32(-1))};
    for (size_t i = 0; i < count; i += 4) {
        TransformFourSse2(vertices, transform, std::min(i, count - 4), out, span);
    }
    StoreSpan(span, out);
}

// ---- Eight vertices at a time.

namespace {

struct SpanAvx2 {
    __m256 left, top, right, bottom;
    __m256 plain;  // all bits set while every vertex is
};

}  // namespace

ZEL_AVX2 static ZEL_INLINE PointsAvx2 PositionsAvx2(const MeshVertex* v) {
    const auto* first = &v->position.x;
    __m256 x = LoadPairAvx2(first, first + 16), y = LoadPairAvx2(first + 4, first + 20);
    __m256 z = LoadPairAvx2(first + 8, first + 24), color = LoadPairAvx2(first + 12, first + 28);
    TransposeAvx2(x, y, z, color);
    return {x, y, z};
}

ZEL_AVX2 static ZEL_INLINE __m256 LimitAvx2(__m256 value, float low, float high) {
    return _mm256_min_ps(_mm256_max_ps(value, _mm256_set1_ps(low)), _mm256_set1_ps(high));
}

// Eight records of four floats.
ZEL_AVX2 static ZEL_INLINE void StoreRecordsAvx2(float* first, __m256 x, __m256 y, __m256 z, __m256 w) {
    TransposeAvx2(x, y, z, w);
    const __m256 records[] = {x, y, z, w};
    for (int i = 0; i < 4; ++i) {
        _mm_storeu_ps(first + 4 * i, _mm256_castps256_ps128(records[i]));
        _mm_storeu_ps(first + 16 + 4 * i, _mm256_extractf128_ps(records[i], 1));
    }
}

ZEL_AVX2 static ZEL_INLINE __m256 PixelsAvx2(int32_t count) {
    return _mm256_set1_ps(static_cast<float>(count));
}

// One byte per lane, 1 where the mask is set.
ZEL_AVX2 static ZEL_INLINE void StoreFlagsAvx2(uint8_t* flags, __m256 mask) {
    const __m256i ones = _mm256_srli_epi32(_mm256_castps_si256(mask), 31);
    const __m128i words = _mm_packs_epi32(_mm256_castsi256_si128(ones), _mm256_extracti128_si256(ones, 1));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(flags), _mm_packus_epi16(words, words));
}

ZEL_AVX2 static ZEL_INLINE void WidenAvx2(SpanAvx2& span, __m256 x, __m256 y, __m256 plain) {
    span.left = _mm256_min_ps(span.left, x);
    span.top = _mm256_min_ps(span.top, y);
    span.right = _mm256_max_ps(span.right, x);
    span.bottom = _mm256_max_ps(span.bottom, y);
    span.plain = _mm256_and_ps(span.plain, plain);
}

// The eight vertices from `i` on. The projection is that of ProjectToViewport.
ZEL_AVX2 static ZEL_INLINE void TransformEightAvx2(const MeshVertex* vertices,
                                                   const VertexTransform& transform, size_t i,
                                                   MeshVertices& out, SpanAvx2& span) {
    const PointsAvx2 object = PositionsAvx2(vertices + i);
    const PointsAvx2 world{RowTimesAvx2(transform.world, 0, object), RowTimesAvx2(transform.world, 1, object),
                           RowTimesAvx2(transform.world, 2, object)};

    const __m256 clipX = RowTimesAvx2(transform.viewProjection, 0, world);
    const __m256 clipY = RowTimesAvx2(transform.viewProjection, 1, world);
    const __m256 clipZ = RowTimesAvx2(transform.viewProjection, 2, world);
    const __m256 clipW = RowTimesAvx2(transform.viewProjection, 3, world);
    const __m256 inverseW = _mm256_div_ps(_mm256_set1_ps(1), clipW), half = _mm256_set1_ps(0.5f);
    const __m256 depth = _mm256_mul_ps(clipZ, inverseW);
    const Rect& viewport = transform.viewport;
    const __m256 offX = _mm256_mul_ps(_mm256_mul_ps(clipX, inverseW), half);
    const __m256 offY = _mm256_mul_ps(_mm256_mul_ps(clipY, inverseW), half);
    const __m256 x = _mm256_add_ps(_mm256_mul_ps(_mm256_add_ps(offX, half), PixelsAvx2(Width(viewport))),
                                   PixelsAvx2(viewport.left));
    const __m256 y = _mm256_add_ps(_mm256_mul_ps(_mm256_sub_ps(half, offY), PixelsAvx2(Height(viewport))),
                                   PixelsAvx2(viewport.top));

    __m256 visible = _mm256_cmp_ps(clipW, _mm256_set1_ps(kNearestW), _CMP_GT_OQ);
    visible = _mm256_and_ps(visible, _mm256_cmp_ps(depth, _mm256_set1_ps(-kDepthSlack), _CMP_GE_OQ));
    visible = _mm256_and_ps(visible, _mm256_cmp_ps(depth, _mm256_set1_ps(1 + kDepthSlack), _CMP_LE_OQ));
    visible = _mm256_and_ps(visible, _mm256_cmp_ps(x, y, _CMP_ORD_Q));
    const __m256 beyond = _mm256_cmp_ps(clipZ, _mm256_setzero_ps(), _CMP_GE_OQ);
    StoreFlagsAvx2(&out.visible[i], visible);
    StoreFlagsAvx2(&out.beyondNearPlane[i], beyond);

    const __m256 limitedX = LimitAvx2(x, -kMaxScreen, kMaxScreen),
                 limitedY = LimitAvx2(y, -kMaxScreen, kMaxScreen);
    StoreRecordsAvx2(&out.corners[i].x, limitedX, limitedY, LimitAvx2(depth, 0, 1), inverseW);
    WidenAvx2(span, limitedX, limitedY, _mm256_and_ps(visible, beyond));
}

ZEL_AVX2 static ZEL_INLINE __m128 LowerAvx2(__m256 a) { return _mm256_castps256_ps128(a); }
ZEL_AVX2 static ZEL_INLINE __m128 UpperAvx2(__m256 a) { return _mm256_extractf128_ps(a, 1); }

ZEL_AVX2 static ZEL_INLINE void FoldAvx2(const SpanAvx2& span, SpanSse2& halves) {
    halves.left = _mm_min_ps(LowerAvx2(span.left), UpperAvx2(span.left));
    halves.top = _mm_min_ps(LowerAvx2(span.top), UpperAvx2(span.top));
    halves.right = _mm_max_ps(LowerAvx2(span.right), UpperAvx2(span.right));
    halves.bottom = _mm_max_ps(LowerAvx2(span.bottom), UpperAvx2(span.bottom));
    halves.plain = _mm_and_ps(LowerAvx2(span.plain), UpperAvx2(span.plain));
}

// The last eight vertices overlap those before them. `count` is at least 8.
ZEL_AVX2 static void TransformAvx2(const MeshVertex* vertices, const VertexTransform& transform, size_t count,
                                   MeshVertices& out) {
    const __m256 most = _mm256_set1_ps(kMaxScreen), least = _mm256_set1_ps(-kMaxScreen);
    SpanAvx2 span{most, most, least, least, _mm256_castsi256_ps(_mm256_set1_epi32(-1))};
    for (size_t i = 0; i < count; i += 8) {
        TransformEightAvx2(vertices, transform, std::min(i, count - 8), out, span);
    }
    SpanSse2 halves;
    FoldAvx2(span, halves);
    _mm256_zeroupper();
    StoreSpan(halves, out);
}

void TransformVertices(const Mesh& mesh, const VertexTransform& transform, SimdLevel level,
                       MeshVertices& out) {
    const size_t count = mesh.vertices.size();
    out.corners.resize(count);
    out.visible.resize(count);
    out.beyondNearPlane.resize(count);
    if (level == SimdLevel::Avx2 && count >= 8) {
        TransformAvx2(mesh.vertices.data(), transform, count, out);
    } else if (level != SimdLevel::Scalar && count >= 4) {
        TransformSse2(mesh.vertices.data(), transform, count, out);
    } else {
        TransformScalar(mesh.vertices.data(), transform, out);
        if (out.arePlain && count > 0) MeasureScalar(out);
    }
    if (!out.arePlain) CopyPlainCorners(out);
}
