// Eight pixels at a time, for triangles of few columns: no column of a row is looked for, but the rows of
// each block of columns.
#include "render/fill_avx2.h"

#include <algorithm>

namespace {

// Every number in all lanes. It is made out of whole corners: scalars that are written one by one and read
// again as vectors would wait for their way through memory.
struct SmallTriangleAvx2 {
    __m256 startX[3], startY[3], runX[3], runY[3], depth[3];
    __m256 area, nearest;
};

}  // namespace

template <int lane>
ZEL_AVX2 static ZEL_INLINE __m256 LaneAvx2(__m128 corner) {
    return _mm256_broadcastss_ps(_mm_permute_ps(corner, lane * 0x55));
}

// The same operations as those of SetUpTriangle.
ZEL_AVX2 static ZEL_INLINE SmallTriangleAvx2 SetUpSmallAvx2(const PlacedTriangle& triangle) {
    const std::array<ScreenCorner, 3>& corners = triangle.corners;
    const __m128 a = _mm_loadu_ps(&corners[0].x), b = _mm_loadu_ps(&corners[1].x),
                 c = _mm_loadu_ps(&corners[2].x);
    const __m128 start[3] = {b, c, a}, end[3] = {c, a, b}, corner[3] = {a, b, c};
    SmallTriangleAvx2 t;
    for (int i = 0; i < 3; ++i) {
        const __m128 run = _mm_sub_ps(end[i], start[i]);
        t.startX[i] = LaneAvx2<0>(start[i]);
        t.startY[i] = LaneAvx2<1>(start[i]);
        t.runX[i] = LaneAvx2<0>(run);
        t.runY[i] = LaneAvx2<1>(run);
        t.depth[i] = LaneAvx2<2>(corner[i]);
    }
    const __m128 fromA = _mm_sub_ps(b, a);
    const __m128 products = _mm_mul_ps(_mm_sub_ps(c, a), _mm_permute_ps(fromA, _MM_SHUFFLE(3, 2, 0, 1)));
    t.area = _mm256_sub_ps(LaneAvx2<0>(products), LaneAvx2<1>(products));
    t.nearest = _mm256_set1_ps(triangle.nearest);
    return t;
}

// The first products of the edge functions.
ZEL_AVX2 static ZEL_INLINE void ColumnsAvx2(const SmallTriangleAvx2& t, __m256i numbers,
                                            __m256 (&columns)[3]) {
    const __m256 centreX = _mm256_add_ps(_mm256_cvtepi32_ps(numbers), _mm256_set1_ps(0.5f));
    for (int i = 0; i < 3; ++i) columns[i] = _mm256_mul_ps(_mm256_sub_ps(centreX, t.startX[i]), t.runY[i]);
}

ZEL_AVX2 static ZEL_INLINE void EdgesAvx2(const SmallTriangleAvx2& t, const __m256 (&columns)[3],
                                          __m256 centreY, __m256 (&edges)[3]) {
    for (int i = 0; i < 3; ++i) {
        edges[i] = _mm256_sub_ps(columns[i], _mm256_mul_ps(_mm256_sub_ps(centreY, t.startY[i]), t.runX[i]));
    }
}

// True where four pixels from the box's left edge on lie in the buffer and rows do not share them.
static bool HasFourInRows(const Rect& box, const FillTarget& to) {
    const int64_t last = static_cast<int64_t>(box.bottom - 1) * to.width + box.left;
    return to.width >= 4 && last + 4 <= to.size;
}

