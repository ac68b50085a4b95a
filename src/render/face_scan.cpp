#include "render/face_scan.h"

#include "render/fill_rows.h"

#include <algorithm>
#include <bit>
#include <cmath>

// Pixels from a corner to a centre within which rounding may still count the centre as inside.
constexpr float kCentreSlack = 1.0f / 32;

// Rounding moves an edge's function by at most 8 * 2^-24 * size^2 in a box of `size` pixels, and off the box
// by the slack one weight lies at least slack / (6 * size) below 0. So the slack is enough where the area is
// more than 48 * 2^-24 / slack * size^3; this is twice that.
constexpr float kCertainArea = 2 * 48 * 0x1p-24f / kCentreSlack;
constexpr float kBoxMargin = 1.5f;  // from a corner to the farthest centre that is looked at

// The cosine below which no rounding makes a face look at the eye.
constexpr float kCertainCosine = -1e-5f;

static float Least(float a, float b, float c) { return std::min(std::min(a, b), c); }
static float Most(float a, float b, float c) { return std::max(std::max(a, b), c); }
static float SumOfSizes(Vec3 a) { return std::abs(a.x) + std::abs(a.y) + std::abs(a.z); }

// The first and last pixel of a line whose centre may lie from `low` to `high`: exactly, or with the margin
// of a whole pixel where rounding may reach farther.
static float FirstPixel(float low, bool isCertain) {
    return isCertain ? std::ceil(low - (0.5f + kCentreSlack)) : std::floor(low);
}
static float LastPixel(float high, bool isCertain) {
    return isCertain ? std::floor(high - (0.5f - kCentreSlack)) : std::ceil(high);
}

// The pixels of the viewport that a triangle may cover. False when there are none.
static bool PixelBox(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                     const Rect& viewport, Rect& box) {
    const float area = std::abs((c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x));
    const float minX = Least(a.x, b.x, c.x), maxX = Most(a.x, b.x, c.x);
    const float minY = Least(a.y, b.y, c.y), maxY = Most(a.y, b.y, c.y);
    const float size = std::max(maxX - minX, maxY - minY) + kBoxMargin;
    const bool isCertain = area >= kCertainArea * size * size * size;
    const float left = std::max(FirstPixel(minX, isCertain), static_cast<float>(viewport.left));
    const float top = std::max(FirstPixel(minY, isCertain), static_cast<float>(viewport.top));
    const float right = std::min(LastPixel(maxX, isCertain), static_cast<float>(viewport.right - 1));
    const float bottom = std::min(LastPixel(maxY, isCertain), static_cast<float>(viewport.bottom - 1));
    if (area < kSmallestArea || left > right || top > bottom) return false;
    box = {static_cast<int32_t>(left), static_cast<int32_t>(top), static_cast<int32_t>(right) + 1,
           static_cast<int32_t>(bottom) + 1};
    return true;
}

static bool TurnsAway(Vec3 a, Vec3 b, Vec3 c, Vec3 eye) {
    const Vec3 normal = Cross(b - a, c - a), toEye = eye - a;
    return Dot(toEye, normal) < kCertainCosine * (SumOfSizes(toEye) * SumOfSizes(normal));
}

static bool MayShow(const MeshTriangle& triangle, const MeshVertices& vertices, const FaceView& view,
                    Rect& box) {
    const auto i = static_cast<size_t>(triangle[0]), j = static_cast<size_t>(triangle[1]),
               k = static_cast<size_t>(triangle[2]);
    if (TurnsAway(vertices.World(i), vertices.World(j), vertices.World(k), view.eye)) return false;
    if (!vertices.IsPlain(i) || !vertices.IsPlain(j) || !vertices.IsPlain(k)) return true;
    return PixelBox(vertices.corners[i], vertices.corners[j], vertices.corners[k], view.viewport, box);
}

static void ScanScalar(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                       std::vector<ScannedFace>& out) {
    out.clear();
    for (size_t i = 0; i < mesh.triangles.size(); ++i) {
        ScannedFace face{static_cast<uint32_t>(i)};
        if (MayShow(mesh.triangles[i], vertices, view, face.box)) out.push_back(face);
    }
}

// ---- Eight faces at a time.

namespace {

struct VectorsAvx2 {
    __m256 x, y, z;
};

struct PlacesAvx2 {
    __m256 x, y;
};

// The vertex in one corner of eight triangles.
struct CornerOfEight {
    const MeshTriangle* triangles;
    size_t corner;

    size_t operator[](size_t lane) const { return static_cast<size_t>(triangles[lane][corner]); }
};

}  // namespace

// Single loads put together: they cost a third of what gathers do.
ZEL_AVX2 static ZEL_INLINE VectorsAvx2 WorldAvx2(const MeshVertices& vertices, const CornerOfEight& at) {
    const Vec4* world = vertices.world.data();
    __m256 x = LoadPairAvx2(&world[at[0]].x, &world[at[4]].x),
           y = LoadPairAvx2(&world[at[1]].x, &world[at[5]].x);
    __m256 z = LoadPairAvx2(&world[at[2]].x, &world[at[6]].x),
           w = LoadPairAvx2(&world[at[3]].x, &world[at[7]].x);
    TransposeAvx2(x, y, z, w);
    return {x, y, z};
}

