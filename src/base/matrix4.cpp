#include "base/matrix4.h"

#include <array>
#include <cmath>

// The volume that a unit cube has after the matrix, relative to the product of its edges. If a chain of
// matrices flattens space, rounding leaves about this much.
constexpr double kFlatVolume = 1e-6;

using Vector = std::array<double, 3>;

static double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

static Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

static Vector Column(const Matrix4& matrix, int column) {
    return {matrix.m[0][column], matrix.m[1][column], matrix.m[2][column]};
}

static bool IsFinite(const Matrix4& matrix) {
    for (const auto& row : matrix.m) {
        for (const float value : row) {
            if (!std::isfinite(value)) return false;
        }
    }
    return true;
}

// By cofactors: the rows of the inverse are the cross products of two columns, divided by the determinant.
// Computed in doubles and rounded once, because parents and children of very different scales lose most of a
// float's digits in the products. A flat matrix is refused rather than inverted into huge numbers.
bool InvertMatrix(const Matrix4& matrix, Matrix4& inverse) {
    if (!IsFinite(matrix) || matrix.m[3] != Matrix4{}.m[3]) return false;

    const Vector x = Column(matrix, 0), y = Column(matrix, 1), z = Column(matrix, 2), t = Column(matrix, 3);
    const Vector rows[3] = {Cross(y, z), Cross(z, x), Cross(x, y)};
    const double volume = Dot(x, rows[0]);
    const double edges = std::sqrt(Dot(x, x)) * std::sqrt(Dot(y, y)) * std::sqrt(Dot(z, z));
    if (!(std::fabs(volume) > kFlatVolume * edges)) return false;

    Matrix4 result;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            result.m[row][column] = static_cast<float>(rows[row][column] / volume);
        }
        result.m[row][3] = static_cast<float>(-Dot(rows[row], t) / volume);
    }
    if (!IsFinite(result)) return false;
    inverse = result;
    return true;
}
