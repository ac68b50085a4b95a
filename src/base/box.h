// Axis-aligned boxes in world units.
#pragma once

#include "base/vec3.h"

#include <algorithm>

struct Box {
    Vec3 min{}, max{};
};

// True when the boxes share a point; faces that touch count. A box with a coordinate that is not a number
// touches nothing.
constexpr bool BoxesTouch(const Box& a, const Box& b) {
    return a.min.x <= b.max.x && b.min.x <= a.max.x && a.min.y <= b.max.y && b.min.y <= a.max.y &&
           a.min.z <= b.max.z && b.min.z <= a.max.z;
}

// The box moved outward by `distance` on all six sides.
constexpr Box Grown(const Box& box, float distance) {
    const Vec3 d{distance, distance, distance};
    return {box.min - d, box.max + d};
}

// Widens `box` so that it holds `other` too. Coordinates of `other` that are not numbers are ignored.
constexpr void Include(const Box& other, Box& box) {
    box.min = {std::min(box.min.x, other.min.x), std::min(box.min.y, other.min.y),
               std::min(box.min.z, other.min.z)};
    box.max = {std::max(box.max.x, other.max.x), std::max(box.max.y, other.max.y),
               std::max(box.max.z, other.max.z)};
}

// True when `box` holds all of `other`.
constexpr bool Holds(const Box& box, const Box& other) {
    return box.min.x <= other.min.x && box.min.y <= other.min.y && box.min.z <= other.min.z &&
           box.max.x >= other.max.x && box.max.y >= other.max.y && box.max.z >= other.max.z;
}
