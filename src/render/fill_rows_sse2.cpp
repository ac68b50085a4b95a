// Four pixels at a time, row by row.
#include "render/fill_sse2.h"

namespace {

// A triangle's numbers in every lane, made once so that no store to the picture makes them be read again.
struct TriangleSse2 {
    __m128 startX[3], runY[3], depth[3];
    __m128 area;
};

}  // namespace

static TriangleSse2 SpreadSse2(const TriangleSetup& setup) {
    TriangleSse2 t;
    for (size_t i = 0; i < 3; ++i) {
        t.startX[i] = _mm_set1_ps(setup.startX[i]);
        t.runY[i] = _mm_set1_ps(setup.runY[i]);
        t.depth[i] = _mm_set1_ps(setup.depth[i]);
    }
    t.area = _mm_set1_ps(setup.area);
    return t;
}

// Gives the first column that is left over at the end of the buffer; the row's right end when there is none;
// -1 when the triangle is not to be drawn.
template <typename Ink>
static ZEL_INLINE int32_t FillRowSse2(const TriangleSse2& t, const RowEdges& row, const FillTarget& to,
                                      const RowSpan& span, Ink& ink) {
    int32_t x = span.left;
    for (; x < span.right && span.start + x + 4 <= to.size; x += 4) {
        const __m128 centreX = _mm_add_ps(_mm_cvtepi32_ps(ColumnNumbersSse2(x)), _mm_set1_ps(0.5f));
        __m128 edges[3];
        for (int i = 0; i < 3; ++i) {
            const __m128 first = _mm_mul_ps(_mm_sub_ps(centreX, t.startX[i]), t.runY[i]);
            edges[i] = _mm_sub_ps(first, _mm_set1_ps(row.product[i]));
        }
        const __m128 allowed = LanesBeforeSse2(x, span.right);
        if (!FillFourSse2(edges, t.area, t.depth, allowed, to, span.start + x, ink)) return -1;
    }
    return x;
}

template <typename Ink, typename Rest>
static ZEL_INLINE void FillRowsSse2(const PlacedTriangle& triangle, const FillTarget& target, Ink ink,
                                    const Rest& rest) {
    TriangleSetup setup;
    if (!SetUpTriangle(triangle.corners, setup)) return;
    const FillTarget to = target;  // a copy: no store to the picture changes it
    const FillArea area = AreaOf(setup, triangle.box, to);
    const TriangleSse2 t = SpreadSse2(setup);
    for (int32_t y = area.box.top; y < area.box.bottom; ++y) {
        const RowSpan span = SpanOfRow(area, y);
        const RowEdges row = EdgesOfRow(setup, y);
        const int32_t left = FillRowSse2(t, row, to, span, ink);
        if (left < 0 || !rest.Fill(setup, row, to, span, left)) return;
    }
}

void FillLargeFlatSse2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill) {
    LateColor color{fill};
    FillRowsSse2(triangle, to, FlatInkSse2{color}, FlatRowRest{color});
}

static void FillTexturedSse2(const PlacedTriangle& triangle, const FillTarget& to, const TexturedFill& fill) {
    if (Width(triangle.box) <= kSmallWidthSse2) {
        FillSmallTexturedSse2(triangle, to, fill);
        return;
    }
    LateTexture texture{fill};
    FillRowsSse2(triangle, to, TextureInkSse2{triangle.corners, texture}, TexturedRowRest{texture});
}

const RowFills& RowFillsSse2() {
    static constexpr RowFills kFills{FillFlatSse2, FillFlatFacesSse2, FillTexturedSse2};
    return kFills;
}
