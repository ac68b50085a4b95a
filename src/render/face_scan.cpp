#include "render/face_scan.h"

#include "render/fill_rows.h"
#include "render/front_faces.h"
#include "render/simd.h"

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

// The same rounding moves the sum of the three weights off 1, by at most 3 * 8 * 2^-24 * size^2 / area from
// the edges and a third of that from the area: so much less than the least depth of its corners a pixel of
// the face may have. This is a little more; the second one is for the products and sums of depths.
constexpr float kDepthRounding = 40 * 0x1p-24f, kSumRounding = 16 * 0x1p-24f;

static float Least(float a, float b, float c) { return std::min(std::min(a, b), c); }
static float Most(float a, float b, float c) { return std::max(std::max(a, b), c); }

// The first and last pixel of a line whose centre may lie from `low` to `high`: exactly, or with the margin
// of a whole pixel where rounding may reach farther.
static float FirstPixel(float low, bool isCertain) {
    return isCertain ? std::ceil(low - (0.5f + kCentreSlack)) : std::floor(low);
}
static float LastPixel(float high, bool isCertain) {
    return isCertain ? std::floor(high - (0.5f - kCentreSlack)) : std::ceil(high);
}

// False when the triangle shows no pixel of the viewport; otherwise gives those that it may cover.
static bool MayShow(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c, const FaceView& view,
                    Rect& box) {
    const Rect& viewport = view.viewport;
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

    const float nearest = Least(a.depth, b.depth, c.depth);
    const float rounding = kDepthRounding * size * size / area + kSumRounding;
    if (nearest - nearest * rounding > view.farthest) return false;
    box = {static_cast<int32_t>(left), static_cast<int32_t>(top), static_cast<int32_t>(right) + 1,
           static_cast<int32_t>(bottom) + 1};
    return true;
}

// The faces of a list, which are those that may turn to the eye.
static void ScanScalar(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                       const std::vector<uint32_t>& faces, std::vector<ScannedFace>& out) {
    out.clear();
    for (uint32_t i : faces) {
        ScannedFace face{i};
        const MeshTriangle& t = mesh.triangles[i];
        const auto a = static_cast<size_t>(t[0]), b = static_cast<size_t>(t[1]),
                   c = static_cast<size_t>(t[2]);
        const bool isPlain = vertices.IsPlain(a) && vertices.IsPlain(b) && vertices.IsPlain(c);
        if (!isPlain ||
            MayShow(vertices.corners[a], vertices.corners[b], vertices.corners[c], view, face.box))
            out.push_back(face);
    }
}

namespace {

// The same corner of several faces of a list.
struct CornersOfFaces {
    const MeshTriangle* triangles;
    const uint32_t* faces;
    size_t corner;

    size_t operator[](size_t lane) const { return static_cast<size_t>(triangles[faces[lane]][corner]); }
};

template <size_t lanes>
struct Boxes {
    std::array<int32_t, lanes> left, top, right, bottom;
};

}  // namespace

// Adds those of the faces whose lane is set.
template <size_t lanes>
static ZEL_INLINE size_t AddFaces(uint32_t set, const uint32_t* faces, const Boxes<lanes>& boxes,
                                  ScannedFace* out, size_t found) {
    for (; set != 0; set &= set - 1) {
        const auto lane = static_cast<size_t>(std::countr_zero(set));
        out[found++] = {faces[lane],
                        {boxes.left[lane], boxes.top[lane], boxes.right[lane] + 1, boxes.bottom[lane] + 1}};
    }
    return found;
}

// The lanes of a group that stand for faces of the list: its end is filled with its last face.
static uint32_t LanesOf(size_t first, size_t count, size_t lanes) {
    const size_t used = std::min(count - first, lanes);
    return (1u << used) - 1;
}

// ---- Four faces at a time.

namespace {

struct PlacesSse2 {
    __m128 x, y, depth;
};

}  // namespace

