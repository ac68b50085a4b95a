// What the scans of every level share.
#pragma once

#include "render/face_scan.h"
#include "render/simd.h"

#include <algorithm>
#include <array>
#include <bit>

// Pixels from a corner to a centre within which rounding may still count the centre as inside.
constexpr float kCentreSlack = 1.0f / 32;

// Rounding moves an edge's function by at most 8 * 2^-24 * size^2 in a box of `size` pixels, and off the box
// by the slack one weight lies at least slack / (6 * size) below 0. So the slack is enough where the area is
// more than 48 * 2^-24 / slack * size^3; this is twice that.
constexpr float kCertainArea = 2 * 48 * 0x1p-24f / kCentreSlack;
constexpr float kBoxMargin = 1.5f;  // from a corner to the farthest centre that is looked at

// The same rounding moves the sum of the three weights off 1, by at most 3 * 8 * 2^-24 * size^2 / area from
// the edges and a third of that from the area: so much less than the least depth of its corners a pixel of
// the face may have. This is a little more; the second one is for the products and sums of depths.
constexpr float kDepthRounding = 40 * 0x1p-24f, kSumRounding = 16 * 0x1p-24f;

// Of numbers smaller than this rounding takes more than its part, down to all: the bound on a depth goes down
// by as much. It changes no other.
constexpr float kVanishing = 0x1p-126f;

// A face of no more than two columns and two rows is looked at pixel by pixel.
constexpr float kFewPixels = 1;  // from the first to the last

// An edge's function below this is a weight below 0 too: no area is so large that the quotient vanishes.
constexpr float kCertainlyOutside = -1e-30f;

// The faces of a list, which are those that may turn to the eye; see ScanFaces. The list is filled up to a
// multiple of eight with its last face: the first `count` count.
struct FacesToScan {
    const Mesh& mesh;
    const MeshVertices& vertices;
    const FaceView& view;
    const std::vector<uint32_t>& faces;
    size_t count;
};

void ScanSse2(const FacesToScan& scan, std::vector<ScannedFace>& out);
void ScanAvx2(const FacesToScan& scan, std::vector<ScannedFace>& out);

// The same corner of several faces of a list.
struct CornersOfFaces {
    const MeshTriangle* triangles;
    const uint32_t* faces;
    size_t corner;

    size_t operator[](size_t lane) const { return static_cast<size_t>(triangles[faces[lane]][corner]); }
};

// What is found of several faces.
template <size_t lanes>
struct Places {
    std::array<int32_t, lanes> left, top, right, bottom;  // inclusive
    std::array<float, lanes> nearest;                     // see ScannedFace
};

// Adds those of the faces whose lane is set.
template <size_t lanes>
ZEL_INLINE size_t AddFaces(uint32_t set, const uint32_t* faces, const Places<lanes>& places, ScannedFace* out,
                           size_t found) {
    for (; set != 0; set &= set - 1) {
        const auto lane = static_cast<size_t>(std::countr_zero(set));
        const Rect box{places.left[lane], places.top[lane], places.right[lane] + 1, places.bottom[lane] + 1};
        out[found++] = {faces[lane], box, places.nearest[lane]};
    }
    return found;
}

// The lanes of a group that stand for faces of the list: its end is filled with its last face.
inline uint32_t LanesOf(size_t first, size_t count, size_t lanes) {
    const size_t used = std::min(count - first, lanes);
    return (1u << used) - 1;
}
