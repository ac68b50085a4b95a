#include "render/raster/mesh_bounds.h"

#include "render/raster/kernels.h"
#include "render/raster/mesh_measures.h"

#include <algorithm>
#include <cmath>
#include <span>

constexpr float kMargin = 1.25f;           // of w: an eighth of the viewport beyond its side
constexpr int32_t kSmallestViewport = 32;  // pixels; in a smaller one the margin is but a few
constexpr float kBehindW = 0.04f;          // below the w of any visible point
constexpr float kRounding = 1e-5f;         // more than what rounding changes, of the sum of all sizes

// One operation rounds by at most this much of the result.
constexpr float kUnit = 0x1p-24f;

// How much rounding can change a clip coordinate, as a share of the sum of all sizes. It covers the
// difference between two ways: one product of both matrices here, and the two matrices after one another
// for the vertices. Each rounds by four units a matrix; this is twice that.
constexpr float kTightRounding = 32 * kUnit;

// Likewise for the vertices alone: eight units for their two matrices, and one for the rounding of this
// bound.
constexpr float kVertexRounding = 9 * kUnit;

// Twice the area of a triangle is the difference of two products of edges. The part above 2 covers
// rounding.
constexpr float kAreaOfEdges = 2.001f;

// Nothing is said about a mesh beyond these: close to the eye, or so far beside the view that corners are
// moved to what fits into an integer.
constexpr float kSmallestW = 0.1f, kGreatestW = 1e6f, kFarBeside = 4;  // of half the viewport

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

static Vec4 Scaled(const Vec4& a, float by) { return {a.x * by, a.y * by, a.z * by, a.w * by}; }

// p * side - q
static Vec4 Beyond(const Vec4& p, float side, const Vec4& q) {
    return {p.x * side - q.x, p.y * side - q.y, p.z * side - q.z, p.w * side - q.w};
}

namespace {

// A mesh's box, and the matrix that takes it to clip space.
struct BoxInClip {
    MeshBounds bounds{};
    Matrix4 toClip{};
    Vec4 sizes{};  // of the four clip coordinates, sums of what is added without its signs
};

// The least and the greatest value of a clip coordinate in the box.
struct Range {
    float low = 0, high = 0;
};

}  // namespace

static BoxInClip PlaceBox(const Mesh& mesh, const VertexTransform& transform) {
    BoxInClip box;
    box.bounds = mesh.measures.offset.empty() ? BoundsOf(mesh) : mesh.measures.bounds;
    box.toClip = MultiplyMatrix(transform.viewProjection, transform.world);
    const Matrix4 sizes = MultiplyMatrix(Sizes(transform.viewProjection), Sizes(transform.world));
    const Vec4 &centre = box.bounds.centre, &half = box.bounds.halfSize;
    const Vec4 farthest{std::abs(centre.x) + half.x, std::abs(centre.y) + half.y, std::abs(centre.z) + half.z,
                        1};
    box.sizes = {Dot(Row(sizes, 0), farthest), Dot(Row(sizes, 1), farthest), Dot(Row(sizes, 2), farthest),
                 Dot(Row(sizes, 3), farthest)};
    return box;
}

// A linear function of a point is least at the corner of the box that lies against its direction: the
// value at the centre, less the half sizes weighted by the absolute coefficients. So one test stands for
// eight corners.
static bool IsAbove(const BoxInClip& box, const Vec4& plane, float least) {
    return Dot(plane, box.bounds.centre) - Dot(Sizes(plane), box.bounds.halfSize) > least;
}

// Five linear functions: all of the box behind the eye, or beyond the left, right, lower or upper side.
// The sides are tested in clip space before any division, where they stay linear behind the eye too.
// `least` is what rounding could have added.
static bool IsBeside(const BoxInClip& box) {
    const Vec4 w = Row(box.toClip, 3);
    const float sizeW = box.sizes.w;
    if (IsAbove(box, {-w.x, -w.y, -w.z, -w.w}, kRounding * sizeW - kBehindW)) return true;
    const Vec4 guard{w.x * kMargin, w.y * kMargin, w.z * kMargin, w.w * kMargin};
    for (size_t axis = 0; axis < 2; ++axis) {
        const float least = kRounding * ((axis == 0 ? box.sizes.x : box.sizes.y) + kMargin * sizeW);
        for (float side : {-1.0f, 1.0f}) {
            if (IsAbove(box, Beyond(Row(box.toClip, axis), side, guard), least)) return true;
        }
    }
    return false;
}

