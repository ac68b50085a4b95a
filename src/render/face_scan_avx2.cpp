// Eight faces at a time, by the operations of the scalar scan.
#include "render/face_scan_lanes.h"

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
    const __m256 lost = _mm256_add_ps(_mm256_mul_ps(least, rounding), _mm256_set1_ps(kVanishing));
    return _mm256_sub_ps(least, lost);
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

ZEL_AVX2 void ScanAvx2(const FacesToScan& scan, std::vector<ScannedFace>& out) {
    const MeshTriangle* triangles = scan.mesh.triangles.data();
    const ScreenCorner* corners = scan.vertices.PlainCorners();
    size_t found = 0;
    out.resize(scan.count);
    for (size_t i = 0; i < scan.count; i += 8) {
        Places<8> places;
        const uint32_t* group = &scan.faces[i];
        const uint32_t misses = MissesAvx2(CornersOfAvx2(corners, {triangles, group, 0}),
                                           CornersOfAvx2(corners, {triangles, group, 1}),
                                           CornersOfAvx2(corners, {triangles, group, 2}), scan.view, places);
        found = AddFaces(~misses & LanesOf(i, scan.count, 8), group, places, out.data(), found);
    }
    out.resize(found);
}
