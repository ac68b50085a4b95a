#include "render/front_faces.h"

#include "render/matrix_inverse.h"
#include "render/simd.h"

#include <algorithm>
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

static bool MayTurnToEye(const MeshMeasures& m, size_t face, const EyeInObject& eye) {
    const Vec3& p = eye.position;
    const float height =
        m.normalX[face] * p.x + m.normalY[face] * p.y + m.normalZ[face] * p.z - m.offset[face];
    return height * eye.inside >= -eye.certainty;
}

static void FindScalar(const Mesh& mesh, const EyeInObject& eye, std::vector<uint32_t>& out) {
    out.clear();
    for (size_t i = 0; i < mesh.triangles.size(); ++i) {
        if (MayTurnToEye(mesh.measures, i, eye)) out.push_back(static_cast<uint32_t>(i));
    }
}

// ---- Four faces at a time.

namespace {

struct EyeSse2 {
    __m128 x, y, z, inside, least;
};

}  // namespace

static uint32_t FrontLanesSse2(const MeshMeasures& m, size_t face, const EyeSse2& eye) {
    const __m128 height = _mm_sub_ps(_mm_add_ps(_mm_add_ps(_mm_mul_ps(_mm_loadu_ps(&m.normalX[face]), eye.x),
                                                           _mm_mul_ps(_mm_loadu_ps(&m.normalY[face]), eye.y)),
                                                _mm_mul_ps(_mm_loadu_ps(&m.normalZ[face]), eye.z)),
                                     _mm_loadu_ps(&m.offset[face]));
    return static_cast<uint32_t>(_mm_movemask_ps(_mm_cmpge_ps(_mm_mul_ps(height, eye.inside), eye.least)));
}

// Writes the numbers of all lanes, one after the other, and goes on only past those that are set.
static ZEL_INLINE size_t AddLanes(uint32_t* out, size_t found, size_t first, uint32_t lanes, uint32_t count) {
    for (uint32_t lane = 0; lane < count; ++lane) {
        out[found] = static_cast<uint32_t>(first) + lane;
        found += lanes >> lane & 1;
    }
    return found;
}

// The planes are padded to a multiple of eight, the list by as much.
static void FindSse2(const Mesh& mesh, const EyeInObject& eye, std::vector<uint32_t>& out) {
    const size_t count = mesh.triangles.size();
    const EyeSse2 t{_mm_set1_ps(eye.position.x), _mm_set1_ps(eye.position.y), _mm_set1_ps(eye.position.z),
                    _mm_set1_ps(eye.inside), _mm_set1_ps(-eye.certainty)};
    out.resize(count + 8);
    size_t found = 0;
    for (size_t i = 0; i < count; i += 4) {
        const auto left = static_cast<uint32_t>(std::min<size_t>(count - i, 4));
        found = AddLanes(out.data(), found, i, FrontLanesSse2(mesh.measures, i, t), left);
    }
    out.resize(found);
}

// ---- Eight faces at a time.

namespace {

struct EyeAvx2 {
    __m256 x, y, z, inside, least;
};

}  // namespace

ZEL_AVX2 static ZEL_INLINE uint32_t FrontLanesAvx2(const MeshMeasures& m, size_t face, const EyeAvx2& eye) {
    const __m256 height =
        _mm256_sub_ps(_mm256_add_ps(_mm256_add_ps(_mm256_mul_ps(_mm256_loadu_ps(&m.normalX[face]), eye.x),
                                                  _mm256_mul_ps(_mm256_loadu_ps(&m.normalY[face]), eye.y)),
                                    _mm256_mul_ps(_mm256_loadu_ps(&m.normalZ[face]), eye.z)),
                      _mm256_loadu_ps(&m.offset[face]));
    const __m256 isFront = _mm256_cmp_ps(_mm256_mul_ps(height, eye.inside), eye.least, _CMP_GE_OQ);
    return static_cast<uint32_t>(_mm256_movemask_ps(isFront));
}

ZEL_AVX2 static void FindAvx2(const Mesh& mesh, const EyeInObject& eye, std::vector<uint32_t>& out) {
    const size_t count = mesh.triangles.size();
    const EyeAvx2 t{_mm256_set1_ps(eye.position.x), _mm256_set1_ps(eye.position.y),
                    _mm256_set1_ps(eye.position.z), _mm256_set1_ps(eye.inside),
                    _mm256_set1_ps(-eye.certainty)};
    out.resize(count + 8);
    size_t found = 0;
    for (size_t i = 0; i < count; i += 8) {
        const auto left = static_cast<uint32_t>(std::min<size_t>(count - i, 8));
        found = AddLanes(out.data(), found, i, FrontLanesAvx2(mesh.measures, i, t), left);
    }
    out.resize(found);
}

void FindFrontFaces(const Mesh& mesh, const EyeInObject& eye, SimdLevel level, std::vector<uint32_t>& out) {
    if (!eye.isUsable) {
        out.resize(mesh.triangles.size());
        std::iota(out.begin(), out.end(), 0);
    } else if (level == SimdLevel::Avx2) {
        FindAvx2(mesh, eye, out);
    } else if (level == SimdLevel::Sse2) {
        FindSse2(mesh, eye, out);
    } else {
        FindScalar(mesh, eye, out);
    }
}
