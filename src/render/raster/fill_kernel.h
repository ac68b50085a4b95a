// A triangle's pixels, as many at a time as there are lanes.
//
// In go the faces that the scan has left, with a box and a nearest depth each; out come pixels, depths and
// owners. Everything that decides about a pixel is computed from its centre in one literal form and never
// stepped along a row, so that every width gives the same bits. The first product of an edge function belongs
// to a column and the second one to a row: each is made once for all pixels that share it.
//
// Small triangles are cut into blocks of columns; of each only the rows that the edges leave are looked at.
// Large ones go by bands of rows, each with the columns that the edges leave. Blocks lie inside the buffer:
// one that would reach beyond its right or lower side is moved back, and the lanes before its place are not
// allowed.
#pragma once

#include "render/raster/ink_kernel.h"

namespace {

// Every number in all lanes. Edge i lies opposite corner i, and its function divided by the area is the
// weight of that corner.
struct TriangleOfLanes {
    Floats startX[3], startY[3];  // where edge i begins, pixels
    Floats runX[3], runY[3];      // its end minus its beginning
    Floats depth[3];              // by corner
    Floats area;                  // twice the signed area, square pixels; never 0
    Divisor divisor;              // the area
    Floats nearest;               // no pixel lies before this
};

ZEL_INLINE TriangleOfLanes SetUp(const ScreenCorner& a, const ScreenCorner& b, const ScreenCorner& c,
                                 float nearest, bool isOrdinary) {
    const ScreenCorner* start[3] = {&b, &c, &a};
    const ScreenCorner* corner[3] = {&a, &b, &c};
    TriangleOfLanes t;
    for (int i = 0; i < 3; ++i) {
        t.startX[i] = Splat(start[i]->x);
        t.startY[i] = Splat(start[i]->y);
        t.depth[i] = Splat(corner[i]->depth);
    }
    for (int i = 0; i < 3; ++i) {
        const int end = i == 2 ? 0 : i + 1;
        t.runX[i] = t.startX[end] - t.startX[i];
        t.runY[i] = t.startY[end] - t.startY[i];
    }
    // (c - a) x (b - a): the runs are those to a with the other sign, which changes no rounding.
    t.area = t.runY[1] * t.runX[2] - t.runX[1] * t.runY[2];
    t.divisor = PrepareDivisor(t.area, isOrdinary);
    t.nearest = Splat(nearest);
    return t;
}

// One product of each edge function: of columns, or of rows.
struct Products {
    Floats of[3];
};

ZEL_INLINE Products ColumnProducts(const TriangleOfLanes& t, Floats centreX) {
    return {{(centreX - t.startX[0]) * t.runY[0], (centreX - t.startX[1]) * t.runY[1],
             (centreX - t.startX[2]) * t.runY[2]}};
}

ZEL_INLINE Products RowProducts(const TriangleOfLanes& t, Floats centreY) {
    return {{(centreY - t.startY[0]) * t.runX[0], (centreY - t.startY[1]) * t.runX[1],
             (centreY - t.startY[2]) * t.runX[2]}};
}

ZEL_INLINE Floats Centres(Ints numbers) { return Converted(numbers) + Splat(0.5f); }

ZEL_INLINE Weights WeightsAt(const TriangleOfLanes& t, const Products& columns, const Products& rows) {
    Floats edges[3] = {columns.of[0] - rows.of[0], columns.of[1] - rows.of[1], columns.of[2] - rows.of[2]};
    Divide(edges, t.divisor);
    return {edges[0], edges[1], edges[2]};
}

// The lanes that the triangle covers at a depth from 0 on.
ZEL_INLINE Mask AreInside(const Weights& w, Floats depth) {
    const Floats zero = Splat(0.0f);
    return (w.w0 >= zero) & (w.w1 >= zero) & (w.w2 >= zero) & (depth >= zero);
}

// Of the lanes at the depth that was drawn, those in which an object was that comes after this one.
template <int rows>
ZEL_INLINE Mask WonTies(const FillTarget& to, int64_t at, Mask ties) {
    if (to.owners == nullptr || !IsAny(ties)) return NoLanes();
    return ties & (Splat(to.owner) < LoadBlock<rows>(static_cast<const void*>(to.owners + at), to.width));
}

// One block of pixels from `at` on, by the edge functions there: which of them the triangle covers before
// what was drawn, and what they show. False when the triangle is not to be drawn.
template <int rows, typename Ink>
ZEL_INLINE bool FillBlock(const TriangleOfLanes& t, const Products& columns, const Products& rowsOf,
                          Mask allowed, Floats drawnDepth, const FillTarget& to, int64_t at, Ink& ink) {
    const Weights w = WeightsAt(t, columns, rowsOf);
    const Floats depth = Weighted(w, t.depth);
    const Mask isInside = AreInside(w, depth) & allowed;
    Mask seen = isInside & (depth < drawnDepth);
    if (to.owners != nullptr) seen = seen | WonTies<rows>(to, at, isInside & (depth == drawnDepth));
    if (!IsAny(seen)) return true;
    Ints colors;
    if (!ink.ColorsOf(w, seen, colors)) return false;
    StoreBlock<rows>(static_cast<void*>(to.pixels + at), to.width, seen, colors);
    StoreBlock<rows>(to.depth + at, to.width, seen, depth, drawnDepth);
    if (to.owners != nullptr)
        StoreBlock<rows>(static_cast<void*>(to.owners + at), to.width, seen, Splat(to.owner));
    return true;
}

// ---- Small triangles: blocks of columns.

// Narrow triangles take blocks of four columns, others wider ones.
constexpr int kNarrowColumns = kLanes < 4 ? kLanes : 4, kNarrowRows = kLanes / kNarrowColumns;
constexpr int kBlockRows = kLanes == 16 ? 2 : 1, kBlockColumns = kLanes / kBlockRows;
constexpr int32_t kMostBlocks = 8, kSmallWidth = kMostBlocks * kBlockColumns;

// Boxes up to this width are filled whole: fewer rows would not pay for looking for them.
constexpr int32_t kWholeWidth = 8;

// The rows of the blocks, the last one exclusive.
struct BlockRows {
    int32_t top[kMostBlocks < kLanes ? kLanes : kMostBlocks];
    int32_t bottom[kMostBlocks < kLanes ? kLanes : kMostBlocks];
};

// More than how far rounding can move the crossing of an edge with a block or a row, pixels. The crossing is
// as far from the edge's start as the triangle is wide or high at most, 2e5 pixels, and five operations round
// it by 2^-24 of that each: by 0.06 in all. The edge function itself is rounded by as much. What crosses
// farther off lies outside the box, and rounding does not bring it in.
constexpr float kCrossingSlack = 0.25f;

// Narrows the rows in which an edge lets the blocks be covered: its function's first product is greatest in
// the first or in the last column of a block.
ZEL_INLINE void NarrowRows(const TriangleOfLanes& t, int edge, Floats firstX, Floats& top, Floats& bottom) {
    const Floats zero = Splat(0.0f);
    const Floats runX = Signed(t.runX[edge], t.area), runY = Signed(t.runY[edge], t.area);
    const Floats lastX = firstX + Number(kBlockColumns - 1);
    const Floats product = Most((firstX - t.startX[edge]) * runY, (lastX - t.startX[edge]) * runY);
    const Floats crossing = t.startY[edge] + product / runX;
    top = Select(runX < zero, Most(top, crossing), top);
    bottom = Select(runX > zero, Least(bottom, crossing), bottom);
}

// The rows of the box's blocks that may hold a covered pixel: all that do, and hardly more.
ZEL_INLINE void FindBlockRows(const TriangleOfLanes& t, const Rect& box, BlockRows& found) {
    const Floats boxTop = Number(box.top), boxBottom = Number(box.bottom);
    const Floats slack = Splat(0.5f + kCrossingSlack);
    for (int32_t block = 0; block * kBlockColumns < box.right - box.left; block += kLanes) {
        const Ints numbers = (Splat(block) + LaneNumbers()) * Splat(kBlockColumns) + Splat(box.left);
        Floats top = boxTop, bottom = boxBottom;
        for (int i = 0; i < 3; ++i) NarrowRows(t, i, Centres(numbers), top, bottom);
        top = Ceil(Least(Most(top - slack, boxTop), boxBottom));
        bottom = Floor(Least(Most(bottom + slack, boxTop), boxBottom));
        Store(found.top + block, Truncated(top));
        Store(found.bottom + block, Truncated(bottom));
    }
}

// The columns of one block from `x` on. False when the triangle is not to be drawn.
template <int rows, typename Ink>
ZEL_INLINE bool FillColumns(const TriangleOfLanes& t, int32_t x, int32_t right, int32_t top, int32_t bottom,
                            const FillTarget& to, Ink& ink) {
    constexpr int32_t kColumns = kLanes / rows;
    const int32_t left = x + kColumns <= to.width ? x : to.width - kColumns;
    const Ints numbers = ColumnsFrom<rows>(left);
    const Mask inColumns = Between(numbers, x, right);
    const Products columns = ColumnProducts(t, Centres(numbers));
    for (int32_t y = top; y < bottom; y += rows) {
        int32_t first = y;
        Mask allowed = inColumns;
        if (rows > 1 && y + rows > bottom) {
            first = y + rows <= to.height ? y : to.height - rows;
            allowed = allowed & Between(RowsFrom<rows>(first), y, bottom);
        }
        const int64_t at = static_cast<int64_t>(first) * to.width + left;
        const Floats drawnDepth = LoadBlock<rows>(to.depth + at, to.width);
        if (!IsAny(Without(allowed, drawnDepth < t.nearest))) continue;
        const Products rowsOf = RowProducts(t, Centres(RowsFrom<rows>(first)));
        if (!FillBlock<rows>(t, columns, rowsOf, allowed, drawnDepth, to, at, ink)) return false;
    }
    return true;
}

template <typename Ink>
ZEL_INLINE void FillSmall(const TriangleOfLanes& t, const Rect& box, const FillTarget& to, Ink& ink) {
    const int32_t width = box.right - box.left;
    if (width <= kNarrowColumns) {
        FillColumns<kNarrowRows>(t, box.left, box.right, box.top, box.bottom, to, ink);
        return;
    }
    BlockRows rows;
    if (width > kWholeWidth) FindBlockRows(t, box, rows);
    for (int32_t block = 0, x = box.left; x < box.right; ++block, x += kBlockColumns) {
        const int32_t top = width > kWholeWidth ? rows.top[block] : box.top;
        const int32_t bottom = width > kWholeWidth ? rows.bottom[block] : box.bottom;
        if (!FillColumns<kBlockRows>(t, x, box.right, top, bottom, to, ink)) return;
    }
}

// ---- Large triangles: bands of rows.

// What an edge lets be covered in the rows whose centres are given.
ZEL_INLINE void NarrowColumns(const TriangleOfLanes& t, int edge, Floats centreY, Floats& left,
                              Floats& right) {
    const Floats zero = Splat(0.0f), direction = Signed(t.runY[edge], t.area);
    const Floats crossing =
        t.startX[edge] + (centreY - t.startY[edge]) * t.runX[edge] / t.runY[edge] - Splat(0.5f);
    left = Select(direction > zero, Most(left, crossing - Splat(kCrossingSlack)), left);
    right = Select(direction < zero, Least(right, crossing + Splat(kCrossingSlack + 1)), right);
}

// A vector of rows from `firstRow` on: see coveredColumns.
ZEL_INLINE void FindColumns(const TriangleOfLanes& t, const Rect& box, int32_t firstRow, int32_t* lefts,
                            int32_t* rights) {
    const Floats boxLeft = Number(box.left), boxRight = Number(box.right);
    const Floats centreY = Centres(Splat(firstRow) + LaneNumbers());
    Floats left = boxLeft, right = boxRight;
    for (int i = 0; i < 3; ++i) NarrowColumns(t, i, centreY, left, right);
    Store(lefts, Truncated(Floor(Least(left, boxRight))));
    Store(rights, Truncated(Ceil(Most(right, boxLeft))));
}

void CoveredColumns(const ScreenCorner (&corners)[3], const Rect& box, int32_t firstRow, int32_t* left,
                    int32_t* right) {
    FindColumns(SetUp(corners[0], corners[1], corners[2], 0, false), box, firstRow, left, right);
    LeaveVectors();
}

constexpr int32_t kBandRows = kLanes == 16 ? 16 : 8;

// Some rows of a triangle, and what does not change along them.
struct RowBand {
    int32_t left[kBandRows], right[kBandRows];
    float products[3][kBandRows];
    int32_t first, end;  // the columns of all its rows
};

ZEL_INLINE void SetUpBand(const TriangleOfLanes& t, const Rect& box, int32_t top, int32_t count,
                          RowBand& band) {
    for (int32_t i = 0; i < kBandRows; i += kLanes) {
        FindColumns(t, box, top + i, band.left + i, band.right + i);
        const Products products = RowProducts(t, Centres(Splat(top + i) + LaneNumbers()));
        for (int edge = 0; edge < 3; ++edge) Store(band.products[edge] + i, products.of[edge]);
    }
    band.first = box.right;
    band.end = box.left;
    for (int32_t i = 0; i < count; ++i) {
        if (band.left[i] >= band.right[i]) continue;
        band.first = band.left[i] < band.first ? band.left[i] : band.first;
        band.end = band.right[i] > band.end ? band.right[i] : band.end;
    }
}

// Column by column of vectors, so that the rows share what belongs to their columns. False when the triangle
// is not to be drawn.
template <typename Ink>
ZEL_INLINE bool FillBand(const TriangleOfLanes& t, const Rect& box, int32_t top, const FillTarget& to,
                         Ink& ink) {
    const int32_t count = box.bottom - top < kBandRows ? box.bottom - top : kBandRows;
    RowBand band;
    SetUpBand(t, box, top, count, band);
    for (int32_t x = band.first; x < band.end; x += kLanes) {
        const int32_t left = x + kLanes <= to.width ? x : to.width - kLanes;
        const Ints numbers = Splat(left) + LaneNumbers();
        const Mask allowed = Between(numbers, x, box.right);
        const Products columns = ColumnProducts(t, Centres(numbers));
        for (int32_t i = 0; i < count; ++i) {
            if (x >= band.right[i] || x + kLanes <= band.left[i]) continue;
            const int64_t at = static_cast<int64_t>(top + i) * to.width + left;
            const Products rowsOf{
                {Splat(band.products[0][i]), Splat(band.products[1][i]), Splat(band.products[2][i])}};
            const Floats drawnDepth = Load(to.depth + at);
            if (!FillBlock<1>(t, columns, rowsOf, allowed, drawnDepth, to, at, ink)) return false;
        }
    }
    return true;
}

template <typename Ink>
ZEL_INLINE void FillLarge(const TriangleOfLanes& t, const Rect& box, const FillTarget& to, Ink& ink) {
    for (int32_t top = box.top; top < box.bottom; top += kBandRows) {
        if (!FillBand(t, box, top, to, ink)) return;
    }
}

// ---- The faces of a mesh, one after the other.

template <typename Ink>
ZEL_INLINE void FillEachFace(const MeshToDraw& mesh, const FillTarget& target) {
    const FillTarget to = target;  // a copy: no store to the picture changes it
    for (size_t i = 0; i < mesh.faceCount; ++i) {
        const ScannedFace& face = mesh.faces[i];
        const auto* indices = reinterpret_cast<const int32_t*>(mesh.triangles + face.triangle);
        const TriangleOfLanes t = SetUp(mesh.corners[indices[0]], mesh.corners[indices[1]],
                                        mesh.corners[indices[2]], face.nearest, face.isOrdinary);
        Ink ink{mesh, i};
        if (face.box.right - face.box.left <= kSmallWidth) {
            FillSmall(t, face.box, to, ink);
        } else {
            FillLarge(t, face.box, to, ink);
        }
    }
    LeaveVectors();
}

bool CoversPixel(const ScreenCorner (&corners)[3], int32_t x, int32_t y, float& depth) {
    const TriangleOfLanes t = SetUp(corners[0], corners[1], corners[2], 0, false);
    const Weights w = WeightsAt(t, ColumnProducts(t, Centres(Splat(x))), RowProducts(t, Centres(Splat(y))));
    const Floats found = Weighted(w, t.depth);
    const bool isBefore = AreAll(AreInside(w, found) & (found < Splat(depth)));
    if (isBefore) depth = LeastLane(found);
    LeaveVectors();
    return isBefore;
}

void FillFlat(const MeshToDraw& mesh, const FillTarget& to) { FillEachFace<FlatInk>(mesh, to); }
void FillTextured(const MeshToDraw& mesh, const FillTarget& to) { FillEachFace<TextureInk>(mesh, to); }

}  // namespace