static bool IsTiny(const Rect& viewport) {
    return Width(viewport) < kSmallestViewport || Height(viewport) < kSmallestViewport;
}

static Range RangeOf(const BoxInClip& box, const Vec4& row, float size) {
    const float middle = Dot(row, box.bounds.centre);
    const float reach = Dot(Sizes(row), box.bounds.halfSize) + kTightRounding * size;
    return {middle - reach, middle + reach};
}

// The range of the quotient. w is positive.
static Range Quotient(const Range& a, const Range& w) {
    return {a.low / (a.low < 0 ? w.low : w.high), a.high / (a.high > 0 ? w.low : w.high)};
}

// The least depth of the box. With the projection of a camera, depth grows with w alone and is least where
// w is least. Other matrices may be used, so the last line proves that the answer is a bound; without
// proof there is none.
static bool FindNearest(const BoxInClip& box, const Range& w, float& nearest) {
    const Vec4 rowZ = Row(box.toClip, 2), rowW = Row(box.toClip, 3);
    const float leastZ = Dot(rowZ, box.bounds.centre) - Dot(Sizes(rowZ), box.bounds.halfSize);
    const float rounding = kTightRounding * (box.sizes.z + box.sizes.w);
    nearest = (leastZ - 3 * rounding) / w.low;
    nearest -= std::abs(nearest) * 4 * kUnit;
    return nearest > 0 && nearest < 1 && IsAbove(box, Beyond(rowZ, 1, Scaled(rowW, nearest)), rounding);
}

static float HalfWidth(const Rect& viewport) { return 0.5f * static_cast<float>(Width(viewport)); }
static float HalfHeight(const Rect& viewport) { return 0.5f * static_cast<float>(Height(viewport)); }

// How far rounding moves a corner along an axis, pixels. `most` bounds the quotient by w. The two matrices
// round the clip coordinates; the projection then rounds the quotient twice, and after it a product and
// two sums.
static float Moved(float size, float sizeW, float leastW, float most, float halfSide, float first) {
    const float clip = kVertexRounding * (size + most * sizeW) / leastW;
    return 1.01f * (halfSide * (clip + kUnit * (5 * most + 3)) + kUnit * std::abs(first));
}

static float LengthOf(const Vec4& row) { return Length({row.x, row.y, row.z}); }

// Not below the length, which vanishes if its squares do.
static float LengthAbove(const Vec4& row) { return LengthOf(row) + 1e-18f; }

namespace {

// What bounds the quotients by w in a part of the world before the eye.
struct Quotients {
    float leastW = 0;
    float across = 0, down = 0;  // the largest sizes of x / w and y / w, in halves of the viewport
};

}  // namespace

// No edge of this length is wider or higher on the screen, pixels. `toClip` takes its direction to clip
// space.
static float EdgeOnScreen(float length, const Quotients& most, const Matrix4& toClip, const Rect& viewport) {
    const float lengthW = LengthOf(Row(toClip, 3));
    const float across = (LengthOf(Row(toClip, 0)) + most.across * lengthW) * HalfWidth(viewport),
                down = (LengthOf(Row(toClip, 1)) + most.down * lengthW) * HalfHeight(viewport);
    return length / most.leastW * std::max(across, down);
}

// No corner is moved farther by rounding, pixels. `sizes` are those of the clip coordinates.
static float MovedOnScreen(const Vec4& sizes, const Quotients& most, const Rect& viewport) {
    return std::max(Moved(sizes.x, sizes.w, most.leastW, most.across, HalfWidth(viewport),
                          static_cast<float>(viewport.left)),
                    Moved(sizes.y, sizes.w, most.leastW, most.down, HalfHeight(viewport),
                          static_cast<float>(viewport.top)));
}

// True when no face with such edges has the area of a triangle that is drawn.
static bool AreTooSmall(float edge, float moved) {
    const float extent = edge + 2 * moved;
    return kAreaOfEdges * extent * extent < kSmallestArea;
}

