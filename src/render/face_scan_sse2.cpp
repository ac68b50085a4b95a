// Four faces at a time, by the operations of the scalar scan.
#include "render/face_scan_lanes.h"

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
    const __m128 lost = _mm_add_ps(_mm_mul_ps(least, rounding), _mm_set1_ps(kVanishing));
    return _mm_sub_ps(least, lost);
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

void ScanSse2(const FacesToScan& scan, std::vector<ScannedFace>& out) {
    const MeshTriangle* triangles = scan.mesh.triangles.data();
    const ScreenCorner* corners = scan.vertices.PlainCorners();
    size_t found = 0;
    out.resize(scan.count);
    for (size_t i = 0; i < scan.count; i += 4) {
        Places<4> places;
        const uint32_t* group = &scan.faces[i];
        const uint32_t misses = MissesSse2(CornersOfSse2(corners, {triangles, group, 0}),
                                           CornersOfSse2(corners, {triangles, group, 1}),
                                           CornersOfSse2(corners, {triangles, group, 2}), scan.view, places);
        found = AddFaces(~misses & LanesOf(i, scan.count, 4), group, places, out.data(), found);
    }
    out.resize(found);
}