// Four columns at most, two rows at a time.
template <typename Ink>
ZEL_AVX2 static ZEL_INLINE void FillNarrowAvx2(const SmallTriangleAvx2& t, const Rect& box,
                                               const FillTarget& target, Ink ink) {
    const FillTarget to = target;  // a copy: no store to the picture changes it
    const __m256i numbers =
        _mm256_add_epi32(_mm256_set1_epi32(box.left), _mm256_setr_epi32(0, 1, 2, 3, 0, 1, 2, 3));
    const __m256i within = _mm256_cmpgt_epi32(_mm256_set1_epi32(box.right), numbers);
    const __m256i firstRow = _mm256_setr_epi32(-1, -1, -1, -1, 0, 0, 0, 0);
    const __m256 centres = _mm256_setr_ps(0.5f, 0.5f, 0.5f, 0.5f, 1.5f, 1.5f, 1.5f, 1.5f);
    __m256 columns[3], edges[3];
    ColumnsAvx2(t, numbers, columns);
    for (int32_t y = box.top; y < box.bottom; y += 2) {
        const bool isPair = y + 1 < box.bottom;
        const int64_t upper = static_cast<int64_t>(y) * to.width + box.left;
        const __m256i allowed = isPair ? within : _mm256_and_si256(within, firstRow);
        const TwoRowsOfFour place{upper, isPair ? upper + to.width : upper};
        if (AreHiddenAvx2(to, place, t.nearest, _mm256_castsi256_ps(allowed))) continue;
        EdgesAvx2(t, columns, _mm256_add_ps(_mm256_set1_ps(static_cast<float>(y)), centres), edges);
        if (!FillEightAvx2(edges, t.area, t.depth, _mm256_castsi256_ps(allowed), to, place, ink)) return;
    }
}

// Narrows the rows in which an edge lets the blocks be covered: its function's first product is greatest in
// the first or in the last column of a block.
ZEL_AVX2 static ZEL_INLINE void BoundRowsAvx2(const SmallTriangleAvx2& t, int edge, __m256 firstX,
                                              __m256& top, __m256& bottom) {
    const __m256 zero = _mm256_setzero_ps(), sign = _mm256_and_ps(t.area, _mm256_set1_ps(-0.0f));
    const __m256 runX = _mm256_xor_ps(t.runX[edge], sign), runY = _mm256_xor_ps(t.runY[edge], sign);
    const __m256 lastX = _mm256_add_ps(firstX, _mm256_set1_ps(7));
    const __m256 product = _mm256_max_ps(_mm256_mul_ps(_mm256_sub_ps(firstX, t.startX[edge]), runY),
                                         _mm256_mul_ps(_mm256_sub_ps(lastX, t.startX[edge]), runY));
    const __m256 crossing = _mm256_add_ps(t.startY[edge], _mm256_div_ps(product, runX));
    top = _mm256_blendv_ps(top, _mm256_max_ps(top, crossing), _mm256_cmp_ps(runX, zero, _CMP_LT_OQ));
    bottom = _mm256_blendv_ps(bottom, _mm256_min_ps(bottom, crossing), _mm256_cmp_ps(runX, zero, _CMP_GT_OQ));
}

ZEL_AVX2 static ZEL_INLINE void StoreRowsAvx2(BlockNumbers& to, __m256 numbers) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to.data()), _mm256_cvttps_epi32(numbers));
}

// The rows of the box's blocks that may hold a covered pixel: all that do, and hardly more.
ZEL_AVX2 static ZEL_INLINE BlockRows RowsOfBlocksAvx2(const SmallTriangleAvx2& t, const Rect& box) {
    const __m256 numbers = _mm256_setr_ps(0.5f, 8.5f, 16.5f, 24.5f, 32.5f, 40.5f, 48.5f, 56.5f);
    const __m256 firstX = _mm256_add_ps(_mm256_set1_ps(static_cast<float>(box.left)), numbers);
    const __m256 boxTop = _mm256_set1_ps(static_cast<float>(box.top));
    const __m256 boxBottom = _mm256_set1_ps(static_cast<float>(box.bottom));
    __m256 top = boxTop, bottom = boxBottom;
    for (int i = 0; i < 3; ++i) BoundRowsAvx2(t, i, firstX, top, bottom);
    top = _mm256_ceil_ps(_mm256_sub_ps(top, _mm256_set1_ps(0.5f + kBlockSlack)));
    bottom = _mm256_floor_ps(_mm256_add_ps(bottom, _mm256_set1_ps(0.5f + kBlockSlack)));
    BlockRows rows;
    StoreRowsAvx2(rows.top, _mm256_min_ps(_mm256_max_ps(top, boxTop), boxBottom));
    StoreRowsAvx2(rows.bottom, _mm256_max_ps(_mm256_min_ps(bottom, boxBottom), boxTop));
    return rows;
}

