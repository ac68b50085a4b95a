#include "render/mesh_bounds.h"

#include <algorithm>
#include <cmath>

constexpr float kMargin = 1.25f;           // of w: an eighth of the viewport beyond its side
constexpr int32_t kSmallestViewport = 32;  // pixels; in a smaller one the margin is but a few
constexpr float kBehindW = 0.04f;          // below the w of any visible point
constexpr float kRounding = 1e-5f;         // more than what rounding changes, of the sum of all sizes

static float Dot(const Vec4& a, const Vec4& b) { return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w; }
static Vec4 Sizes(const Vec4& a) { return {std::abs(a.x), std::abs(a.y), std::abs(a.z), std::abs(a.w)}; }

static Matrix4 Sizes(const Matrix4& a) {
    Matrix4 sizes;
    for (size_t row = 0; row < 4; ++row) {
        for (size_t column = 0; column < 4; ++column) sizes.m[row][column] = std::abs(a.m[row][column]);
    }
    return sizes;
}

static Vec4 Row(const Matrix4& a, size_t row) { return {a.m[row][0], a.m[row][1], a.m[row][2], a.m[row][3]}; }

// p * side - q
static Vec4 Beyond(const Vec4& p, float side, const Vec4& q) {
    return {p.x * side - q.x, p.y * side - q.y, p.z * side - q.z, p.w * side - q.w};
}

bool IsBesideView(const Mesh& mesh, const VertexTransform& transform) {
    const bool isSmall =
        Width(transform.viewport) < kSmallestViewport || Height(transform.viewport) < kSmallestViewport;
    if (isSmall || mesh.vertices.empty()) return false;
    const MeshBounds bounds = mesh.measures.offset.empty() ? BoundsOf(mesh) : mesh.measures.bounds;
    const Matrix4 toClip = MultiplyMatrix(transform.viewProjection, transform.world);
    const Matrix4 sizes = MultiplyMatrix(Sizes(transform.viewProjection), Sizes(transform.world));
    const Vec4 farthest{std::abs(bounds.centre.x) + bounds.halfSize.x,
                        std::abs(bounds.centre.y) + bounds.halfSize.y,
                        std::abs(bounds.centre.z) + bounds.halfSize.z, 1};
    const Vec4 w = Row(toClip, 3);
    const float sizeW = Dot(Row(sizes, 3), farthest);
    const auto isAbove = [&bounds](const Vec4& plane, float least) {
        return Dot(plane, bounds.centre) - Dot(Sizes(plane), bounds.halfSize) > least;
    };
    if (isAbove({-w.x, -w.y, -w.z, -w.w}, kRounding * sizeW - kBehindW)) return true;

    const Vec4 guard{w.x * kMargin, w.y * kMargin, w.z * kMargin, w.w * kMargin};
    for (size_t axis = 0; axis < 2; ++axis) {
        const float least = kRounding * (Dot(Row(sizes, axis), farthest) + kMargin * sizeW);
        for (float side : {-1.0f, 1.0f}) {
            if (isAbove(Beyond(Row(toClip, axis), side, guard), least)) return true;
        }
    }
    return false;
}
