// What files with vector code share.
#pragma once

#include <immintrin.h>

// Into functions of every level, so that each is encoded as one: a call from AVX2 code into SSE code would
// run with the upper halves of the registers in use, which slows down all that follows.
#if defined(_MSC_VER) && !defined(__clang__)
#define ZEL_INLINE __forceinline
#define ZEL_AVX2
#else
#define ZEL_INLINE inline __attribute__((always_inline))
#define ZEL_AVX2 __attribute__((target("avx2")))
#endif

ZEL_INLINE __m128 SelectSse2(__m128 mask, __m128 yes, __m128 no) {
    return _mm_or_ps(_mm_and_ps(mask, yes), _mm_andnot_ps(mask, no));
}

ZEL_INLINE __m128 LimitSse2(__m128 value, __m128 low, __m128 high) {
    return _mm_min_ps(_mm_max_ps(value, low), high);
}

// Eight records of four floats into four vectors of eight, and back: the same steps undo themselves. Record i
// and record i + 4 share a vector.
ZEL_AVX2 ZEL_INLINE void TransposeAvx2(__m256& a, __m256& b, __m256& c, __m256& d) {
    const __m256 low0 = _mm256_unpacklo_ps(a, b), high0 = _mm256_unpackhi_ps(a, b);
    const __m256 low1 = _mm256_unpacklo_ps(c, d), high1 = _mm256_unpackhi_ps(c, d);
    a = _mm256_shuffle_ps(low0, low1, _MM_SHUFFLE(1, 0, 1, 0));
    b = _mm256_shuffle_ps(low0, low1, _MM_SHUFFLE(3, 2, 3, 2));
    c = _mm256_shuffle_ps(high0, high1, _MM_SHUFFLE(1, 0, 1, 0));
    d = _mm256_shuffle_ps(high0, high1, _MM_SHUFFLE(3, 2, 3, 2));
}

// Two records into one vector.
ZEL_AVX2 ZEL_INLINE __m256 LoadPairAvx2(const float* low, const float* high) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(low)), _mm_loadu_ps(high), 1);
}