static ZEL_INLINE PlacesSse2 PlacesOfSse2(const ScreenCorner* corners, const CornersOfFaces& at) {
    __m128 x = _mm_loadu_ps(&corners[at[0]].x), y = _mm_loadu_ps(&corners[at[1]].x);
    __m128 depth = _mm_loadu_ps(&corners[at[2]].x), unused = _mm_loadu_ps(&corners[at[3]].x);
    _MM_TRANSPOSE4_PS(x, y, depth, unused);
    return {x, y, depth};
}

// Rounds numbers within the range of integers down.
static ZEL_INLINE __m128 FloorOfPixelSse2(__m128 value) {
    const __m128 truncated = _mm_cvtepi32_ps(_mm_cvttps_epi32(value));
    return _mm_sub_ps(truncated, _mm_and_ps(_mm_cmpgt_ps(truncated, value), _mm_set1_ps(1)));
}

static ZEL_INLINE __m128 CeilOfPixelSse2(__m128 value) {
    const __m128 truncated = _mm_cvtepi32_ps(_mm_cvttps_epi32(value));
    return _mm_add_ps(truncated, _mm_and_ps(_mm_cmplt_ps(truncated, value), _mm_set1_ps(1)));
}

static ZEL_INLINE __m128 FirstPixelSse2(__m128 low, __m128 isCertain) {
    const __m128 inward = CeilOfPixelSse2(_mm_sub_ps(low, _mm_set1_ps(0.5f + kCentreSlack)));
    return SelectSse2(isCertain, inward, FloorOfPixelSse2(low));
}

static ZEL_INLINE __m128 LastPixelSse2(__m128 high, __m128 isCertain) {
    const __m128 inward = FloorOfPixelSse2(_mm_sub_ps(high, _mm_set1_ps(0.5f - kCentreSlack)));
    return SelectSse2(isCertain, inward, CeilOfPixelSse2(high));
}

static ZEL_INLINE __m128 NumberSse2(int32_t number) { return _mm_set1_ps(static_cast<float>(number)); }

static ZEL_INLINE void StoreSse2(std::array<int32_t, 4>& to, __m128 numbers) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to.data()), _mm_cvttps_epi32(numbers));
}

// Gives the lanes whose face shows no pixel, and the boxes of the others. A place that is not a number leaves
// a face in.
static ZEL_INLINE uint32_t MissesSse2(const PlacesSse2& a, const PlacesSse2& b, const PlacesSse2& c,
                                      const FaceView& view, Boxes<4>& boxes) {
    const __m128 cross = _mm_sub_ps(_mm_mul_ps(_mm_sub_ps(c.x, a.x), _mm_sub_ps(b.y, a.y)),
                                    _mm_mul_ps(_mm_sub_ps(c.y, a.y), _mm_sub_ps(b.x, a.x)));
    const __m128 area = _mm_andnot_ps(_mm_set1_ps(-0.0f), cross);
    const __m128 minX = _mm_min_ps(_mm_min_ps(a.x, b.x), c.x), maxX = _mm_max_ps(_mm_max_ps(a.x, b.x), c.x);
    const __m128 minY = _mm_min_ps(_mm_min_ps(a.y, b.y), c.y), maxY = _mm_max_ps(_mm_max_ps(a.y, b.y), c.y);
    const __m128 size =
        _mm_add_ps(_mm_max_ps(_mm_sub_ps(maxX, minX), _mm_sub_ps(maxY, minY)), _mm_set1_ps(kBoxMargin));
    const __m128 cube = _mm_mul_ps(_mm_mul_ps(_mm_mul_ps(_mm_set1_ps(kCertainArea), size), size), size);
    const __m128 isCertain = _mm_cmpge_ps(area, cube);
    const Rect& viewport = view.viewport;
    const __m128 left = _mm_max_ps(FirstPixelSse2(minX, isCertain), NumberSse2(viewport.left));
    const __m128 top = _mm_max_ps(FirstPixelSse2(minY, isCertain), NumberSse2(viewport.top));
    const __m128 right = _mm_min_ps(LastPixelSse2(maxX, isCertain), NumberSse2(viewport.right - 1));
    const __m128 bottom = _mm_min_ps(LastPixelSse2(maxY, isCertain), NumberSse2(viewport.bottom - 1));
    StoreSse2(boxes.left, left);
    StoreSse2(boxes.top, top);
    StoreSse2(boxes.right, right);
    StoreSse2(boxes.bottom, bottom);

    const __m128 nearest = _mm_min_ps(_mm_min_ps(a.depth, b.depth), c.depth);
    const __m128 rounding =
        _mm_add_ps(_mm_div_ps(_mm_mul_ps(_mm_mul_ps(_mm_set1_ps(kDepthRounding), size), size), area),
                   _mm_set1_ps(kSumRounding));
    const __m128 before = _mm_sub_ps(nearest, _mm_mul_ps(nearest, rounding));
    __m128 misses = _mm_cmplt_ps(area, _mm_set1_ps(kSmallestArea));
    misses = _mm_or_ps(misses, _mm_cmpgt_ps(left, right));
    misses = _mm_or_ps(misses, _mm_cmpgt_ps(top, bottom));
    misses = _mm_or_ps(misses, _mm_cmpgt_ps(before, _mm_set1_ps(view.farthest)));
    return static_cast<uint32_t>(_mm_movemask_ps(_mm_and_ps(misses, _mm_cmpord_ps(area, area))));
}