// In goes the box in clip space; out come bounds on everything that the vertices will give: their pixels,
// their nearest depth, the longest edge on the screen and how far rounding moves a corner. Each bound
// includes what rounding can do. If one cannot be bounded, because the box reaches close to the eye or far
// to the side, `isBounded` stays false and the mesh is drawn without these shortcuts.
static MeshPlace PlaceMesh(const Mesh& mesh, const Rect& viewport, const BoxInClip& box) {
    MeshPlace place;
    place.toClip = box.toClip;
    place.sizes = box.sizes;
    const Vec4 rowX = Row(box.toClip, 0), rowY = Row(box.toClip, 1), rowW = Row(box.toClip, 3);
    const Range w = RangeOf(box, rowW, box.sizes.w);
    if (!(w.low > kSmallestW) || !(w.high < kGreatestW)) return place;
    const Range x = Quotient(RangeOf(box, rowX, box.sizes.x), w),
                y = Quotient(RangeOf(box, rowY, box.sizes.y), w);
    const Quotients most{w.low, std::max(std::abs(x.low), std::abs(x.high)),
                         std::max(std::abs(y.low), std::abs(y.high))};
    if (!(most.across < kFarBeside && most.down < kFarBeside) || !FindNearest(box, w, place.nearest))
        return place;

    const float halfWidth = HalfWidth(viewport), halfHeight = HalfHeight(viewport);
    const float middleX = static_cast<float>(viewport.left) + halfWidth,
                middleY = static_cast<float>(viewport.top) + halfHeight;
    place.pixels = {
        std::max(viewport.left, static_cast<int32_t>(std::floor(middleX + x.low * halfWidth)) - 1),
        std::max(viewport.top, static_cast<int32_t>(std::floor(middleY - y.high * halfHeight)) - 1),
        std::min(viewport.right, static_cast<int32_t>(std::ceil(middleX + x.high * halfWidth)) + 2),
        std::min(viewport.bottom, static_cast<int32_t>(std::ceil(middleY - y.low * halfHeight)) + 2)};
    place.leastW = w.low;
    place.mostW = w.high;
    place.edge = EdgeOnScreen(mesh.measures.longestEdge, most, box.toClip, viewport);
    place.moved = MovedOnScreen(box.sizes, most, viewport);
    place.isBounded = mesh.measures.identity != nullptr;
    place.isTooSmall = place.isBounded && AreTooSmall(place.edge, place.moved);
    return place;
}

MeshPlace PlaceMesh(const Mesh& mesh, const VertexTransform& transform) {
    if (IsTiny(transform.viewport) || mesh.vertices.empty()) return {};
    const BoxInClip box = PlaceBox(mesh, transform);
    if (IsBeside(box)) return {.isBeside = true};
    return PlaceMesh(mesh, transform.viewport, box);
}

// ---- Spheres. A mesh that is far from showing anything is told by a few products of the sphere around it,
// where placing its box takes two products of matrices. The bounds are those of the box, with the sphere in
// its place.

constexpr float kRoundedUp = 1.001f;  // more than what rounding takes off the few operations here

static Vec4 Sum(const Vec4& a, const Vec4& b) { return {a.x + b.x, a.y + b.y, a.z + b.z, a.w + b.w}; }

Frustum FrustumOf(const Matrix4& viewProjection, const Rect& viewport) {
    Frustum frustum{viewport, viewProjection};
    if (IsTiny(viewport)) return frustum;
    const Vec4 w = Row(viewProjection, 3), guard = Scaled(w, kMargin);
    frustum.planes[0] = {Scaled(w, -1), Sizes(w), LengthAbove(w)};
    for (size_t i = 1; i < frustum.planes.size(); ++i) {
        const Vec4 row = Row(viewProjection, (i - 1) / 2);
        const Vec4 plane = Beyond(row, i % 2 == 0 ? -1.0f : 1.0f, guard);
        frustum.planes[i] = {plane, Sum(Sizes(row), Sizes(guard)), LengthAbove(plane)};
    }
    frustum.pixelsPerUnit = LengthOf(Row(viewProjection, 0)) * HalfWidth(viewport);
    return frustum;
}

namespace {

// Around a mesh in the world.
struct Sphere {
    Vec4 centre{};
    float radius = 0;
    float longestEdge = 0;  // no edge of a face is longer
    Vec4 farthest{};        // no coordinate of a vertex is larger, not even summed without signs; 1
};

}  // namespace

// The root of the sum of its squares bounds how far a matrix stretches any direction.
static Sphere SphereOf(const Mesh& mesh, const Matrix4& world) {
    float squares = 0;
    for (size_t row = 0; row < 3; ++row) {
        const Vec3 axis{world.m[row][0], world.m[row][1], world.m[row][2]};
        squares += Dot(axis, axis);
    }
    const float stretch = kRoundedUp * std::sqrt(squares) + 1e-18f;
    const float radius = stretch * mesh.measures.reach;
    const Vec3 at = Translation(world);
    return {{at.x, at.y, at.z, 1},
            radius,
            stretch * mesh.measures.longestEdge,
            {std::abs(at.x) + radius, std::abs(at.y) + radius, std::abs(at.z) + radius, 1}};
}

