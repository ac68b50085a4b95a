// Lines of one pixel.
#pragma once

#include "render/raster/surface.h"

struct LineSegment {
    Point from{}, to{};

    friend constexpr bool operator==(const LineSegment&, const LineSegment&) = default;
};

// Cuts a segment at a rectangle by Cohen and Sutherland; all four edges belong to the rectangle. Cut ends are
// truncated toward zero. False when nothing is left.
bool ClipLine(LineSegment& line, const Rect& bounds);

// A line from end to end, both included, as far as it lies in the viewport.
void DrawLine(Point from, Point to, Pixel color, Surface& surface);
