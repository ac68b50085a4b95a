#include "render/raster/front_faces.h"

#include "base/matrix_inverse.h"
#include "render/raster/kernels.h"

#include <cmath>
#include <numeric>

constexpr float kRounding = 0x1p-24f;  // of one operation

static float NormOf(const Matrix4& a) {
    float sum = 0;
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column) sum += a.m[row][column] * a.m[row][column];
    }
    return std::sqrt(sum);
}

static float VolumeOf(const Matrix4& a) {
    const auto& m = a.m;
    return Dot(Vec3{m[0][0], m[1][0], m[2][0]},
               Cross({m[0][1], m[1][1], m[2][1]}, {m[0][2], m[1][2], m[2][2]}));
}

// How far rounding moves the product of a face's normal and its way to the eye in world space, where drawing
// decides: the vertices by `moved`, and with them the edges, whose products and that with the way to the eye
// are rounded again.
static float WorldRounding(const Mesh& mesh, const Matrix4& world, Vec3 eye) {
    const float size = NormOf(world), reach = size * mesh.measures.reach;
    const float edge = size * mesh.measures.longestEdge;
    const float moved = 8 * kRounding * (reach + Length(Translation(world)));
    const float toEye = Length(eye - Translation(world)) + reach + moved;
    return toEye * (4 * moved * edge + 4 * moved * moved + 16 * kRounding * edge * edge) +
           moved * edge * edge;
}

// How far rounding moves the same product in object space.
static float ObjectRounding(const Mesh& mesh, const Matrix4& inverse, Vec3 eye, Vec3 eyeInObject) {
    const float normal = mesh.measures.longestEdge * mesh.measures.longestEdge;
    const float eyeMoved = 8 * kRounding * (NormOf(inverse) * Length(eye) + Length(Translation(inverse)));
    return normal * (eyeMoved + 8 * kRounding * (Length(eyeInObject) + mesh.measures.reach));
}

// Outside these sizes products vanish or overflow, and no bound on their rounding holds.
static bool IsOrdinary(float size) { return std::isfinite(size) && std::abs(size) > 1e-30f; }

EyeInObject FindEye(const Mesh& mesh, const Matrix4& world, Vec3 eye) {
    EyeInObject found;
    Matrix4 inverse;
    const MeshMeasures& measures = mesh.measures;
    if (measures.offset.size() < mesh.triangles.size() || !InvertMatrix(world, inverse)) return found;
    const float volume = VolumeOf(world);
    found.position = TransformPoint(inverse, eye);
    found.inside = volume < 0 ? -1.0f : 1.0f;
    const float worldRounding = WorldRounding(mesh, world, eye) / std::abs(volume);
    found.certainty = 2 * (worldRounding + ObjectRounding(mesh, inverse, eye, found.position));
    const float farthestHeight =
        4 * measures.longestEdge * measures.longestEdge * (Length(found.position) + measures.reach);
    found.isUsable = IsOrdinary(volume) && IsOrdinary(found.certainty) && std::isfinite(farthestHeight);
    return found;
}

size_t FindFrontFaces(const Mesh& mesh, const EyeInObject& eye, SimdLevel level, std::vector<uint32_t>& out) {
    const size_t count = mesh.triangles.size();
    Reserve(out, count);
    if (!eye.isUsable) {
        std::iota(out.begin(), out.begin() + static_cast<ptrdiff_t>(count), 0);
        return count;
    }
    const MeshMeasures& m = mesh.measures;
    const FacePlanes planes{m.normalX.data(), m.normalY.data(), m.normalZ.data(), m.offset.data(), count};
    return KernelsOf(level).findFrontFaces(planes, eye, out.data());
}
