// Eight pixels at a time, in bands of rows that share what belongs to their columns.
#include "render/fill_avx2.h"

#include <algorithm>

constexpr int32_t kBandRows = 8;

namespace {

// A triangle's numbers in every lane, made once so that no store to the picture makes them be read again.
struct TriangleAvx2 {
    __m256 startX[3], runY[3], depth[3];
    __m256 area;
};

// Some rows of a triangle, and what does not change along them.
struct RowBand {
    int32_t count = 0, left = 0, right = 0;  // the columns of all its rows
    std::array<RowSpan, kBandRows> spans;
    std::array<RowEdges, kBandRows> edges;
};

// The first products of the edge functions in eight columns: the same along a column.
struct ColumnsAvx2 {
    __m256 product[3];
    __m256 inside;  // lanes left of the area's right edge
};

}  // namespace

ZEL_AVX2 static TriangleAvx2 SpreadAvx2(const TriangleSetup& setup) {
    TriangleAvx2 t;
    for (size_t i = 0; i < 3; ++i) {
        t.startX[i] = _mm256_set1_ps(setup.startX[i]);
        t.runY[i] = _mm256_set1_ps(setup.runY[i]);
        t.depth[i] = _mm256_set1_ps(setup.depth[i]);
    }
    t.area = _mm256_set1_ps(setup.area);
    return t;
}

static ZEL_INLINE void SetUpBand(const TriangleSetup& setup, const FillArea& area, int32_t top,
                                 RowBand& band) {
    band.count = std::min(kBandRows, area.box.bottom - top);
    band.left = area.box.right;
    band.right = area.box.left;
    for (int32_t i = 0; i < band.count; ++i) {
        const auto row = static_cast<size_t>(i);
        band.spans[row] = SpanOfRow(area, top + i);
        band.edges[row] = EdgesOfRow(setup, top + i);
        if (band.spans[row].left >= band.spans[row].right) continue;
        band.left = std::min(band.left, band.spans[row].left);
        band.right = std::max(band.right, band.spans[row].right);
    }
}

ZEL_AVX2 static ZEL_INLINE ColumnsAvx2 ColumnsAtAvx2(const TriangleAvx2& t, int32_t x, int32_t right) {
    const __m256 centreX = _mm256_add_ps(_mm256_cvtepi32_ps(ColumnNumbersAvx2(x)), _mm256_set1_ps(0.5f));
    ColumnsAvx2 made;
    for (int i = 0; i < 3; ++i)
        made.product[i] = _mm256_mul_ps(_mm256_sub_ps(centreX, t.startX[i]), t.runY[i]);
    made.inside = LanesBeforeAvx2(x, right);
    return made;
}

// False when the triangle is not to be drawn.
template <typename Ink, typename Rest>
ZEL_AVX2 static ZEL_INLINE bool FillBandAvx2(const TriangleSetup& setup, const TriangleAvx2& t,
                                             const RowBand& band, const FillArea& area, Ink& ink,
                                             const Rest& rest) {
    const FillTarget to = area.target;  // a copy: no store to the picture changes it
    for (int32_t x = band.left; x < band.right; x += 8) {
        const ColumnsAvx2 columns = ColumnsAtAvx2(t, x, area.box.right);
        for (size_t row = 0; row < static_cast<size_t>(band.count); ++row) {
            const RowSpan& span = band.spans[row];
            if (x >= span.right || x + 8 <= span.left) continue;
            if (span.start + x + 8 > to.size) {
                _mm256_zeroupper();
                if (!rest.Fill(setup, band.edges[row], to, span, std::max(x, span.left))) return false;
                continue;
            }
            __m256 edges[3];
            for (int i = 0; i < 3; ++i)
                edges[i] = _mm256_sub_ps(columns.product[i], _mm256_set1_ps(band.edges[row].product[i]));
            if (!FillEightAvx2(edges, t.area, t.depth, columns.inside, to, RowOfEight{span.start + x}, ink))
                return false;
        }
    }
    return true;
}

template <typename Ink, typename Rest>
ZEL_AVX2 static ZEL_INLINE void FillRowsAvx2(const TriangleSetup& setup, const FillArea& area, Ink ink,
                                             const Rest& rest) {
    const TriangleAvx2 t = SpreadAvx2(setup);
    RowBand band;
    for (int32_t top = area.box.top; top < area.box.bottom; top += kBandRows) {
        SetUpBand(setup, area, top, band);
        if (!FillBandAvx2(setup, t, band, area, ink, rest)) return;
    }
}

ZEL_AVX2 void FillLargeFlatAvx2(const PlacedTriangle& triangle, const FillTarget& to, const FlatFill& fill) {
    TriangleSetup setup;
    if (!SetUpTriangle(triangle.corners, setup)) return;
    LateColor color{fill};
    FillRowsAvx2(setup, AreaOf(setup, triangle.box, to), FlatInkAvx2{color}, FlatRowRest{color});
}

ZEL_AVX2 static void FillTexturedAvx2(const PlacedTriangle& triangle, const FillTarget& to,
                                      const TexturedFill& fill) {
    if (Width(triangle.box) <= kSmallWidth) {
        FillSmallTexturedAvx2(triangle, to, fill);
        return;
    }
    TriangleSetup setup;
    if (!SetUpTriangle(triangle.corners, setup)) return;
    LateTexture texture{fill};
    FillRowsAvx2(setup, AreaOf(setup, triangle.box, to), TextureInkAvx2{triangle.corners, texture},
                 TexturedRowRest{texture});
}

const RowFills& RowFillsAvx2() {
    static constexpr RowFills kFills{FillFlatAvx2, FillFlatFacesAvx2, FillTexturedAvx2};
    return kFills;
}
