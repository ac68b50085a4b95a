// Vectors of floats and integers, with one pixel, vertex or face in each lane. Every kernel is written
// with them.
//
// A source that includes this defines first how wide its vectors are: ZEL_LANES is 1, 4 (SSE2), 8 (AVX2)
// or 16 (AVX-512). Each width is one source, made from kernels.cpp.in. One lane is the definition; a wider
// vector does the same operation in every lane and gives the same bits. What only one width does well,
// such as a gather or a compressing store, is one operation here, so that no kernel has to know its width.
//
// Such a source is compiled for processors that may not be there. So everything in it has internal
// linkage, and it calls no inline function of the library or of other headers. The linker keeps one copy
// of such a function for the whole program; if it kept this one, older processors would stop at its first
// instruction. tests/vector_symbols_test.py looks at the objects.
#pragma once

#include "base/color.h"
#include "base/matrix4.h"

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(_MSC_VER) && !defined(__clang__)
#define ZEL_INLINE __forceinline
#define ZEL_APART __declspec(noinline)
#pragma fp_contract(off)
#else
#define ZEL_INLINE inline __attribute__((always_inline))
#define ZEL_APART __attribute__((noinline))
#endif

namespace {

constexpr int32_t kLanes = ZEL_LANES;
constexpr uint32_t kAllLanes = (1u << kLanes) - 1;

}  // namespace

#if ZEL_LANES == 1
#include "render/raster/lanes_one.h"
#elif ZEL_LANES == 4
#include "render/raster/lanes_sse2.h"
#elif ZEL_LANES == 8
#include "render/raster/lanes_avx2.h"
#elif ZEL_LANES == 16
#include "render/raster/lanes_avx512.h"
#endif

namespace {

ZEL_INLINE Floats Number(int32_t number) { return Splat(static_cast<float>(number)); }

ZEL_INLINE Floats Limited(Floats value, float low, float high) {
    return Least(Most(value, Splat(low)), Splat(high));
}

// The column and the row of each lane, in a block of `rows` rows whose corner is (x, y).
template <int rows>
ZEL_INLINE Ints ColumnsFrom(int32_t x) {
    return Splat(x) + (LaneNumbers() & Splat(kLanes / rows - 1));
}
template <int rows>
ZEL_INLINE Ints RowsFrom(int32_t y) {
    if constexpr (rows == 1) return Splat(y);
    constexpr int kShift = kLanes / rows == 8 ? 3 : kLanes / rows == 4 ? 2 : kLanes / rows == 2 ? 1 : 0;
    return Splat(y) + ShiftedRight<kShift>(LaneNumbers());
}

ZEL_INLINE Mask Between(Ints numbers, int32_t first, int32_t end) {
    return (Splat(first - 1) < numbers) & (numbers < Splat(end));
}

ZEL_INLINE bool AreAll(Mask mask) { return BitsOf(mask) == kAllLanes; }
ZEL_INLINE bool IsAny(Mask mask) { return BitsOf(mask) != 0; }

// ---- Points and directions, one in each lane, with the operations of base/vec3.h and base/matrix4.h in
// their order: the bits are the same.

struct Points {
    Floats x, y, z;
};

ZEL_INLINE Points Splat(const Vec3& a) { return {Splat(a.x), Splat(a.y), Splat(a.z)}; }

ZEL_INLINE Points operator+(const Points& a, const Points& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
ZEL_INLINE Points operator-(const Points& a, const Points& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

ZEL_INLINE Floats Dot(const Points& a, const Points& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

ZEL_INLINE Points Cross(const Points& a, const Points& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// At length 1, or the zero vector.
ZEL_INLINE Points Normalise(const Points& a) {
    const Floats length = SquareRoot(Dot(a, a)), zero = Splat(0.0f);
    const Mask isZero = length <= Splat(kZeroLength);
    return {Select(isZero, zero, a.x / length), Select(isZero, zero, a.y / length),
            Select(isZero, zero, a.z / length)};
}

// The numbers of a matrix, row by row.
ZEL_INLINE const float* NumbersOf(const Matrix4& a) { return reinterpret_cast<const float*>(&a); }

// One row of a matrix times the points, each with a 1 as its fourth number.
ZEL_INLINE Floats RowTimes(const Matrix4& a, int row, const Points& p) {
    const float* m = NumbersOf(a) + 4 * row;
    return Splat(m[0]) * p.x + Splat(m[1]) * p.y + Splat(m[2]) * p.z + Splat(m[3]);
}

ZEL_INLINE Points Transformed(const Matrix4& a, const Points& p) {
    return {RowTimes(a, 0, p), RowTimes(a, 1, p), RowTimes(a, 2, p)};
}

}  // namespace
