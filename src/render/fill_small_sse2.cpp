// Four pixels at a time, for triangles of few columns: no column of a row is looked for, but the rows of
// each block of columns.
#include "render/fill_sse2.h"

#include <algorithm>

namespace {

// Every number in all lanes. It is made out of whole corners: scalars that are written one by one and read
// again as vectors would wait for their way through memory.
struct SmallTriangleSse2 {
    __m128 startX[3], startY[3], runX[3], runY[3], depth[3];
    __m128 area, nearest;
};

}  // namespace

template <int lane>
static ZEL_INLINE __m128 LaneSse2(__m128 corner) {
    return _mm_shuffle_ps(corner, corner, lane * 0x55);
}

// The same operations as those of SetUpTriangle.
static ZEL_INLINE SmallTriangleSse2 SetUpSmallSse2(const PlacedTriangle& triangle) {
    const std::array<ScreenCorner, 3>& corners = triangle.corners;
    const __m128 a = _mm_loadu_ps(&corners[0].x), b = _mm_loadu_ps(&corners[1].x),
                 c = _mm_loadu_ps(&corners[2].x);
    const __m128 start[3] = {b, c, a}, end[3] = {c, a, b}, corner[3] = {a, b, c};
    SmallTriangleSse2 t;
    for (int i = 0; i < 3; ++i) {
        const __m128 run = _mm_sub_ps(end[i], start[i]);
        t.startX[i] = LaneSse2<0>(start[i]);
        t.startY[i] = LaneSse2<1>(start[i]);
        t.runX[i] = LaneSse2<0>(run);
        t.runY[i] = LaneSse2<1>(run);
        t.depth[i] = LaneSse2<2>(corner[i]);
    }
    const __m128 fromA = _mm_sub_ps(b, a);
    const __m128 products =
        _mm_mul_ps(_mm_sub_ps(c, a), _mm_shuffle_ps(fromA, fromA, _MM_SHUFFLE(3, 2, 0, 1)));
    t.area = _mm_sub_ps(LaneSse2<0>(products), LaneSse2<1>(products));
    t.nearest = _mm_set1_ps(triangle.nearest);
    return t;
}

// The first products of the edge functions.
static ZEL_INLINE void ColumnsSse2(const SmallTriangleSse2& t, __m128i numbers, __m128 (&columns)[3]) {
    const __m128 centreX = _mm_add_ps(_mm_cvtepi32_ps(numbers), _mm_set1_ps(0.5f));
    for (int i = 0; i < 3; ++i) columns[i] = _mm_mul_ps(_mm_sub_ps(centreX, t.startX[i]), t.runY[i]);
}

static ZEL_INLINE void EdgesSse2(const SmallTriangleSse2& t, const __m128 (&columns)[3], __m128 centreY,
                                 __m128 (&edges)[3]) {
    for (int i = 0; i < 3; ++i) {
        edges[i] = _mm_sub_ps(columns[i], _mm_mul_ps(_mm_sub_ps(centreY, t.startY[i]), t.runX[i]));
    }
}

// Narrows the rows in which an edge lets the blocks be covered: its function's first product is greatest in
// the first or in the last column of a block.
static ZEL_INLINE void BoundRowsSse2(const SmallTriangleSse2& t, int edge, __m128 firstX, __m128& top,
                                     __m128& bottom) {
    const __m128 zero = _mm_setzero_ps(), sign = _mm_and_ps(t.area, _mm_set1_ps(-0.0f));
    const __m128 runX = _mm_xor_ps(t.runX[edge], sign), runY = _mm_xor_ps(t.runY[edge], sign);
    const __m128 lastX = _mm_add_ps(firstX, _mm_set1_ps(3));
    const __m128 product = _mm_max_ps(_mm_mul_ps(_mm_sub_ps(firstX, t.startX[edge]), runY),
                                      _mm_mul_ps(_mm_sub_ps(lastX, t.startX[edge]), runY));
    const __m128 crossing = _mm_add_ps(t.startY[edge], _mm_div_ps(product, runX));
    top = SelectSse2(_mm_cmplt_ps(runX, zero), _mm_max_ps(top, crossing), top);
    bottom = SelectSse2(_mm_cmpgt_ps(runX, zero), _mm_min_ps(bottom, crossing), bottom);
}

// Rounds numbers from 0 on, within the range of integers.
static ZEL_INLINE __m128 FloorOfPositiveSse2(__m128 value) {
    return _mm_cvtepi32_ps(_mm_cvttps_epi32(value));
}
static ZEL_INLINE __m128 CeilOfPositiveSse2(__m128 value) {
    const __m128 down = FloorOfPositiveSse2(value);
    return _mm_add_ps(down, _mm_and_ps(_mm_cmplt_ps(down, value), _mm_set1_ps(1)));
}

