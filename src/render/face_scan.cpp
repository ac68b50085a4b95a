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

// A face of no more than two columns and two rows is looked at pixel by pixel.
constexpr float kFewPixels = 1;  // from the first to the last

// An edge's function below this is a weight below 0 too: divided by no area does it vanish.
constexpr float kCertainlyOutside = -1e-30f;

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

namespace {

// What a face may cover: from the first to the last pixel, both inclusive and inside the viewport. Empty
// where the last is less than the first.
struct FaceSpan {
    float cross, area;  // twice the area, square pixels: with the sign of the winding, and its size
    float size;         // from one end to the farthest centre that is looked at
    float left, top, right, bottom;  // pixels, whole numbers
};

}  // namespace

static FaceSpan SpanOf(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                       const Rect& viewport) {
    FaceSpan span;
    span.cross = (c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x);
    span.area = std::abs(span.cross);
    const float minX = Least(a.x, b.x, c.x), maxX = Most(a.x, b.x, c.x);
    const float minY = Least(a.y, b.y, c.y), maxY = Most(a.y, b.y, c.y);
    span.size = std::max(maxX - minX, maxY - minY) + kBoxMargin;
    const bool isCertain = span.area >= kCertainArea * span.size * span.size * span.size;
    span.left = std::max(FirstPixel(minX, isCertain), static_cast<float>(viewport.left));
    span.top = std::max(FirstPixel(minY, isCertain), static_cast<float>(viewport.top));
    span.right = std::min(LastPixel(maxX, isCertain), static_cast<float>(viewport.right - 1));
    span.bottom = std::min(LastPixel(maxY, isCertain), static_cast<float>(viewport.bottom - 1));
    return span;
}

static bool IsEmpty(const FaceSpan& span) {
    return span.area < kSmallestArea || span.left > span.right || span.top > span.bottom;
}

// No pixel of the face lies before this.
static float NearestDepth(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                          const FaceSpan& span) {
    const float least = Least(a.depth, b.depth, c.depth);
    const float rounding = kDepthRounding * span.size * span.size / span.area + kSumRounding;
    return least - least * rounding;
}

static bool IsOutside(const ScreenCorner& start, const ScreenCorner& end, float sign, float x, float y) {
    return sign * ((x - start.x) * (end.y - start.y) - (y - start.y) * (end.x - start.x)) < kCertainlyOutside;
}

// True for a face of a few pixels that covers none of their centres: its edges tell it as filling does.
static bool MissesCentres(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                          const FaceSpan& span) {
    if (span.right - span.left > kFewPixels || span.bottom - span.top > kFewPixels) return false;
    const float sign = span.cross < 0 ? -1.0f : 1.0f;
    bool misses = true;
    for (float x : {span.left + 0.5f, span.right + 0.5f}) {
        for (float y : {span.top + 0.5f, span.bottom + 0.5f}) {
            misses = misses && (IsOutside(b, c, sign, x, y) || IsOutside(c, a, sign, x, y) ||
                                IsOutside(a, b, sign, x, y));
        }
    }
    return misses;
}

// False when the triangle shows no pixel of the viewport; otherwise gives those that it may cover.
static bool MayShow(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c, const FaceView& view,
                    ScannedFace& face) {
    const FaceSpan span = SpanOf(a, b, c, view.viewport);
    face.nearest = NearestDepth(a, b, c, span);
    if (IsEmpty(span) || face.nearest > view.farthest || MissesCentres(a, b, c, span)) return false;
    face.box = {static_cast<int32_t>(span.left), static_cast<int32_t>(span.top),
                static_cast<int32_t>(span.right) + 1, static_cast<int32_t>(span.bottom) + 1};
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
        if (!isPlain || MayShow(vertices.corners[a], vertices.corners[b], vertices.corners[c], view, face))
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

// What is found of several faces.
template <size_t lanes>
struct Places {
    std::array<int32_t, lanes> left, top, right, bottom;  // inclusive
    std::array<float, lanes> nearest;                     // see ScannedFace
};

}  // namespace

