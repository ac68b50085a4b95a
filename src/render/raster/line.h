// Lines of one pixel.
#pragma once

#include "render/raster/surface.h"

struct LineSegment {
    Point from{}, to{};

    friend constexpr bool operator==(const LineSegment&, const LineSegment&) = default;
};

// Clips a segment to a rectangle by Cohen and Sutherland; all four edges belong to the rectangle. The
// quotient that a clipped end is moved by is truncated toward zero. False when nothing is left.
bool ClipLine(LineSegment& line, const Rect& bounds);

// Draws from end to end, both included, but only inside the viewport.
void DrawLine(Point from, Point to, Pixel color, Surface& surface);
