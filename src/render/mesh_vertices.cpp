#include "render/mesh_vertices.h"

#include "render/simd.h"

#include <algorithm>
#include <limits>

static_assert(sizeof(MeshVertex) == 16);

static void TransformScalar(const MeshVertex* vertices, const VertexTransform& transform, size_t from,
                            size_t to, MeshVertices& out) {
    constexpr float kNowhere = std::numeric_limits<float>::quiet_NaN();
    for (size_t i = from; i < to; ++i) {
        const Vec3 world = TransformPoint(transform.world, vertices[i].position);
        out.world[i] = {world.x, world.y, world.z, 0};
        const Vec4 clip = TransformToClip(transform.viewProjection, world);
        out.beyondNearPlane[i] = clip.z >= 0;
        out.visible[i] = ProjectToViewport(clip, transform.viewport, out.corners[i]);
        out.places[i] = {kNowhere, kNowhere};
        if (out.IsPlain(i)) out.places[i] = {out.corners[i].x, out.corners[i].y};
    }
}

namespace {

struct PointsAvx2 {
    __m256 x, y, z;
};

}  // namespace

ZEL_AVX2 static ZEL_INLINE PointsAvx2 PositionsAvx2(const MeshVertex* v) {
    const auto* first = &v->position.x;
    __m256 x = LoadPairAvx2(first, first + 16), y = LoadPairAvx2(first + 4, first + 20);
    __m256 z = LoadPairAvx2(first + 8, first + 24), color = LoadPairAvx2(first + 12, first + 28);
    TransposeAvx2(x, y, z, color);
    return {x, y, z};
}

ZEL_AVX2 static ZEL_INLINE __m256 RowTimesAvx2(const Matrix4& a, size_t row, const PointsAvx2& p) {
    const auto& m = a.m[row];
    const __m256 sum =
        _mm256_add_ps(_mm256_mul_ps(_mm256_set1_ps(m[0]), p.x), _mm256_mul_ps(_mm256_set1_ps(m[1]), p.y));
    return _mm256_add_ps(_mm256_add_ps(sum, _mm256_mul_ps(_mm256_set1_ps(m[2]), p.z)), _mm256_set1_ps(m[3]));
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

// The eight vertices from `i` on. The projection is that of ProjectToViewport.
ZEL_AVX2 static ZEL_INLINE void TransformEightAvx2(const MeshVertex* vertices,
                                                   const VertexTransform& transform, size_t i,
                                                   MeshVertices& out) {
    const PointsAvx2 object = PositionsAvx2(vertices + i);
    const PointsAvx2 world{RowTimesAvx2(transform.world, 0, object), RowTimesAvx2(transform.world, 1, object),
                           RowTimesAvx2(transform.world, 2, object)};
    StoreRecordsAvx2(&out.world[i].x, world.x, world.y, world.z, _mm256_setzero_ps());

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
    const __m256 plain = _mm256_and_ps(visible, beyond);
    const __m256 nowhere = _mm256_set1_ps(std::numeric_limits<float>::quiet_NaN());
    const __m256 placeX = _mm256_blendv_ps(nowhere, limitedX, plain);
    const __m256 placeY = _mm256_blendv_ps(nowhere, limitedY, plain);
    const __m256 low = _mm256_unpacklo_ps(placeX, placeY), high = _mm256_unpackhi_ps(placeX, placeY);
    _mm256_storeu_ps(&out.places[i].x, _mm256_permute2f128_ps(low, high, 0x20));
    _mm256_storeu_ps(&out.places[i].x + 8, _mm256_permute2f128_ps(low, high, 0x31));
}

// The last eight vertices overlap those before them. `count` is at least 8.
ZEL_AVX2 static void TransformAvx2(const MeshVertex* vertices, const VertexTransform& transform, size_t count,
                                   MeshVertices& out) {
    for (size_t i = 0; i < count; i += 8) {
        TransformEightAvx2(vertices, transform, std::min(i, count - 8), out);
    }
}

void TransformVertices(const Mesh& mesh, const VertexTransform& transform, SimdLevel level,
                       MeshVertices& out) {
    const size_t count = mesh.vertices.size();
    out.world.resize(count);
    out.corners.resize(count);
    out.visible.resize(count);
    out.beyondNearPlane.resize(count);
    out.places.resize(count);
    if (level == SimdLevel::Avx2 && count >= 8) {
        TransformAvx2(mesh.vertices.data(), transform, count, out);
    } else {
        TransformScalar(mesh.vertices.data(), transform, 0, count, out);
    }
}
