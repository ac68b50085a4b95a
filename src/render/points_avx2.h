// Eight points or directions at a time, with the operations of scene/vec3.h and in their order.
#pragma once

#include "render/matrix4.h"
#include "render/simd.h"

#include <cstddef>

struct PointsAvx2 {
    __m256 x, y, z;
};

ZEL_AVX2 ZEL_INLINE PointsAvx2 SpreadAvx2(Vec3 a) {
    return {_mm256_set1_ps(a.x), _mm256_set1_ps(a.y), _mm256_set1_ps(a.z)};
}

ZEL_AVX2 ZEL_INLINE PointsAvx2 PlusAvx2(const PointsAvx2& a, const PointsAvx2& b) {
    return {_mm256_add_ps(a.x, b.x), _mm256_add_ps(a.y, b.y), _mm256_add_ps(a.z, b.z)};
}

ZEL_AVX2 ZEL_INLINE PointsAvx2 MinusAvx2(const PointsAvx2& a, const PointsAvx2& b) {
    return {_mm256_sub_ps(a.x, b.x), _mm256_sub_ps(a.y, b.y), _mm256_sub_ps(a.z, b.z)};
}

ZEL_AVX2 ZEL_INLINE __m256 DotAvx2(const PointsAvx2& a, const PointsAvx2& b) {
    const __m256 sum = _mm256_add_ps(_mm256_mul_ps(a.x, b.x), _mm256_mul_ps(a.y, b.y));
    return _mm256_add_ps(sum, _mm256_mul_ps(a.z, b.z));
}

// a * b - c * d
ZEL_AVX2 ZEL_INLINE __m256 DifferenceAvx2(__m256 a, __m256 b, __m256 c, __m256 d) {
    return _mm256_sub_ps(_mm256_mul_ps(a, b), _mm256_mul_ps(c, d));
}

ZEL_AVX2 ZEL_INLINE PointsAvx2 CrossAvx2(const PointsAvx2& a, const PointsAvx2& b) {
    return {DifferenceAvx2(a.y, b.z, a.z, b.y), DifferenceAvx2(a.z, b.x, a.x, b.z),
            DifferenceAvx2(a.x, b.y, a.y, b.x)};
}

ZEL_AVX2 ZEL_INLINE PointsAvx2 NormaliseAvx2(const PointsAvx2& a) {
    const __m256 length = _mm256_sqrt_ps(DotAvx2(a, a));
    const __m256 isZero = _mm256_cmp_ps(length, _mm256_set1_ps(kZeroLength), _CMP_LE_OQ);
    return {_mm256_andnot_ps(isZero, _mm256_div_ps(a.x, length)),
            _mm256_andnot_ps(isZero, _mm256_div_ps(a.y, length)),
            _mm256_andnot_ps(isZero, _mm256_div_ps(a.z, length))};
}

// One row of a matrix times the points, each with a 1 as its fourth number.
ZEL_AVX2 ZEL_INLINE __m256 RowTimesAvx2(const Matrix4& a, size_t row, const PointsAvx2& p) {
    const auto& m = a.m[row];
    const __m256 sum =
        _mm256_add_ps(_mm256_mul_ps(_mm256_set1_ps(m[0]), p.x), _mm256_mul_ps(_mm256_set1_ps(m[1]), p.y));
    return _mm256_add_ps(_mm256_add_ps(sum, _mm256_mul_ps(_mm256_set1_ps(m[2]), p.z)), _mm256_set1_ps(m[3]));
}

ZEL_AVX2 ZEL_INLINE PointsAvx2 TransformedAvx2(const Matrix4& a, const PointsAvx2& p) {
    return {RowTimesAvx2(a, 0, p), RowTimesAvx2(a, 1, p), RowTimesAvx2(a, 2, p)};
}
