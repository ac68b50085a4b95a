// What the fills of every level share: rows, and single pixels, which are their definition.
#pragma once

#include "render/fill_rows.h"

// Interpolated 1 / w below which a pixel is skipped.
constexpr float kSmallestQ = 1e-6f;

// The part of a row that the triangle may cover.
struct RowSpan {
    int32_t left, right;  // right exclusive
    int64_t start;        // of the row's first pixel in the buffer
};

// The second products of the edge functions: the same along a row.
struct RowEdges {
    float product[3];
};

// A flat triangle's colour, from when it is first needed.
struct LateColor {
    const FlatFill& fill;
    Pixel value{};
    bool isMade = false;

    // False when the triangle is not to be drawn.
    bool IsKnown() { return isMade || (isMade = fill.colorOf(fill.source, fill.number, value)); }
};

// A textured triangle's texture, points and light, from when they are first needed.
struct LateTexture {
    const TexturedFill& fill;
    TexturedFace value{};
    bool isMade = false;

    // False when the triangle is not to be drawn.
    bool IsKnown() { return isMade || (isMade = fill.faceOf(fill.source, fill.number, value)); }
};

ZEL_INLINE RowSpan SpanOfRow(const FillArea& area, int32_t y) {
    ColumnRange columns{area.box.left, area.box.right};
    if (area.isBounded) columns = CoveredColumns(area.bounds, y, columns);
    return {columns.left, columns.right, static_cast<int64_t>(y) * area.target.width};
}

ZEL_INLINE RowEdges EdgesOfRow(const TriangleSetup& t, int32_t y) {
    const float centreY = static_cast<float>(y) + 0.5f;
    RowEdges edges;
    for (int i = 0; i < 3; ++i) edges.product[i] = (centreY - t.startY[i]) * t.runX[i];
    return edges;
}

// The pixels of a row from `from` on. False when the triangle is not to be drawn.
bool FillFlatPixels(const TriangleSetup& t, const RowEdges& edges, const FillTarget& to, const RowSpan& span,
                    int32_t from, LateColor& color);
bool FillTexturedPixels(const TriangleSetup& t, const RowEdges& edges, const FillTarget& to,
                        const RowSpan& span, int32_t from, LateTexture& texture);

// Boxes up to this width are looked at whole where rows are filled: finding their covered columns costs more
// than it saves.
constexpr int32_t kNarrow = 32;

inline FillArea AreaOf(const TriangleSetup& setup, const Rect& box, const FillTarget& target) {
    FillArea area{.box = box, .isBounded = box.right - box.left > kNarrow, .target = target};
    if (area.isBounded) area.bounds = BoundColumns(setup);
    return area;
}

ZEL_INLINE std::array<ScreenCorner, 3> CornersOf(const MeshFaces& mesh, uint32_t triangle) {
    const MeshTriangle& t = mesh.triangles[triangle];
    return {mesh.corners[t[0]], mesh.corners[t[1]], mesh.corners[t[2]]};
}

// One face after the other.
template <typename FillOne, typename Fill>
ZEL_INLINE void FillEach(const MeshFaces& mesh, const FillTarget& to, Fill fill, FillOne fillOne) {
    fill.number = 0;
    for (const ScannedFace& face : mesh.faces) {
        const std::array<ScreenCorner, 3> corners = CornersOf(mesh, face.triangle);
        fillOne({corners, face.box, face.nearest}, to, fill);
        ++fill.number;
    }
}

// Small triangles are cut into blocks of columns, as wide as a vector: the rows of each, the last one
// exclusive.
constexpr int32_t kMostBlocks = 8;
using BlockNumbers = std::array<int32_t, kMostBlocks>;
struct BlockRows {
    BlockNumbers top, bottom;
};

inline BlockRows AllRows(const Rect& box) {
    BlockRows rows;
    rows.top.fill(box.top);
    rows.bottom.fill(box.bottom);
    return rows;
}

// Rows up to this width are filled whole in their box: fewer rows would not pay for looking for them.
constexpr int32_t kWholeWidth = 8;

// More than how far rounding can move the crossing of an edge with a block, rows. The crossing is as far from
// the edge's start as the triangle is high at most, 2e5 pixels, and four operations round it by 2^-24 of that
// each: by 0.05 in all. The edge function itself is rounded by as much.
constexpr float kBlockSlack = 0.25f;

// The rows of small triangles at the end of the buffer, one pixel at a time.
struct FlatRest {
    const PlacedTriangle& triangle;
    LateColor& color;

    void Fill(const FillTarget& to, const RowSpan& span, int32_t y) const {
        TriangleSetup setup;
        if (!SetUpTriangle(triangle.corners, setup)) return;
        FillFlatPixels(setup, EdgesOfRow(setup, y), to, span, span.left, color);
    }
};

struct TexturedRest {
    const PlacedTriangle& triangle;
    LateTexture& texture;

    void Fill(const FillTarget& to, const RowSpan& span, int32_t y) const {
        TriangleSetup setup;
        if (!SetUpTriangle(triangle.corners, setup)) return;
        FillTexturedPixels(setup, EdgesOfRow(setup, y), to, span, span.left, texture);
    }
};

// What is left of a row of a large triangle at the end of the buffer. False when the triangle is not to be
// drawn.
struct FlatRowRest {
    LateColor& color;
    bool Fill(const TriangleSetup& setup, const RowEdges& edges, const FillTarget& to, const RowSpan& span,
              int32_t from) const {
        return FillFlatPixels(setup, edges, to, span, from, color);
    }
};

struct TexturedRowRest {
    LateTexture& texture;
    bool Fill(const TriangleSetup& setup, const RowEdges& edges, const FillTarget& to, const RowSpan& span,
              int32_t from) const {
        return FillTexturedPixels(setup, edges, to, span, from, texture);
    }
};

const RowFills& RowFillsSse2();
const RowFills& RowFillsAvx2();
