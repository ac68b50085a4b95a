// Whole-pixel points and rectangles.
#pragma once

#include <cstdint>

struct Point {
    int32_t x = 0, y = 0;

    friend constexpr bool operator==(const Point&, const Point&) = default;
};

// Right and bottom are exclusive. Empty when right <= left or bottom <= top.
struct Rect {
    int32_t left = 0, top = 0, right = 0, bottom = 0;

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

constexpr int32_t Width(const Rect& r) { return r.right - r.left; }
constexpr int32_t Height(const Rect& r) { return r.bottom - r.top; }

constexpr bool Contains(const Rect& r, Point p) {
    return p.x >= r.left && p.x < r.right && p.y >= r.top && p.y < r.bottom;
}

constexpr bool LiesWithin(const Rect& inner, const Rect& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}