// Adds those of the faces whose lane is set.
template <size_t lanes>
static ZEL_INLINE size_t AddFaces(uint32_t set, const uint32_t* faces, const Places<lanes>& places,
                                  ScannedFace* out, size_t found) {
    for (; set != 0; set &= set - 1) {
        const auto lane = static_cast<size_t>(std::countr_zero(set));
        const Rect box{places.left[lane], places.top[lane], places.right[lane] + 1, places.bottom[lane] + 1};
        out[found++] = {faces[lane], box, places.nearest[lane]};
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

struct CornersSse2 {
    __m128 x, y, depth;
};

}  // namespace

static ZEL_INLINE CornersSse2 CornersOfSse2(const ScreenCorner* corners, const CornersOfFaces& at) {
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

namespace {

// See FaceSpan. Where a place is not a number, so is the area.
struct FaceSpansSse2 {
    __m128 cross, area, size, left, top, right, bottom;
};

}  // namespace

static ZEL_INLINE FaceSpansSse2 SpansOfSse2(const CornersSse2& a, const CornersSse2& b, const CornersSse2& c,
                                            const Rect& viewport) {
    FaceSpansSse2 spans;
    spans.cross = _mm_sub_ps(_mm_mul_ps(_mm_sub_ps(c.x, a.x), _mm_sub_ps(b.y, a.y)),
                             _mm_mul_ps(_mm_sub_ps(c.y, a.y), _mm_sub_ps(b.x, a.x)));
    spans.area = _mm_andnot_ps(_mm_set1_ps(-0.0f), spans.cross);
    const __m128 minX = _mm_min_ps(_mm_min_ps(a.x, b.x), c.x), maxX = _mm_max_ps(_mm_max_ps(a.x, b.x), c.x);
    const __m128 minY = _mm_min_ps(_mm_min_ps(a.y, b.y), c.y), maxY = _mm_max_ps(_mm_max_ps(a.y, b.y), c.y);
    const __m128 size =
        _mm_add_ps(_mm_max_ps(_mm_sub_ps(maxX, minX), _mm_sub_ps(maxY, minY)), _mm_set1_ps(kBoxMargin));
    const __m128 cube = _mm_mul_ps(_mm_mul_ps(_mm_mul_ps(_mm_set1_ps(kCertainArea), size), size), size);
    const __m128 isCertain = _mm_cmpge_ps(spans.area, cube);
    spans.size = size;
    spans.left = _mm_max_ps(FirstPixelSse2(minX, isCertain), NumberSse2(viewport.left));
    spans.top = _mm_max_ps(FirstPixelSse2(minY, isCertain), NumberSse2(viewport.top));
    spans.right = _mm_min_ps(LastPixelSse2(maxX, isCertain), NumberSse2(viewport.right - 1));
    spans.bottom = _mm_min_ps(LastPixelSse2(maxY, isCertain), NumberSse2(viewport.bottom - 1));
    return spans;
}

static ZEL_INLINE void StorePlacesSse2(const FaceSpansSse2& spans, __m128 nearest, Places<4>& places) {
    StoreSse2(places.left, spans.left);
    StoreSse2(places.top, spans.top);
    StoreSse2(places.right, spans.right);
    StoreSse2(places.bottom, spans.bottom);
    _mm_storeu_ps(places.nearest.data(), nearest);
}

static ZEL_INLINE __m128 AreEmptySse2(const FaceSpansSse2& spans) {
    const __m128 hasNoPixel =
        _mm_or_ps(_mm_cmpgt_ps(spans.left, spans.right), _mm_cmpgt_ps(spans.top, spans.bottom));
    return _mm_or_ps(_mm_cmplt_ps(spans.area, _mm_set1_ps(kSmallestArea)), hasNoPixel);
}

static ZEL_INLINE __m128 NearestDepthsSse2(const CornersSse2& a, const CornersSse2& b, const CornersSse2& c,
                                           const FaceSpansSse2& spans) {
    const __m128 least = _mm_min_ps(_mm_min_ps(a.depth, b.depth), c.depth);
    const __m128 scaled = _mm_mul_ps(_mm_mul_ps(_mm_set1_ps(kDepthRounding), spans.size), spans.size);
    const __m128 rounding = _mm_add_ps(_mm_div_ps(scaled, spans.area), _mm_set1_ps(kSumRounding));
    return _mm_sub_ps(least, _mm_mul_ps(least, rounding));
}

// Of more than a few pixels.
static ZEL_INLINE __m128 AreLargeSse2(const FaceSpansSse2& spans) {
    const __m128 few = _mm_set1_ps(kFewPixels);
    return _mm_or_ps(_mm_cmpgt_ps(_mm_sub_ps(spans.right, spans.left), few),
                     _mm_cmpgt_ps(_mm_sub_ps(spans.bottom, spans.top), few));
}

// Adds the lanes where an edge leaves the centres of a face's pixels outside: by column and row.
static ZEL_INLINE void AddOutsideSse2(const CornersSse2& start, const CornersSse2& end,
                                      const FaceSpansSse2& spans, __m128 (&outside)[2][2]) {
    const __m128 runX = _mm_sub_ps(end.x, start.x), runY = _mm_sub_ps(end.y, start.y),
                 half = _mm_set1_ps(0.5f);
    const __m128 sign = _mm_and_ps(spans.cross, _mm_set1_ps(-0.0f)),
                 certainly = _mm_set1_ps(kCertainlyOutside);
    const __m128 columns[2] = {spans.left, spans.right}, rows[2] = {spans.top, spans.bottom};
    for (int column = 0; column < 2; ++column) {
        const __m128 x = _mm_sub_ps(_mm_add_ps(columns[column], half), start.x);
        for (int row = 0; row < 2; ++row) {
            const __m128 y = _mm_sub_ps(_mm_add_ps(rows[row], half), start.y);
            const __m128 edge = _mm_sub_ps(_mm_mul_ps(x, runY), _mm_mul_ps(y, runX));
            outside[column][row] =
                _mm_or_ps(outside[column][row], _mm_cmplt_ps(_mm_xor_ps(edge, sign), certainly));
        }
    }
}

static ZEL_INLINE __m128 MissCentresSse2(const CornersSse2& a, const CornersSse2& b, const CornersSse2& c,
                                         const FaceSpansSse2& spans) {
    __m128 outside[2][2] = {{_mm_setzero_ps(), _mm_setzero_ps()}, {_mm_setzero_ps(), _mm_setzero_ps()}};
    AddOutsideSse2(b, c, spans, outside);
    AddOutsideSse2(c, a, spans, outside);
    AddOutsideSse2(a, b, spans, outside);
    return _mm_and_ps(_mm_and_ps(outside[0][0], outside[0][1]), _mm_and_ps(outside[1][0], outside[1][1]));
}

// Gives the lanes whose face shows no pixel, and the places of the others. A place that is not a number
// leaves a face in.
static ZEL_INLINE uint32_t MissesSse2(const CornersSse2& a, const CornersSse2& b, const CornersSse2& c,
                                      const FaceView& view, Places<4>& places) {
    const FaceSpansSse2 spans = SpansOfSse2(a, b, c, view.viewport);
    const __m128 isKnown = _mm_cmpord_ps(spans.area, spans.area), isLarge = AreLargeSse2(spans);
    const __m128 nearest = NearestDepthsSse2(a, b, c, spans);
    const __m128 areHidden = _mm_cmpgt_ps(nearest, _mm_set1_ps(view.farthest));
    const __m128 misses = _mm_or_ps(AreEmptySse2(spans), areHidden);
    const auto missing = static_cast<uint32_t>(_mm_movemask_ps(_mm_and_ps(misses, isKnown)));
    const auto large = static_cast<uint32_t>(_mm_movemask_ps(isLarge));
    if (missing == 0xF) return missing;
    StorePlacesSse2(spans, nearest, places);
    if ((missing | large) == 0xF) return missing;
    const __m128 missesCentres = _mm_and_ps(_mm_andnot_ps(isLarge, MissCentresSse2(a, b, c, spans)), isKnown);
    return missing | static_cast<uint32_t>(_mm_movemask_ps(missesCentres));
}

static void ScanSse2(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                     const std::vector<uint32_t>& faces, size_t count, std::vector<ScannedFace>& out) {
    const MeshTriangle* triangles = mesh.triangles.data();
    const ScreenCorner* corners = vertices.PlainCorners();
    size_t found = 0;
    out.resize(count);
    for (size_t i = 0; i < count; i += 4) {
        Places<4> places;
        const uint32_t* group = &faces[i];
        const uint32_t misses = MissesSse2(CornersOfSse2(corners, {triangles, group, 0}),
                                           CornersOfSse2(corners, {triangles, group, 1}),
                                           CornersOfSse2(corners, {triangles, group, 2}), view, places);
        found = AddFaces(~misses & LanesOf(i, count, 4), group, places, out.data(), found);
    }
    out.resize(found);
}

// ---- Eight faces at a time.

namespace {

struct CornersAvx2 {
    __m256 x, y, depth;
};

}  // namespace

// Single loads put together: they cost a third of what gathers do.
ZEL_AVX2 static ZEL_INLINE CornersAvx2 CornersOfAvx2(const ScreenCorner* corners, const CornersOfFaces& at) {
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

namespace {

// See FaceSpan. Where a place is not a number, so is the area.
struct FaceSpansAvx2 {
    __m256 cross, area, size, left, top, right, bottom;
};

}  // namespace

ZEL_AVX2 static ZEL_INLINE FaceSpansAvx2 SpansOfAvx2(const CornersAvx2& a, const CornersAvx2& b,
                                                     const CornersAvx2& c, const Rect& viewport) {
    FaceSpansAvx2 spans;
    spans.cross = _mm256_sub_ps(_mm256_mul_ps(_mm256_sub_ps(c.x, a.x), _mm256_sub_ps(b.y, a.y)),
                                _mm256_mul_ps(_mm256_sub_ps(c.y, a.y), _mm256_sub_ps(b.x, a.x)));
    spans.area = _mm256_andnot_ps(_mm256_set1_ps(-0.0f), spans.cross);
    const __m256 minX = _mm256_min_ps(_mm256_min_ps(a.x, b.x), c.x),
                 maxX = _mm256_max_ps(_mm256_max_ps(a.x, b.x), c.x);
    const __m256 minY = _mm256_min_ps(_mm256_min_ps(a.y, b.y), c.y),
                 maxY = _mm256_max_ps(_mm256_max_ps(a.y, b.y), c.y);
    const __m256 size = _mm256_add_ps(_mm256_max_ps(_mm256_sub_ps(maxX, minX), _mm256_sub_ps(maxY, minY)),
                                      _mm256_set1_ps(kBoxMargin));
    const __m256 cube =
        _mm256_mul_ps(_mm256_mul_ps(_mm256_mul_ps(_mm256_set1_ps(kCertainArea), size), size), size);
    const __m256 isCertain = _mm256_cmp_ps(spans.area, cube, _CMP_GE_OQ);
    spans.size = size;
    spans.left = _mm256_max_ps(FirstPixelAvx2(minX, isCertain), NumberAvx2(viewport.left));
    spans.top = _mm256_max_ps(FirstPixelAvx2(minY, isCertain), NumberAvx2(viewport.top));
    spans.right = _mm256_min_ps(LastPixelAvx2(maxX, isCertain), NumberAvx2(viewport.right - 1));
    spans.bottom = _mm256_min_ps(LastPixelAvx2(maxY, isCertain), NumberAvx2(viewport.bottom - 1));
    return spans;
}

ZEL_AVX2 static ZEL_INLINE void StorePlacesAvx2(const FaceSpansAvx2& spans, __m256 nearest,
                                                Places<8>& places) {
    StoreAvx2(places.left, spans.left);
    StoreAvx2(places.top, spans.top);
    StoreAvx2(places.right, spans.right);
    StoreAvx2(places.bottom, spans.bottom);
    _mm256_storeu_ps(places.nearest.data(), nearest);
}

ZEL_AVX2 static ZEL_INLINE __m256 AreEmptyAvx2(const FaceSpansAvx2& spans) {
    const __m256 hasNoPixel = _mm256_or_ps(_mm256_cmp_ps(spans.left, spans.right, _CMP_GT_OQ),
                                           _mm256_cmp_ps(spans.top, spans.bottom, _CMP_GT_OQ));
    return _mm256_or_ps(_mm256_cmp_ps(spans.area, _mm256_set1_ps(kSmallestArea), _CMP_LT_OQ), hasNoPixel);
}

ZEL_AVX2 static ZEL_INLINE __m256 NearestDepthsAvx2(const CornersAvx2& a, const CornersAvx2& b,
                                                    const CornersAvx2& c, const FaceSpansAvx2& spans) {
    const __m256 least = _mm256_min_ps(_mm256_min_ps(a.depth, b.depth), c.depth);
    const __m256 scaled =
        _mm256_mul_ps(_mm256_mul_ps(_mm256_set1_ps(kDepthRounding), spans.size), spans.size);
    const __m256 rounding = _mm256_add_ps(_mm256_div_ps(scaled, spans.area), _mm256_set1_ps(kSumRounding));
    return _mm256_sub_ps(least, _mm256_mul_ps(least, rounding));
}

// Of more than a few pixels.
ZEL_AVX2 static ZEL_INLINE __m256 AreLargeAvx2(const FaceSpansAvx2& spans) {
    const __m256 few = _mm256_set1_ps(kFewPixels);
    return _mm256_or_ps(_mm256_cmp_ps(_mm256_sub_ps(spans.right, spans.left), few, _CMP_GT_OQ),
                        _mm256_cmp_ps(_mm256_sub_ps(spans.bottom, spans.top), few, _CMP_GT_OQ));
}

// Adds the lanes where an edge leaves the centres of a face's pixels outside: by column and row.
ZEL_AVX2 static ZEL_INLINE void AddOutsideAvx2(const CornersAvx2& start, const CornersAvx2& end,
                                               const FaceSpansAvx2& spans, __m256 (&outside)[2][2]) {
    const __m256 runX = _mm256_sub_ps(end.x, start.x), runY = _mm256_sub_ps(end.y, start.y),
                 half = _mm256_set1_ps(0.5f);
    const __m256 sign = _mm256_and_ps(spans.cross, _mm256_set1_ps(-0.0f)),
                 certainly = _mm256_set1_ps(kCertainlyOutside);
    const __m256 columns[2] = {spans.left, spans.right}, rows[2] = {spans.top, spans.bottom};
    for (int column = 0; column < 2; ++column) {
        const __m256 x = _mm256_sub_ps(_mm256_add_ps(columns[column], half), start.x);
        for (int row = 0; row < 2; ++row) {
            const __m256 y = _mm256_sub_ps(_mm256_add_ps(rows[row], half), start.y);
            const __m256 edge = _mm256_sub_ps(_mm256_mul_ps(x, runY), _mm256_mul_ps(y, runX));
            outside[column][row] = _mm256_or_ps(
                outside[column][row], _mm256_cmp_ps(_mm256_xor_ps(edge, sign), certainly, _CMP_LT_OQ));
        }
    }
}

ZEL_AVX2 static ZEL_INLINE __m256 MissCentresAvx2(const CornersAvx2& a, const CornersAvx2& b,
                                                  const CornersAvx2& c, const FaceSpansAvx2& spans) {
    __m256 outside[2][2] = {{_mm256_setzero_ps(), _mm256_setzero_ps()},
                            {_mm256_setzero_ps(), _mm256_setzero_ps()}};
    AddOutsideAvx2(b, c, spans, outside);
    AddOutsideAvx2(c, a, spans, outside);
    AddOutsideAvx2(a, b, spans, outside);
    return _mm256_and_ps(_mm256_and_ps(outside[0][0], outside[0][1]),
                         _mm256_and_ps(outside[1][0], outside[1][1]));
}

// Gives the lanes whose face shows no pixel, and the places of the others. A place that is not a number
// leaves a face in.
ZEL_AVX2 static ZEL_INLINE uint32_t MissesAvx2(const CornersAvx2& a, const CornersAvx2& b,
                                               const CornersAvx2& c, const FaceView& view,
                                               Places<8>& places) {
    const FaceSpansAvx2 spans = SpansOfAvx2(a, b, c, view.viewport);
    const __m256 isKnown = _mm256_cmp_ps(spans.area, spans.area, _CMP_ORD_Q), isLarge = AreLargeAvx2(spans);
    const __m256 nearest = NearestDepthsAvx2(a, b, c, spans);
    const __m256 areHidden = _mm256_cmp_ps(nearest, _mm256_set1_ps(view.farthest), _CMP_GT_OQ);
    const __m256 misses = _mm256_or_ps(AreEmptyAvx2(spans), areHidden);
    const auto missing = static_cast<uint32_t>(_mm256_movemask_ps(_mm256_and_ps(misses, isKnown)));
    const auto large = static_cast<uint32_t>(_mm256_movemask_ps(isLarge));
    if (missing == 0xFF) return missing;
    StorePlacesAvx2(spans, nearest, places);
    if ((missing | large) == 0xFF) return missing;
    const __m256 missesCentres =
        _mm256_and_ps(_mm256_andnot_ps(isLarge, MissCentresAvx2(a, b, c, spans)), isKnown);
    return missing | static_cast<uint32_t>(_mm256_movemask_ps(missesCentres));
}

ZEL_AVX2 static void ScanAvx2(const Mesh& mesh, const MeshVertices& vertices, const FaceView& view,
                              const std::vector<uint32_t>& faces, size_t count,
                              std::vector<ScannedFace>& out) {
    const MeshTriangle* triangles = mesh.triangles.data();
    const ScreenCorner* corners = vertices.PlainCorners();
    size_t found = 0;
    out.resize(count);
    for (size_t i = 0; i < count; i += 8) {
        Places<8> places;
        const uint32_t* group = &faces[i];
        const uint32_t misses = MissesAvx2(CornersOfAvx2(corners, {triangles, group, 0}),
                                           CornersOfAvx2(corners, {triangles, group, 1}),
                                           CornersOfAvx2(corners, {triangles, group, 2}), view, places);
        found = AddFaces(~misses & LanesOf(i, count, 8), group, places, out.data(), found);
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
