#include "render/raster/visible_faces.h"

#include "base/matrix4.h"
#include "render/raster/kernels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

constexpr float kNever = std::numeric_limits<float>::infinity();
constexpr float kUnit = 0x1p-24f;            // of one operation's rounding
constexpr float kRoundedUp = 1.001f;         // more than what rounding takes off the few operations here
constexpr float kClipRounding = 32 * kUnit;  // of a clip coordinate's size

// ---- The eye. Drawing decides in world space, face by face, whether a face turns its front to the eye.
// That needs three transformed corners and a normal for each. Here the eye is taken into object space once
// for the whole mesh, and one product with the stored plane of a face answers the question. The two ways
// round differently: `certainty` bounds the difference, and a face within it is kept for the exact test.

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

// How far rounding can move the product of a face's normal and the way to the eye in world space, where
// drawing decides. Each vertex moves by `moved`, and the edges with it; then the products of the edges and
// the product with the way to the eye are rounded again.
static float WorldRounding(const Mesh& mesh, const Matrix4& world, Vec3 eye) {
    const float size = NormOf(world), reach = size * mesh.measures.reach;
    const float edge = size * mesh.measures.longestEdge;
    const float moved = 8 * kUnit * (reach + Length(Translation(world)));
    const float toEye = Length(eye - Translation(world)) + reach + moved;
    return toEye * (4 * moved * edge + 4 * moved * moved + 16 * kUnit * edge * edge) + moved * edge * edge;
}

// How far rounding moves the same product in object space.
static float ObjectRounding(const Mesh& mesh, const Matrix4& inverse, Vec3 eye, Vec3 eyeInObject) {
    const float normal = mesh.measures.longestEdge * mesh.measures.longestEdge;
    const float eyeMoved = 8 * kUnit * (NormOf(inverse) * Length(eye) + Length(Translation(inverse)));
    return normal * (eyeMoved + 8 * kUnit * (Length(eyeInObject) + mesh.measures.reach));
}

// Beyond these sizes products vanish or overflow, and no bound on their rounding holds.
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

// ---- Hidden faces. A face is hidden if its corners lie farther away than everything drawn there, by more
// than rounding can take off the depth of a pixel. For a thin triangle that may be all of the depth, and
// any face is thin when it is seen almost from its edge. So a mesh is never left out because of its box
// alone. The height of the eye over a face's plane says how large the face is on the screen; only faces
// that are large enough count as hidden, and the few others go the usual way.

static Vec3 Axis(const Matrix4& a, size_t row) { return {a.m[row][0], a.m[row][1], a.m[row][2]}; }

// How far from zero a clip coordinate of the eye may be. Without rounding it would be zero, because all
// rays meet in the eye.
static float OffZero(const Matrix4& toClip, size_t row, Vec3 eye, float size) {
    const float found = Dot(Axis(toClip, row), eye) + toClip.m[row][3];
    const float largest = std::abs(eye.x) + std::abs(eye.y) + std::abs(eye.z);
    return std::abs(found) + kClipRounding * (size + largest * Length(Axis(toClip, row)));
}

// Twice the area on the screen, square pixels, from which on no pixel of a face can be nearer than
// `farthest`: the bound of NearestDepths in faces_kernel.h, solved for the area. Infinite when no area is
// enough.
static float AreaNeeded(const MeshPlace& place, float farthest) {
    const float spare = 1 - farthest / place.nearest - kSumRounding - 8 * kUnit - kVanishing / place.nearest;
    if (!(spare > kUnit)) return kNever;
    const float extent = place.edge + 2 * place.moved;
    return kRoundedUp * kDepthRounding * (extent + kBoxMargin) * extent / spare;
}

float HiddenHeight(const Mesh& mesh, const MeshPlace& place, const EyeInObject& eye, const Rect& viewport,
                   float farthest) {
    if (!place.isBounded || !eye.isUsable || !(place.nearest > farthest)) return kNever;
    const float needed = AreaNeeded(place, farthest);
    if (needed == kNever) return kNever;

    // How much an area loses when rounding moves each corner.
    const float edge = place.edge + 2 * place.moved;
    const float lost = 8 * place.moved * (edge + place.moved) + 8 * kUnit * edge * edge;

    // Exactly, twice the area is |det| * height / (w0 * w1 * w2), by the determinant of the matrix that takes
    // directions to clip x, y and w, in units of half the viewport.
    const Vec3 x = Axis(place.toClip, 0), y = Axis(place.toClip, 1), w = Axis(place.toClip, 3);
    const Vec3 yw = Cross(y, w), wx = Cross(w, x), xy = Cross(x, y);
    const float det = std::abs(Dot(x, yw));
    const float detRounding =
        64 * kUnit * Length(x) * Length(yw) + 32 * kUnit * Length(x) * Length(y) * Length(w);
    const float units = 0.25f * static_cast<float>(Width(viewport)) * static_cast<float>(Height(viewport));
    const float scale = (det - detRounding) * units;
    if (!(scale > 0)) return kNever;
    const float height = (needed + lost) * place.mostW * place.mostW * place.mostW / scale;

    // The height is measured from `eye`, but the matrix may see from a slightly different point. The
    // difference counts against the height.
    const float away = (OffZero(place.toClip, 0, eye.position, place.sizes.x) * Length(yw) +
                        OffZero(place.toClip, 1, eye.position, place.sizes.y) * Length(wx) +
                        OffZero(place.toClip, 3, eye.position, place.sizes.w) * Length(xy)) /
                       (det - detRounding);
    const float longest = mesh.measures.longestEdge;
    const float found = kRoundedUp * (height + longest * longest * away + eye.certainty);
    return found >= 0 ? found : kNever;
}

// ---- Front faces, told from their planes in object space before any vertex is transformed.

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

// ---- The scan: the faces that are left, told from their corners on the screen. The kernel does the work.
// Its list of faces is padded with copies of the last one, so that whole vectors can be read.

std::span<const ScannedFace> ScanFaces(const MeshTriangle* triangles, const MeshVertices& vertices,
                                       const Rect& viewport, float farthest, SimdLevel level, size_t fronts,
                                       MeshScratch& scratch) {
    if (fronts == 0) return {};
    Reserve(scratch.visible, fronts);
    std::fill_n(scratch.fronts.begin() + static_cast<ptrdiff_t>(fronts), kListMargin,
                scratch.fronts[fronts - 1]);
    const FacesToScan scan{triangles, vertices.PlainCorners(), scratch.fronts.data(), fronts, viewport,
                           farthest};
    return {scratch.visible.data(), KernelsOf(level).scanFaces(scan, scratch.visible.data())};
}
