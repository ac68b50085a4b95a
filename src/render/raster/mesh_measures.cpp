#include "render/raster/mesh_measures.h"

#include <immintrin.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

// Doubles: what is measured is rounded once.
struct Point3 {
    double x, y, z;
};

}  // namespace

constexpr float kRoundedUp = 1.0001f;
constexpr size_t kPlanesAtOnce = 16;  // of the widest vector

static Point3 PointOf(Vec3 a) { return {a.x, a.y, a.z}; }
static Point3 Minus(Point3 a, Point3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
static double Dot(Point3 a, Point3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
static double Length(Point3 a) { return std::sqrt(Dot(a, a)); }

static Point3 Cross(Point3 a, Point3 b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

static void MeasureTriangle(const Mesh& mesh, size_t triangle, MeshMeasures& measures) {
    Point3 p[3];
    for (size_t c = 0; c < 3; ++c)
        p[c] = PointOf(mesh.vertices[static_cast<size_t>(mesh.triangles[triangle][c])].position);
    const Point3 a = Minus(p[1], p[0]), b = Minus(p[2], p[0]), normal = Cross(a, b);
    measures.normalX[triangle] = static_cast<float>(normal.x);
    measures.normalY[triangle] = static_cast<float>(normal.y);
    measures.normalZ[triangle] = static_cast<float>(normal.z);
    measures.offset[triangle] = static_cast<float>(Dot(normal, p[0]));
    const double longest = std::max({Length(a), Length(b), Length(Minus(p[2], p[1]))});
    measures.longestEdge = std::max(measures.longestEdge, static_cast<float>(longest) * kRoundedUp);
}

MeshBounds BoundsOf(const Mesh& mesh) {
    __m128 low = _mm_loadu_ps(&mesh.vertices[0].position.x), high = low;
    for (const MeshVertex& vertex : mesh.vertices) {
        const __m128 record = _mm_loadu_ps(&vertex.position.x);  // the colour in the last lane is ignored
        low = _mm_min_ps(record, low);
        high = _mm_max_ps(record, high);
    }
    Vec4 a, b;
    _mm_storeu_ps(&a.x, low);
    _mm_storeu_ps(&b.x, high);
    return {{(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2, 1},
            {(b.x - a.x) / 2, (b.y - a.y) / 2, (b.z - a.z) / 2, 0}};
}

// In go vertices and triangles; out come what the visibility tests need of them: a plane for each face,
// the box, the reach and the longest edge. They bound what rounding can do to the mesh, so they are
// computed in doubles and rounded up once. The lists of planes are padded with zeros, because the widest
// kernel reads whole vectors past the last face.
void MeasureMesh(Mesh& mesh) {
    MeshMeasures measures{.identity = std::make_shared<const MeshMark>()};
    const size_t padded = (mesh.triangles.size() + kPlanesAtOnce - 1) / kPlanesAtOnce * kPlanesAtOnce;
    for (auto* values : {&measures.normalX, &measures.normalY, &measures.normalZ, &measures.offset})
        values->assign(padded, 0);
    for (const MeshVertex& vertex : mesh.vertices) {
        const auto reach = static_cast<float>(Length(PointOf(vertex.position)));
        measures.reach = std::max(measures.reach, reach * kRoundedUp);
    }
    for (size_t i = 0; i < mesh.triangles.size(); ++i) MeasureTriangle(mesh, i, measures);
    if (!mesh.vertices.empty()) measures.bounds = BoundsOf(mesh);
    mesh.measures = std::move(measures);
}