ZEL_AVX2 static ZEL_INLINE __m128 TwoPlacesAvx2(const ScreenPlace& first, const ScreenPlace& second) {
    const __m128 low = _mm_loadl_pi(_mm_setzero_ps(), reinterpret_cast<const __m64*>(&first));
    return _mm_loadh_pi(low, reinterpret_cast<const __m64*>(&second));
}

ZEL_AVX2 static ZEL_INLINE PlacesAvx2 PlacesOfAvx2(const MeshVertices& vertices, const CornerOfEight& at) {
    const ScreenPlace* p = vertices.places.data();
    const __m256 even = _mm256_insertf128_ps(_mm256_castps128_ps256(TwoPlacesAvx2(p[at[0]], p[at[1]])),
                                             TwoPlacesAvx2(p[at[4]], p[at[5]]), 1);
    const __m256 odd = _mm256_insertf128_ps(_mm256_castps128_ps256(TwoPlacesAvx2(p[at[2]], p[at[3]])),
                                            TwoPlacesAvx2(p[at[6]], p[at[7]]), 1);
    return {_mm256_shuffle_ps(even, odd, _MM_SHUFFLE(2, 0, 2, 0)),
            _mm256_shuffle_ps(even, odd, _MM_SHUFFLE(3, 1, 3, 1))};
}

ZEL_AVX2 static ZEL_INLINE VectorsAvx2 MinusAvx2(const VectorsAvx2& a, const VectorsAvx2& b) {
    return {_mm256_sub_ps(a.x, b.x), _mm256_sub_ps(a.y, b.y), _mm256_sub_ps(a.z, b.z)};
}

ZEL_AVX2 static ZEL_INLINE __m256 SizeAvx2(__m256 value) {
    return _mm256_andnot_ps(_mm256_set1_ps(-0.0f), value);
}

ZEL_AVX2 static ZEL_INLINE __m256 SumOfSizesAvx2(const VectorsAvx2& a) {
    return _mm256_add_ps(_mm256_add_ps(SizeAvx2(a.x), SizeAvx2(a.y)), SizeAvx2(a.z));
}

// a * b - c * d
ZEL_AVX2 static ZEL_INLINE __m256 CrossAvx2(__m256 a, __m256 b, __m256 c, __m256 d) {
    return _mm256_sub_ps(_mm256_mul_ps(a, b), _mm256_mul_ps(c, d));
}

ZEL_AVX2 static ZEL_INLINE __m256 FirstPixelAvx2(__m256 low, __m256 isCertain) {
    const __m256 inward = _mm256_ceil_ps(_mm256_sub_ps(low, _mm256_set1_ps(0.5f + kCentreSlack)));
    return _mm256_blendv_ps(_mm256_floor_ps(low), inward, isCertain);
}

ZEL_AVX2 static ZEL_INLINE __m256 LastPixelAvx2(__m256 high, __m256 isCertain) {
    const __m256 inward = _mm256_floor_ps(_mm256_sub_ps(high, _mm256_set1_ps(0.5f - kCentreSlack)));
    return _mm256_blendv_ps(_mm256_ceil_ps(high), inward, isCertain);
}

ZEL_AVX2 static ZEL_INLINE __m256 NumberAvx2(int32_t number) {
    return _mm256_set1_ps(static_cast<float>(number));
}

namespace {

// The boxes of eight faces.
struct BoxesAvx2 {
    std::array<int32_t, 8> left, top, right, bottom;
};

}  // namespace

ZEL_AVX2 static ZEL_INLINE void StoreAvx2(std::array<int32_t, 8>& to, __m256 numbers) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to.data()), _mm256_cvttps_epi32(numbers));
}

