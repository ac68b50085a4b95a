// Points and directions, one in each lane, with the operations of base/vec3.h and base/matrix4.h in their
// order: the bits are the same.
#pragma once

#include "base/matrix4.h"
#include "render/raster/lanes.h"

namespace {

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