// True when it is certain that all of the mesh lies beyond one of the planes.
static bool IsBeyondAny(std::span<const OutwardPlane> planes, const Sphere& sphere) {
    for (const OutwardPlane& side : planes) {
        const float least = sphere.radius * side.length + kRounding * Dot(side.sizes, sphere.farthest);
        if (Dot(side.plane, sphere.centre) > kRoundedUp * least) return true;
    }
    return false;
}

static Range RangeOf(const Sphere& sphere, const Vec4& row, float size) {
    const float middle = Dot(row, sphere.centre);
    const float reach = LengthOf(row) * sphere.radius + 3 * kTightRounding * size;
    return {middle - reach, middle + reach};
}

// All of it lies beyond the near plane, and its edges are too short in any direction.
static bool IsTooSmall(const Sphere& sphere, const Frustum& frustum) {
    const Matrix4& toClip = frustum.viewProjection;
    const Matrix4 ofRows = Sizes(toClip);
    const Vec4 sizes{Dot(Row(ofRows, 0), sphere.farthest), Dot(Row(ofRows, 1), sphere.farthest),
                     Dot(Row(ofRows, 2), sphere.farthest), Dot(Row(ofRows, 3), sphere.farthest)};
    const Range w = RangeOf(sphere, Row(toClip, 3), sizes.w), z = RangeOf(sphere, Row(toClip, 2), sizes.z);
    if (!(w.low > kSmallestW) || !(w.high < kGreatestW) || !(z.low > 0)) return false;
    const Range x = Quotient(RangeOf(sphere, Row(toClip, 0), sizes.x), w),
                y = Quotient(RangeOf(sphere, Row(toClip, 1), sizes.y), w);
    const Quotients most{w.low, std::max(std::abs(x.low), std::abs(x.high)),
                         std::max(std::abs(y.low), std::abs(y.high))};
    if (!(most.across < kFarBeside && most.down < kFarBeside)) return false;
    return AreTooSmall(EdgeOnScreen(sphere.longestEdge, most, toClip, frustum.viewport),
                       MovedOnScreen(sizes, most, frustum.viewport));
}

// Most meshes are not too small, and a cheap estimate says so: the length on the screen of the longest edge,
// seen from the front. The real bound is only computed for the others.
bool IsInvisible(const Mesh& mesh, const Matrix4& world, const Frustum& frustum) {
    constexpr float kMaybeTooSmall = 0.01f;  // pixels
    if (frustum.pixelsPerUnit == 0 || mesh.measures.identity == nullptr) return false;
    const Sphere sphere = SphereOf(mesh, world);
    if (IsBeyondAny(frustum.planes, sphere)) return true;
    const float w = Dot(Row(frustum.viewProjection, 3), sphere.centre);
    return sphere.longestEdge * frustum.pixelsPerUnit < kMaybeTooSmall * w && IsTooSmall(sphere, frustum);
}

// A visible point has w above 0, so it lies to the right of column x if its clip x is more than x times w;
// likewise for the other sides. This is linear: if it holds for the corners of a face, it holds for the
// whole face, and four planes around the pixel tell which meshes can show it.
PixelPlanes PlanesAround(Point pixel, const Rect& viewport, const Matrix4& viewProjection) {
    constexpr float kMarginOfPixel = 2;  // more than what projecting rounds
    const Vec4 rowX = Row(viewProjection, 0), rowY = Row(viewProjection, 1), rowW = Row(viewProjection, 3);
    const float width = static_cast<float>(Width(viewport)), height = static_cast<float>(Height(viewport));
    const float x = static_cast<float>(pixel.x - viewport.left) + 0.5f,
                y = static_cast<float>(pixel.y - viewport.top) + 0.5f;
    PixelPlanes around;
    for (size_t i = 0; i < around.size(); ++i) {
        const float outward = i % 2 == 0 ? 1.0f : -1.0f;
        const float margin = outward * kMarginOfPixel;
        const Vec4& row = i < 2 ? rowX : rowY;
        const float place = i < 2 ? (x + margin) / width * 2 - 1 : 1 - (y - margin) / height * 2;
        const Vec4 plane = Scaled(Beyond(row, 1, Scaled(rowW, place)), outward);
        around[i] = {plane, Sum(Scaled(Sizes(rowW), std::abs(place)), Sizes(row)), LengthAbove(plane)};
    }
    return around;
}

bool MissesPixel(const Mesh& mesh, const Matrix4& world, const PixelPlanes& around) {
    return mesh.measures.identity != nullptr && IsBeyondAny(around, SphereOf(mesh, world));
}