template <typename Ink, typename Rest>
ZEL_AVX2 static ZEL_INLINE void FillBlocksAvx2(const SmallTriangleAvx2& t, const Rect& box,
                                               const FillTarget& target, Ink ink, const Rest& rest) {
    const FillTarget to = target;  // a copy: no store to the picture changes it
    const BlockRows rows = Width(box) > kWholeWidth ? RowsOfBlocksAvx2(t, box) : AllRows(box);
    int32_t x = box.left;
    for (size_t block = 0; x < box.right; ++block, x += 8) {
        const __m256 allowed = LanesBeforeAvx2(x, box.right);
        __m256 columns[3], edges[3];
        ColumnsAvx2(t, ColumnNumbersAvx2(x), columns);
        for (int32_t y = rows.top[block]; y < rows.bottom[block]; ++y) {
            const int64_t start = static_cast<int64_t>(y) * to.width;
            if (start + x + 8 > to.size) {
                _mm256_zeroupper();
                rest.Fill(to, {x, box.right, start}, y);
                continue;
            }
            const RowOfEight place{start + x};
            if (AreHiddenAvx2(to, place, t.nearest, allowed)) continue;
            EdgesAvx2(t, columns, _mm256_set1_ps(static_cast<float>(y) + 0.5f), edges);
            if (!FillEightAvx2(edges, t.area, t.depth, allowed, to, place, ink)) return;
        }
    }
}

template <typename Ink, typename Rest>
ZEL_AVX2 static ZEL_INLINE void FillSmallAvx2(const PlacedTriangle& triangle, const FillTarget& to,
                                              const Ink& ink, const Rest& rest) {
    const SmallTriangleAvx2 t = SetUpSmallAvx2(triangle);
    const Rect& box = triangle.box;
    if (Width(box) <= 4 && HasFourInRows(box, to)) {
        FillNarrowAvx2(t, box, to, ink);
    } else {
        FillBlocksAvx2(t, box, to, ink, rest);
    }
}

ZEL_AVX2 static ZEL_INLINE void FillAnyFlatAvx2(const PlacedTriangle& triangle, const FillTarget& to,
                                                const FlatFill& fill) {
    if (Width(triangle.box) > kSmallWidth) {
        FillLargeFlatAvx2(triangle, to, fill);
        return;
    }
    LateColor color{fill};
    FillSmallAvx2(triangle, to, FlatInkAvx2{color}, FlatRest{triangle, color});
}

ZEL_AVX2 void FillFlatAvx2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill) {
    FillAnyFlatAvx2(triangle, to, fill);
}

ZEL_AVX2 void FillFlatFacesAvx2(const MeshFaces& mesh, const FillTarget& to, FlatFill fill) {
    fill.number = 0;
    for (const ScannedFace& face : mesh.faces) {
        const std::array<ScreenCorner, 3> corners = CornersOf(mesh, face.triangle);
        FillAnyFlatAvx2({corners, face.box, face.nearest}, to, fill);
        ++fill.number;
    }
}

ZEL_AVX2 void FillSmallTexturedAvx2(const PlacedTriangle& triangle, const FillTarget& to,
                                    const TexturedFill& fill) {
    LateTexture texture{fill};
    FillSmallAvx2(triangle, to, TextureInkAvx2{triangle.corners, texture}, TexturedRest{triangle, texture});
}
