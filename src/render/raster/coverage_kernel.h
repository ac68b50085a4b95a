// What a triangle covers.
//
// In go a triangle's corners on the screen, with every number in all lanes. Out come the weights of the
// corners at the pixel centres that are asked about. The weights answer three questions at once: does the
// triangle cover the pixel, how deep is it there, and which part of its texture shows. Each weight is
// computed from the centre in one literal form. Stepping it from pixel to pixel would be cheaper and would
// round differently for each width. The crossings of the edges with rows and columns only narrow down
// where to look: they carry slack for rounding, and the weights decide.
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
    // (c - a) x (b - a). Both runs have the opposite sign here, which cancels out and changes no rounding.
    t.area = t.runY[1] * t.runX[2] - t.runX[1] * t.runY[2];
    t.divisor = PrepareDivisor(t.area, isOrdinary);
    t.nearest = Splat(nearest);
    return t;
}

// One of the two products of each edge function. The first depends on the column alone, the second on the
// row alone.
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

// The lanes that the triangle covers, edges included, at a depth of 0 or more. Wider vectors are given no
// corner before depth 0, and a sum of such depths, by weights that are not below 0, is none either.
ZEL_INLINE Mask AreInside(const Weights& w, Floats depth) {
    const Floats zero = Splat(0.0f);
    const Mask isCovered = (w.w0 >= zero) & (w.w1 >= zero) & (w.w2 >= zero);
    return kLanes == 1 ? isCovered & (depth >= zero) : isCovered;
}

// ---- Spans: which rows of a block, and which columns of a row, the three edges leave.

// Narrow triangles take blocks of four columns, others wider ones.
constexpr int kNarrowColumns = kLanes < 4 ? kLanes : 4, kNarrowRows = kLanes / kNarrowColumns;
constexpr int kBlockRows = kLanes == 16 ? 2 : 1, kBlockColumns = kLanes / kBlockRows;
constexpr int32_t kMostBlocks = 8, kSmallWidth = kMostBlocks * kBlockColumns;

// Narrower boxes are filled whole: finding the rows to skip would cost more than they do.
constexpr int32_t kWholeWidth = 8;  // pixels

// The rows of the blocks, the last one exclusive.
struct BlockRows {
    int32_t top[kMostBlocks < kLanes ? kLanes : kMostBlocks];
    int32_t bottom[kMostBlocks < kLanes ? kLanes : kMostBlocks];
};

// Pixels; more than rounding can move the crossing of an edge with a block or a row. A crossing inside the
// box lies at most 2e5 pixels from the edge's start, and each of five operations rounds it by 2^-24 of
// that: 0.06 in all. The edge function itself is rounded by as much. A crossing farther away lies outside
// the box, and rounding cannot bring it in.
constexpr float kCrossingSlack = 0.25f;

// Narrows the rows in which a block can be covered, by one edge. The first product of its function is
// greatest in the first or in the last column of the block, so the better of the two bounds all of them.
ZEL_INLINE void NarrowRows(const TriangleOfLanes& t, int edge, Floats firstX, Floats& top, Floats& bottom) {
    const Floats zero = Splat(0.0f);
    const Floats runX = Signed(t.runX[edge], t.area), runY = Signed(t.runY[edge], t.area);
    const Floats lastX = firstX + Number(kBlockColumns - 1);
    const Floats product = Most((firstX - t.startX[edge]) * runY, (lastX - t.startX[edge]) * runY);
    const Floats crossing = t.startY[edge] + product / runX;
    top = Select(runX < zero, Most(top, crossing), top);
    bottom = Select(runX > zero, Least(bottom, crossing), bottom);
}

// Finds the rows of each block of the box that may hold a covered pixel: all that do, and hardly more. One
// lane works on one block.
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

// Narrows the columns that can be covered in the given rows, by one edge.
ZEL_INLINE void NarrowColumns(const TriangleOfLanes& t, int edge, Floats centreY, Floats& left,
                              Floats& right) {
    const Floats zero = Splat(0.0f), direction = Signed(t.runY[edge], t.area);
    const Floats crossing =
        t.startX[edge] + (centreY - t.startY[edge]) * t.runX[edge] / t.runY[edge] - Splat(0.5f);
    left = Select(direction > zero, Most(left, crossing - Splat(kCrossingSlack)), left);
    right = Select(direction < zero, Least(right, crossing + Splat(kCrossingSlack + 1)), right);
}

// Finds the columns of a vector of rows, one row in each lane; see coveredColumns.
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

bool CoversPixel(const ScreenCorner (&corners)[3], int32_t x, int32_t y, float& depth) {
    const TriangleOfLanes t = SetUp(corners[0], corners[1], corners[2], 0, false);
    const Weights w = WeightsAt(t, ColumnProducts(t, Centres(Splat(x))), RowProducts(t, Centres(Splat(y))));
    const Floats found = Weighted(w, t.depth);
    const bool isBefore = AreAll(AreInside(w, found) & (found < Splat(depth)));
    if (isBefore) depth = LeastLane(found);
    LeaveVectors();
    return isBefore;
}

}  // namespace