// Gives the lanes whose triangle covers no pixel, and the boxes of the others. A place that is not a number
// leaves a triangle in.
ZEL_AVX2 static ZEL_INLINE __m256 BoxesOfAvx2(const MeshVertices& vertices, const MeshTriangle* triangles,
                                              const Rect& viewport, BoxesAvx2& boxes) {
    const auto [ax, ay] = PlacesOfAvx2(vertices, {triangles, 0});
    const auto [bx, by] = PlacesOfAvx2(vertices, {triangles, 1});
    const auto [cx, cy] = PlacesOfAvx2(vertices, {triangles, 2});
    const __m256 area = SizeAvx2(CrossAvx2(_mm256_sub_ps(cx, ax), _mm256_sub_ps(by, ay),
                                           _mm256_sub_ps(cy, ay), _mm256_sub_ps(bx, ax)));
    const __m256 minX = _mm256_min_ps(_mm256_min_ps(ax, bx), cx),
                 maxX = _mm256_max_ps(_mm256_max_ps(ax, bx), cx);
    const __m256 minY = _mm256_min_ps(_mm256_min_ps(ay, by), cy),
                 maxY = _mm256_max_ps(_mm256_max_ps(ay, by), cy);

    const __m256 size = _mm256_add_ps(_mm256_max_ps(_mm256_sub_ps(maxX, minX), _mm256_sub_ps(maxY, minY)),
                                      _mm256_set1_ps(kBoxMargin));
    const __m256 cube =
        _mm256_mul_ps(_mm256_mul_ps(_mm256_mul_ps(_mm256_set1_ps(kCertainArea), size), size), size);
    const __m256 isCertain = _mm256_cmp_ps(area, cube, _CMP_GE_OQ);
    const __m256 left = _mm256_max_ps(FirstPixelAvx2(minX, isCertain), NumberAvx2(viewport.left));
    const __m256 top = _mm256_max_ps(FirstPixelAvx2(minY, isCertain), NumberAvx2(viewport.top));
    const __m256 right = _mm256_min_ps(LastPixelAvx2(maxX, isCertain), NumberAvx2(viewport.right - 1));
    const __m256 bottom = _mm256_min_ps(LastPixelAvx2(maxY, isCertain), NumberAvx2(viewport.bottom - 1));
    StoreAvx2(boxes.left, left);
    StoreAvx2(boxes.top, top);
    StoreAvx2(boxes.right, right);
    StoreAvx2(boxes.bottom, bottom);

    __m256 misses = _mm256_cmp_ps(area, _mm256_set1_ps(kSmallestArea), _CMP_LT_OQ);
    misses = _mm256_or_ps(misses, _mm256_cmp_ps(left, right, _CMP_GT_OQ));
    misses = _mm256_or_ps(misses, _mm256_cmp_ps(top, bottom, _CMP_GT_OQ));
    return _mm256_and_ps(misses, _mm256_cmp_ps(area, area, _CMP_ORD_Q));
}

ZEL_AVX2 static ZEL_INLINE __m256 TurnsAwayAvx2(const MeshVertices& vertices, const MeshTriangle* triangles,
                                                const VectorsAvx2& eye) {
    const VectorsAvx2 a = WorldAvx2(vertices, {triangles, 0});
    const VectorsAvx2 p = MinusAvx2(WorldAvx2(vertices, {triangles, 1}), a);
    const VectorsAvx2 q = MinusAvx2(WorldAvx2(vertices, {triangles, 2}), a);
    const VectorsAvx2 normal{CrossAvx2(p.y, q.z, p.z, q.y), CrossAvx2(p.z, q.x, p.x, q.z),
                             CrossAvx2(p.x, q.y, p.y, q.x)};
    const VectorsAvx2 toEye = MinusAvx2(eye, a);
    const __m256 dot =
        _mm256_add_ps(_mm256_add_ps(_mm256_mul_ps(toEye.x, normal.x), _mm256_mul_ps(toEye.y, normal.y)),
                      _mm256_mul_ps(toEye.z, normal.z));
    const __m256 sizes = _mm256_mul_ps(SumOfSizesAvx2(toEye), SumOfSizesAvx2(normal));
    return _mm256_cmp_ps(dot, _mm256_mul_ps(_mm256_set1_ps(kCertainCosine), sizes), _CMP_LT_OQ);
}

// The last eight triangles overlap those before them. There are at least eight.
ZEL_AVX2 static void ScanAvx2(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                              std::vector<ScannedFace>& out) {
    const VectorsAvx2 eye{_mm256_set1_ps(view.eye.x), _mm256_set1_ps(view.eye.y), _mm256_set1_ps(view.eye.z)};
    const size_t count = mesh.triangles.size();
    size_t found = 0;
    out.resize(count);
    for (size_t next = 0; next < count; next += 8) {
        const size_t i = std::min(next, count - 8);
        const MeshTriangle* triangles = &mesh.triangles[i];
        BoxesAvx2 boxes;
        const __m256 misses = BoxesOfAvx2(vertices, triangles, view.viewport, boxes);
        auto lanes = ~static_cast<uint32_t>(_mm256_movemask_ps(misses)) & 0xFFu << (next - i) & 0xFF;
        if (lanes == 0) continue;
        lanes &= ~static_cast<uint32_t>(_mm256_movemask_ps(TurnsAwayAvx2(vertices, triangles, eye)));
        for (; lanes != 0; lanes &= lanes - 1) {
            const auto lane = static_cast<size_t>(std::countr_zero(lanes));
            out[found++] = {
                static_cast<uint32_t>(i + lane),
                {boxes.left[lane], boxes.top[lane], boxes.right[lane] + 1, boxes.bottom[lane] + 1}};
        }
    }
    out.resize(found);
}

void ScanFaces(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view, SimdLevel level,
               std::vector<ScannedFace>& out) {
    if (level == SimdLevel::Avx2 && mesh.triangles.size() >= 8) {
        ScanAvx2(mesh, vertices, view, out);
    } else {
        ScanScalar(mesh, vertices, view, out);
    }
}