static void ScanSse2(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                     const std::vector<uint32_t>& faces, size_t count, std::vector<ScannedFace>& out) {
    const MeshTriangle* triangles = mesh.triangles.data();
    const ScreenCorner* corners = vertices.PlainCorners();
    size_t found = 0;
    out.resize(count);
    for (size_t i = 0; i < count; i += 4) {
        Boxes<4> boxes;
        const uint32_t* group = &faces[i];
        const uint32_t misses = MissesSse2(PlacesOfSse2(corners, {triangles, group, 0}),
                                           PlacesOfSse2(corners, {triangles, group, 1}),
                                           PlacesOfSse2(corners, {triangles, group, 2}), view, boxes);
        found = AddFaces(~misses & LanesOf(i, count, 4), group, boxes, out.data(), found);
    }
    out.resize(found);
}

// ---- Eight faces at a time.

namespace {

struct PlacesAvx2 {
    __m256 x, y, depth;
};

}  // namespace

// Single loads put together: they cost a third of what gathers do.
ZEL_AVX2 static ZEL_INLINE PlacesAvx2 PlacesOfAvx2(const ScreenCorner* corners, const CornersOfFaces& at) {
    __m256 x = LoadPairAvx2(&corners[at[0]].x, &corners[at[4]].x),
           y = LoadPairAvx2(&corners[at[1]].x, &corners[at[5]].x);
    __m256 depth = LoadPairAvx2(&corners[at[2]].x, &corners[at[6]].x),
           unused = LoadPairAvx2(&corners[at[3]].x, &corners[at[7]].x);
    TransposeAvx2(x, y, depth, unused);
    return {x, y, depth};
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

ZEL_AVX2 static ZEL_INLINE void StoreAvx2(std::array<int32_t, 8>& to, __m256 numbers) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to.data()), _mm256_cvttps_epi32(numbers));
}

