// How far rounding moves the depth of a triangle's pixels. Shared by all that leaves faces out for their
// depth.
#pragma once

constexpr float kBoxMargin = 1.5f;  // from a corner to the farthest centre that is looked at, pixels

// Rounding moves the sum of a pixel's three weights off 1, by at most 3 * 8 * 2^-24 * size^2 / area from the
// edges and a third of that from the area, in a box of `size` pixels: so much less than the least depth of
// its corners a pixel of the face may have. This is a little more; the second one is for the products and
// sums of depths.
constexpr float kDepthRounding = 40 * 0x1p-24f, kSumRounding = 16 * 0x1p-24f;

// Of numbers smaller than this rounding takes more than its part, down to all: the bound on a depth goes down
// by as much. It changes no other.
constexpr float kVanishing = 0x1p-126f;
