// Which faces of a mesh may be visible, one face in each lane.
//
// Two questions, the cheaper one first. FindFronts asks on which side of each face's plane the eye lies,
// in object space: half of a closed mesh ends here, before any vertex is transformed. Scan then takes the
// corners of the faces that are left and drops those without area, those that fall between pixel centres,
// and those behind everything already drawn where the mesh may show. Both drop a face only if no rounding
// could have changed the answer; doubtful faces go on to the exact tests of the fill. So these two may be
// changed for speed without changing a pixel.
#pragma once

#include "render/raster/kernels.h"
#include "render/raster/lanes.h"

namespace {

// The lists of planes are padded with zeros to whole vectors.
size_t FindFronts(const FacePlanes& planes, const EyeInObject& eye, uint32_t* out) {
    const Floats x = Splat(eye.position.x), y = Splat(eye.position.y), z = Splat(eye.position.z);
    const Floats inside = Splat(eye.inside), least = Splat(-eye.certainty), most = Splat(eye.hiddenFrom);
    const auto count = static_cast<int32_t>(planes.count);
    size_t found = 0;
    for (int32_t i = 0; i < count; i += kLanes) {
        const Floats product = Load(planes.normalX + i) * x + Load(planes.normalY + i) * y +
                               Load(planes.normalZ + i) * z - Load(planes.offset + i);
        const Floats height = product * inside;
        Mask isFront = Without(height >= least, height > most);
        const Ints numbers = Splat(i) + LaneNumbers();
        if (i + kLanes > count) isFront = isFront & (numbers < Splat(count));
        found += StoreCompressed(out + found, numbers, isFront);
    }
    LeaveVectors();
    return found;
}

// Pixels. A centre this close outside a corner may be counted as inside, because of rounding.
constexpr float kCentreSlack = 1.0f / 32;

// Rounding moves an edge function by at most 8 * 2^-24 * size^2 in a box of `size` pixels. At a centre that
// lies outside the box by the slack, one weight is at least slack / (6 * size) below 0. So the slack is
// enough if the area is more than 48 * 2^-24 / slack * size^3; this is twice that.
constexpr float kCertainArea = 2 * 48 * 0x1p-24f / kCentreSlack;

// A face of no more than two columns and two rows is looked at pixel by pixel.
constexpr float kFewPixels = 1;  // from the first to the last

// An edge function below this gives a weight below 0: no area is large enough to round the quotient to
// zero.
constexpr float kCertainlyOutside = -1e-30f;

// Coordinates of at least 2^-10 pixels in size are multiples of 2^-33, and so are a run and the way from a
// corner to a centre. Their products are multiples of 2^-66, and so are the edge functions. The sum of a
// pixel's weights differs from 1 by less than a half if the area is larger than kOrdinaryArea * size^2: see
// kDepthRounding. It is at least kSmallestArea and stays below 2^40, because corners are kept near the
// picture.
constexpr float kOrdinaryCorner = 0x1p-10f, kOrdinaryArea = 2 * kDepthRounding;
static_assert(kSmallestArea > 0x1p-14f && 2 * kMaxScreen + kBoxMargin < 0x1p18f);

// The same corner of the faces.
struct CornersOfLanes {
    Floats x, y, depth;
};

// The pixels that each face may cover, first and last inclusive, inside the viewport. Empty if the last is
// less than the first. If a corner is not a number, neither is the area.
struct FaceSpans {
    Floats cross, area;  // twice the area, square pixels: with the sign of the winding, and its size
    Floats size;         // from one end to the farthest centre that is looked at
    Floats left, top, right, bottom;  // pixels, whole numbers
    Mask isOrdinary;                  // see ScannedFace
};

ZEL_INLINE CornersOfLanes LoadCorners(const FacesToScan& scan, const uint32_t* group, int corner) {
    CornersOfLanes loaded;
    Floats inverseW;
    const auto* indices = reinterpret_cast<const int32_t*>(scan.triangles);
    const auto cornerOf = [&](int lane) {
        return &scan.corners[indices[3 * static_cast<size_t>(group[lane]) + static_cast<size_t>(corner)]].x;
    };
    LoadRecords(cornerOf, loaded.x, loaded.y, loaded.depth, inverseW);
    return loaded;
}

ZEL_INLINE Floats Least(Floats a, Floats b, Floats c) { return Least(Least(a, b), c); }
ZEL_INLINE Floats Most(Floats a, Floats b, Floats c) { return Most(Most(a, b), c); }

// The first and last pixel whose centre may lie within `low` .. `high`. Exact for a face that is certain;
// for others there is a margin of a whole pixel.
ZEL_INLINE Floats FirstPixel(Floats low, Mask isCertain) {
    return Select(isCertain, Ceil(low - Splat(0.5f + kCentreSlack)), Floor(low));
}
ZEL_INLINE Floats LastPixel(Floats high, Mask isCertain) {
    return Select(isCertain, Floor(high - Splat(0.5f - kCentreSlack)), Ceil(high));
}

ZEL_INLINE FaceSpans SpansOf(const CornersOfLanes& a, const CornersOfLanes& b, const CornersOfLanes& c,
                             const Rect& viewport) {
    FaceSpans spans;
    spans.cross = (c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x);
    spans.area = Magnitude(spans.cross);
    const Floats minX = Least(a.x, b.x, c.x), maxX = Most(a.x, b.x, c.x);
    const Floats minY = Least(a.y, b.y, c.y), maxY = Most(a.y, b.y, c.y);
    spans.size = Most(maxX - minX, maxY - minY) + Splat(kBoxMargin);
    const Mask isCertain = spans.area >= Splat(kCertainArea) * spans.size * spans.size * spans.size;
    const Floats nearestToAxes = Least(Least(Magnitude(a.x), Magnitude(b.x), Magnitude(c.x)),
                                       Least(Magnitude(a.y), Magnitude(b.y), Magnitude(c.y)));
    spans.isOrdinary = (nearestToAxes >= Splat(kOrdinaryCorner)) &
                       (spans.area > Splat(kOrdinaryArea) * spans.size * spans.size);
    spans.left = Most(FirstPixel(minX, isCertain), Number(viewport.left));
    spans.top = Most(FirstPixel(minY, isCertain), Number(viewport.top));
    spans.right = Least(LastPixel(maxX, isCertain), Number(viewport.right - 1));
    spans.bottom = Least(LastPixel(maxY, isCertain), Number(viewport.bottom - 1));
    return spans;
}

ZEL_INLINE Mask AreEmpty(const FaceSpans& spans) {
    return (spans.area < Splat(kSmallestArea)) | (spans.left > spans.right) | (spans.top > spans.bottom);
}

// No pixel of a face is nearer than this.
ZEL_INLINE Floats NearestDepths(const CornersOfLanes& a, const CornersOfLanes& b, const CornersOfLanes& c,
                                const FaceSpans& spans) {
    const Floats least = Least(a.depth, b.depth, c.depth);
    const Floats extent = spans.size - Splat(kBoxMargin);
    const Floats rounding = Splat(kDepthRounding) * spans.size * extent / spans.area + Splat(kSumRounding);
    return least - (least * rounding + Splat(kVanishing));
}

// The faces of more than a few pixels.
ZEL_INLINE Mask AreLarge(const FaceSpans& spans) {
    const Floats few = Splat(kFewPixels);
    return (spans.right - spans.left > few) | (spans.bottom - spans.top > few);
}

// Whether an edge has the centres of a face's first and last pixels on its outer side, by column and row.
struct OutsideOfEdges {
    Mask at[2][2];
};

ZEL_INLINE void AddOutside(const CornersOfLanes& start, const CornersOfLanes& end, const FaceSpans& spans,
                           OutsideOfEdges& outside) {
    const Floats runX = end.x - start.x, runY = end.y - start.y, half = Splat(0.5f);
    const Floats columns[2] = {spans.left, spans.right}, rows[2] = {spans.top, spans.bottom};
    for (int column = 0; column < 2; ++column) {
        const Floats alongX = (columns[column] + half - start.x) * runY;
        for (int row = 0; row < 2; ++row) {
            const Floats edge = alongX - (rows[row] + half - start.y) * runX;
            outside.at[column][row] =
                outside.at[column][row] | (Signed(edge, spans.cross) < Splat(kCertainlyOutside));
        }
    }
}

// The faces of at most 2 x 2 pixels that cover no centre. The edges are evaluated as the fill does it.
ZEL_INLINE Mask MissCentres(const CornersOfLanes& a, const CornersOfLanes& b, const CornersOfLanes& c,
                            const FaceSpans& spans) {
    OutsideOfEdges outside{{{NoLanes(), NoLanes()}, {NoLanes(), NoLanes()}}};
    AddOutside(b, c, spans, outside);
    AddOutside(c, a, spans, outside);
    AddOutside(a, b, spans, outside);
    return outside.at[0][0] & outside.at[0][1] & outside.at[1][0] & outside.at[1][1];
}

// The spans of a vector of faces, stored to be read face by face.
struct Places {
    int32_t left[kLanes], top[kLanes], right[kLanes], bottom[kLanes];  // inclusive
    float nearest[kLanes];                                             // see ScannedFace
};

ZEL_INLINE uint32_t LowestLane(uint32_t lanes) {
#if defined(_MSC_VER) && !defined(__clang__)
    unsigned long lane;
    _BitScanForward(&lane, lanes);
    return lane;
#else
    return static_cast<uint32_t>(__builtin_ctz(lanes));
#endif
}

// Appends the faces of the given lanes and returns their number.
ZEL_INLINE size_t AddFaces(uint32_t lanes, const uint32_t* group, const FaceSpans& spans, Floats nearest,
                           ScannedFace* out) {
    Places places;
    Store(places.left, Truncated(spans.left));
    Store(places.top, Truncated(spans.top));
    Store(places.right, Truncated(spans.right));
    Store(places.bottom, Truncated(spans.bottom));
    Store(places.nearest, nearest);
    const uint32_t ordinary = BitsOf(spans.isOrdinary);
    size_t count = 0;
    for (; lanes != 0; lanes &= lanes - 1) {
        const uint32_t i = LowestLane(lanes);
        const Rect box{places.left[i], places.top[i], places.right[i] + 1, places.bottom[i] + 1};
        out[count++] = {group[i], box, places.nearest[i], (ordinary >> i & 1) != 0};
    }
    return count;
}

// The lanes of a group that hold faces of the list, and not its padding.
ZEL_INLINE uint32_t LanesOfList(size_t first, size_t count) {
    return first + kLanes <= count ? kAllLanes : (1u << (count - first)) - 1;
}

// A corner is not a number if its vertex is not plain. No comparison drops such a face: it stays in and is
// drawn by its parts later.
size_t Scan(const FacesToScan& scan, ScannedFace* out) {
    size_t found = 0;
    for (size_t i = 0; i < scan.count; i += kLanes) {
        const uint32_t* group = scan.faces + i;
        const CornersOfLanes a = LoadCorners(scan, group, 0), b = LoadCorners(scan, group, 1),
                             c = LoadCorners(scan, group, 2);
        const FaceSpans spans = SpansOf(a, b, c, scan.viewport);
        const Mask isKnown = AreNumbers(spans.area, spans.area), isLarge = AreLarge(spans);
        const Floats nearest = NearestDepths(a, b, c, spans);
        const Mask isMissing = (AreEmpty(spans) | (nearest > Splat(scan.farthest))) & isKnown;
        uint32_t shown = ~BitsOf(isMissing) & LanesOfList(i, scan.count);
        if (shown == 0) continue;
        if ((shown & ~BitsOf(isLarge)) != 0)
            shown &= ~BitsOf(Without(MissCentres(a, b, c, spans), isLarge) & isKnown);
        found += AddFaces(shown, group, spans, nearest, out + found);
    }
    LeaveVectors();
    return found;
}

}  // namespace