// The rows of four blocks that may hold a covered pixel: all that do, and hardly more.
static ZEL_INLINE void RowsOfFourBlocksSse2(const SmallTriangleSse2& t, const Rect& box, size_t first,
                                            BlockRows& rows) {
    const auto firstColumn = static_cast<float>(box.left + 4 * static_cast<int32_t>(first));
    const __m128 firstX = _mm_add_ps(_mm_set1_ps(firstColumn), _mm_setr_ps(0.5f, 4.5f, 8.5f, 12.5f));
    const __m128 boxTop = _mm_set1_ps(static_cast<float>(box.top));
    const __m128 boxBottom = _mm_set1_ps(static_cast<float>(box.bottom));
    __m128 top = boxTop, bottom = boxBottom;
    for (int i = 0; i < 3; ++i) BoundRowsSse2(t, i, firstX, top, bottom);
    const __m128 slack = _mm_set1_ps(0.5f + kBlockSlack);
    top = CeilOfPositiveSse2(LimitSse2(_mm_sub_ps(top, slack), boxTop, boxBottom));
    bottom = FloorOfPositiveSse2(LimitSse2(_mm_add_ps(bottom, slack), boxTop, boxBottom));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(&rows.top[first]), _mm_cvttps_epi32(top));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(&rows.bottom[first]), _mm_cvttps_epi32(bottom));
}

static ZEL_INLINE BlockRows RowsOfBlocksSse2(const SmallTriangleSse2& t, const Rect& box) {
    BlockRows rows;
    RowsOfFourBlocksSse2(t, box, 0, rows);
    if (Width(box) > 16) RowsOfFourBlocksSse2(t, box, 4, rows);
    return rows;
}

template <typename Ink, typename Rest>
static ZEL_INLINE void FillBlocksSse2(const SmallTriangleSse2& t, const Rect& box, const FillTarget& target,
                                      Ink ink, const Rest& rest) {
    const FillTarget to = target;  // a copy: no store to the picture changes it
    const BlockRows rows = Width(box) > kWholeWidth ? RowsOfBlocksSse2(t, box) : AllRows(box);
    int32_t x = box.left;
    for (size_t block = 0; x < box.right; ++block, x += 4) {
        const __m128 allowed = LanesBeforeSse2(x, box.right);
        __m128 columns[3], edges[3];
        ColumnsSse2(t, ColumnNumbersSse2(x), columns);
        for (int32_t y = rows.top[block]; y < rows.bottom[block]; ++y) {
            const int64_t start = static_cast<int64_t>(y) * to.width;
            if (start + x + 4 > to.size) {
                rest.Fill(to, {x, box.right, start}, y);
                continue;
            }
            if (AreHiddenSse2(to, start + x, t.nearest, allowed)) continue;
            EdgesSse2(t, columns, _mm_set1_ps(static_cast<float>(y) + 0.5f), edges);
            if (!FillFourSse2(edges, t.area, t.depth, allowed, to, start + x, ink)) return;
        }
    }
}

template <typename Ink, typename Rest>
static ZEL_INLINE void FillSmallSse2(const PlacedTriangle& triangle, const FillTarget& to, const Ink& ink,
                                     const Rest& rest) {
    FillBlocksSse2(SetUpSmallSse2(triangle), triangle.box, to, ink, rest);
}

static ZEL_INLINE void FillAnyFlatSse2(const PlacedTriangle& triangle, const FillTarget& to,
                                       const FlatFill& fill) {
    if (Width(triangle.box) > kSmallWidthSse2) {
        FillLargeFlatSse2(triangle, to, fill);
        return;
    }
    LateColor color{fill};
    FillSmallSse2(triangle, to, FlatInkSse2{color}, FlatRest{triangle, color});
}

void FillFlatSse2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill) {
    FillAnyFlatSse2(triangle, to, fill);
}

void FillFlatFacesSse2(const MeshFaces& mesh, const FillTarget& to, FlatFill fill) {
    fill.number = 0;
    for (const ScannedFace& face : mesh.faces) {
        const std::array<ScreenCorner, 3> corners = CornersOf(mesh, face.triangle);
        FillAnyFlatSse2({corners, face.box, face.nearest}, to, fill);
        ++fill.number;
    }
}

void FillSmallTexturedSse2(const PlacedTriangle& triangle, const FillTarget& to, const TexturedFill& fill) {
    LateTexture texture{fill};
    FillSmallSse2(triangle, to, TextureInkSse2{triangle.corners, texture}, TexturedRest{triangle, texture});
}