ZEL_AVX2 static ZEL_INLINE uint32_t MissesAvx2(const PlacesAvx2& a, const PlacesAvx2& b, const PlacesAvx2& c,
                                               const FaceView& view, Boxes<8>& boxes) {
    const __m256 cross = _mm256_sub_ps(_mm256_mul_ps(_mm256_sub_ps(c.x, a.x), _mm256_sub_ps(b.y, a.y)),
                                       _mm256_mul_ps(_mm256_sub_ps(c.y, a.y), _mm256_sub_ps(b.x, a.x)));
    const __m256 area = _mm256_andnot_ps(_mm256_set1_ps(-0.0f), cross);
    const __m256 minX = _mm256_min_ps(_mm256_min_ps(a.x, b.x), c.x),
                 maxX = _mm256_max_ps(_mm256_max_ps(a.x, b.x), c.x);
    const __m256 minY = _mm256_min_ps(_mm256_min_ps(a.y, b.y), c.y),
                 maxY = _mm256_max_ps(_mm256_max_ps(a.y, b.y), c.y);
    const __m256 size = _mm256_add_ps(_mm256_max_ps(_mm256_sub_ps(maxX, minX), _mm256_sub_ps(maxY, minY)),
                                      _mm256_set1_ps(kBoxMargin));
    const __m256 cube =
        _mm256_mul_ps(_mm256_mul_ps(_mm256_mul_ps(_mm256_set1_ps(kCertainArea), size), size), size);
    const __m256 isCertain = _mm256_cmp_ps(area, cube, _CMP_GE_OQ);
    const Rect& viewport = view.viewport;
    const __m256 left = _mm256_max_ps(FirstPixelAvx2(minX, isCertain), NumberAvx2(viewport.left));
    const __m256 top = _mm256_max_ps(FirstPixelAvx2(minY, isCertain), NumberAvx2(viewport.top));
    const __m256 right = _mm256_min_ps(LastPixelAvx2(maxX, isCertain), NumberAvx2(viewport.right - 1));
    const __m256 bottom = _mm256_min_ps(LastPixelAvx2(maxY, isCertain), NumberAvx2(viewport.bottom - 1));
    StoreAvx2(boxes.left, left);
    StoreAvx2(boxes.top, top);
    StoreAvx2(boxes.right, right);
    StoreAvx2(boxes.bottom, bottom);

    const __m256 nearest = _mm256_min_ps(_mm256_min_ps(a.depth, b.depth), c.depth);
    const __m256 scaled = _mm256_mul_ps(_mm256_mul_ps(_mm256_set1_ps(kDepthRounding), size), size);
    const __m256 rounding = _mm256_add_ps(_mm256_div_ps(scaled, area), _mm256_set1_ps(kSumRounding));
    const __m256 before = _mm256_sub_ps(nearest, _mm256_mul_ps(nearest, rounding));
    __m256 misses = _mm256_cmp_ps(area, _mm256_set1_ps(kSmallestArea), _CMP_LT_OQ);
    misses = _mm256_or_ps(misses, _mm256_cmp_ps(left, right, _CMP_GT_OQ));
    misses = _mm256_or_ps(misses, _mm256_cmp_ps(top, bottom, _CMP_GT_OQ));
    misses = _mm256_or_ps(misses, _mm256_cmp_ps(before, _mm256_set1_ps(view.farthest), _CMP_GT_OQ));
    misses = _mm256_and_ps(misses, _mm256_cmp_ps(area, area, _CMP_ORD_Q));
    return static_cast<uint32_t>(_mm256_movemask_ps(misses));
}

ZEL_AVX2 static void ScanAvx2(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                              const std::vector<uint32_t>& faces, size_t count,
                              std::vector<ScannedFace>& out) {
    const MeshTriangle* triangles = mesh.triangles.data();
    const ScreenCorner* corners = vertices.PlainCorners();
    size_t found = 0;
    out.resize(count);
    for (size_t i = 0; i < count; i += 8) {
        Boxes<8> boxes;
        const uint32_t* group = &faces[i];
        const uint32_t misses = MissesAvx2(PlacesOfAvx2(corners, {triangles, group, 0}),
                                           PlacesOfAvx2(corners, {triangles, group, 1}),
                                           PlacesOfAvx2(corners, {triangles, group, 2}), view, boxes);
        found = AddFaces(~misses & LanesOf(i, count, 8), group, boxes, out.data(), found);
    }
    out.resize(found);
}

void ScanFaces(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view, SimdLevel level,
               std::vector<ScannedFace>& out) {
    static std::vector<uint32_t> faces;
    FindFrontFaces(mesh, FindEye(mesh, view.world, view.eye), level, faces);
    if (level == SimdLevel::Scalar || faces.empty()) {
        ScanScalar(mesh, vertices, view, faces, out);
        return;
    }
    const size_t count = faces.size();
    faces.resize((count + 7) / 8 * 8, faces.back());
    if (level == SimdLevel::Avx2) {
        ScanAvx2(mesh, vertices, view, faces, count, out);
    } else {
        ScanSse2(mesh, vertices, view, faces, count, out);
    }
}
