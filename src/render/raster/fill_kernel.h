// Filling: the pixels of a triangle, as many at a time as there are lanes, and whole blocks of the buffer.
//
// In go the faces that the scan has left, each with a box and a nearest depth; out come pixels, depths and
// owners. The order of the questions is the order of their cost: is a pixel of the block covered, is it
// nearer than what was drawn, and only then what colour it has. The first product of an edge function
// belongs to a column and the second one to a row, so each is made once for all pixels that share it.
//
// Small triangles are cut into blocks of columns, and only the rows that the edges leave are looked at.
// Large ones are cut into bands of rows, each with the columns that the edges leave, so that vectors
// beyond an edge are skipped. A block never reaches beyond the buffer. At the right and lower sides it is
// moved back, and the lanes that another block has already filled are masked out.
#pragma once

#include "render/raster/coverage_kernel.h"

namespace {

// Of the lanes that tie with the depth drawn before, those that show an object later in the scene than
// this one.
template <int rows>
ZEL_INLINE Mask WonTies(const FillTarget& to, int64_t at, Mask ties) {
    if (to.owners == nullptr || !IsAny(ties)) return NoLanes();
    return ties & (Splat(to.owner) < LoadBlock<rows>(static_cast<const void*>(to.owners + at), to.width));
}

// Writes the lanes that are seen. Most vectors of a large triangle are seen whole, so what was there need not
// be written back.
template <int rows, bool isLarge>
ZEL_INLINE void StoreSeen(const FillTarget& to, int64_t at, Mask seen, Ints colors, Floats depth,
                          Floats drawnDepth) {
    static_assert(!isLarge || rows == 1);
    if (isLarge && AreAll(seen)) {
        Store(static_cast<void*>(to.pixels + at), colors);
        Store(to.depth + at, depth);
        if (to.owners != nullptr) Store(static_cast<void*>(to.owners + at), Splat(to.owner));
        return;
    }
    StoreBlock<rows>(static_cast<void*>(to.pixels + at), to.width, seen, colors);
    StoreBlock<rows>(to.depth + at, to.width, seen, depth, drawnDepth);
    if (to.owners != nullptr)
        StoreBlock<rows>(static_cast<void*>(to.owners + at), to.width, seen, Splat(to.owner));
}

// Fills one block of pixels that begins at `at`: weighs every pixel, tests its depth, and asks the ink
// only if a pixel has passed. False when the ink says that the triangle is not to be drawn at all.
template <int rows, bool isLarge, typename Ink>
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
    StoreSeen<rows, isLarge>(to, at, seen, colors, depth, drawnDepth);
    return true;
}

// ---- Small triangles: blocks of columns.

// Goes down one block of columns that begins at `x`. False when the triangle is not to be drawn.
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
        // All that was drawn here is nearer than the face can be.
        if (!IsAny(Without(allowed, drawnDepth < t.nearest))) continue;
        const Products rowsOf = RowProducts(t, Centres(RowsFrom<rows>(first)));
        if (!FillBlock<rows, false>(t, columns, rowsOf, allowed, drawnDepth, to, at, ink)) return false;
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

constexpr int32_t kBandRows = kLanes == 16 ? 16 : 8;

// A band of rows, with what stays the same along each row.
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

// Goes through a band one vector of columns at a time and down its rows, so that the rows share the
// products of their columns. False when the triangle is not to be drawn.
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
            if (!FillBlock<1, true>(t, columns, rowsOf, allowed, drawnDepth, to, at, ink)) return false;
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

// ---- The faces of a mesh, one after the other. Their order is that of the mesh: of two faces at the same
// depth the first one keeps the pixel.

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

void FillFlat(const MeshToDraw& mesh, const FillTarget& to) { FillEachFace<FlatInk>(mesh, to); }
void FillTextured(const MeshToDraw& mesh, const FillTarget& to) { FillEachFace<TextureInk>(mesh, to); }

// ---- Blocks of the buffer: clearing one, and the greatest depth of a tile. Both run row by row in whole
// vectors; the last vector of a row overlaps the one before it, so that no number is handled alone. Memory
// is the limit: aligned, wider or streaming stores gain nothing.

void ClearBlock(void* first, int64_t stride, int32_t width, int32_t height, uint32_t value) {
    const Ints values = Splat(static_cast<int32_t>(value));
    for (int32_t y = 0; y < height; ++y) {
        auto* row = static_cast<int32_t*>(first) + y * stride;
        if (width < kLanes) {
            for (int32_t x = 0; x < width; ++x) memcpy(row + x, &value, sizeof value);
            continue;
        }
        for (int32_t x = 0; x + kLanes <= width; x += kLanes) Store(row + x, values);
        Store(row + (width - kLanes), values);
    }
    LeaveVectors();
}

float FarthestOfBlock(const float* first, int64_t stride, int32_t width, int32_t height) {
    float farthest = 0;
    Floats most = Splat(0.0f);
    for (int32_t y = 0; y < height; ++y) {
        const float* row = first + y * stride;
        if (width < kLanes) {
            for (int32_t x = 0; x < width; ++x) farthest = farthest < row[x] ? row[x] : farthest;
            continue;
        }
        for (int32_t x = 0; x + kLanes <= width; x += kLanes) most = Most(Load(row + x), most);
        most = Most(Load(row + (width - kLanes)), most);
    }
    const float found = MostLane(most);
    LeaveVectors();
    return farthest < found ? found : farthest;
}

}  // namespace
