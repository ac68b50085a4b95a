// A 4 x 4 matrix, row by row, for column vectors.
#pragma once

#include "base/vec3.h"

#include <array>

// A point in homogeneous coordinates, in clip space unless something else is said.
struct Vec4 {
    float x = 0, y = 0, z = 0, w = 0;

    friend constexpr bool operator==(const Vec4&, const Vec4&) = default;
};

// m[row][column]; the translation stands in column 3. The default is the identity.
struct Matrix4 {
    std::array<std::array<float, 4>, 4> m{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

    friend constexpr bool operator==(const Matrix4&, const Matrix4&) = default;
};

constexpr Vec3 Translation(const Matrix4& a) { return {a.m[0][3], a.m[1][3], a.m[2][3]}; }

// The point moved by the upper three rows.
constexpr Vec3 TransformPoint(const Matrix4& a, Vec3 p) {
    return {a.m[0][0] * p.x + a.m[0][1] * p.y + a.m[0][2] * p.z + a.m[0][3],
            a.m[1][0] * p.x + a.m[1][1] * p.y + a.m[1][2] * p.z + a.m[1][3],
            a.m[2][0] * p.x + a.m[2][1] * p.y + a.m[2][2] * p.z + a.m[2][3]};
}

// The point (p, 1) through all four rows.
constexpr Vec4 TransformToClip(const Matrix4& a, Vec3 p) {
    return {a.m[0][0] * p.x + a.m[0][1] * p.y + a.m[0][2] * p.z + a.m[0][3],
            a.m[1][0] * p.x + a.m[1][1] * p.y + a.m[1][2] * p.z + a.m[1][3],
            a.m[2][0] * p.x + a.m[2][1] * p.y + a.m[2][2] * p.z + a.m[2][3],
            a.m[3][0] * p.x + a.m[3][1] * p.y + a.m[3][2] * p.z + a.m[3][3]};
}

// a * b: applied to a point, b comes first.
constexpr Matrix4 MultiplyMatrix(const Matrix4& a, const Matrix4& b) {
    Matrix4 product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            product.m[row][column] = a.m[row][0] * b.m[0][column] + a.m[row][1] * b.m[1][column] +
                                     a.m[row][2] * b.m[2][column] + a.m[row][3] * b.m[3][column];
        }
    }
    return product;
}

// Inverts a matrix whose last row is 0 0 0 1. False, with `inverse` unchanged, for other matrices and for
// those that are not finite or flatten space.
bool InvertMatrix(const Matrix4& matrix, Matrix4& inverse);
