#include "render/raster/line.h"

#include <cstddef>
#include <cstdlib>

// Lines are clipped to a rectangle this much larger than the viewport, and pixels outside the viewport are
// dropped while walking, so that a long line keeps its slope.
constexpr int32_t kClipMargin = 64;

enum Outcode : uint32_t { kInside = 0, kBeyondLeft = 1, kBeyondRight = 2, kBeyondTop = 4, kBeyondBottom = 8 };

static uint32_t OutcodeOf(Point p, const Rect& bounds) {
    uint32_t code = kInside;
    if (p.x < bounds.left) code |= kBeyondLeft;
    if (p.x > bounds.right) code |= kBeyondRight;
    if (p.y < bounds.top) code |= kBeyondTop;
    if (p.y > bounds.bottom) code |= kBeyondBottom;
    return code;
}

// The ends' differences are taken in double: they may exceed 32 bits.
static double Span(int32_t from, int32_t to) { return static_cast<double>(to) - from; }

// start + offset * rise / run, the quotient truncated.
static int32_t Along(int32_t start, double offset, double rise, double run) {
    return static_cast<int32_t>(start + static_cast<int64_t>(offset * rise / run));
}

// Moves one end at a time to an edge that it lies beyond, until both ends are inside or both lie beyond
// the same edge. The order decides how the ends are rounded: top and bottom come before left and right.
bool ClipLine(LineSegment& line, const Rect& bounds) {
    Point& a = line.from;
    Point& b = line.to;
    uint32_t codeA = OutcodeOf(a, bounds), codeB = OutcodeOf(b, bounds);
    while ((codeA | codeB) != kInside) {
        if ((codeA & codeB) != kInside) return false;
        const uint32_t code = codeA != kInside ? codeA : codeB;
        // The divisor is never 0: if both ends had the same coordinate, both would lie beyond this edge,
        // and the line would have been dropped above.
        const double dx = Span(a.x, b.x), dy = Span(a.y, b.y);
        Point cut;
        if ((code & (kBeyondTop | kBeyondBottom)) != 0) {
            cut.y = (code & kBeyondBottom) != 0 ? bounds.bottom : bounds.top;
            cut.x = Along(a.x, Span(a.y, cut.y), dx, dy);
        } else {
            cut.x = (code & kBeyondRight) != 0 ? bounds.right : bounds.left;
            cut.y = Along(a.y, Span(a.x, cut.x), dy, dx);
        }
        if (code == codeA) {
            a = cut;
            codeA = OutcodeOf(a, bounds);
        } else {
            b = cut;
            codeB = OutcodeOf(b, bounds);
        }
    }
    return true;
}

// Bresenham: `error` follows the distance from the exact line, scaled to integers. Each step goes one
// pixel along the longer side and sometimes along the other one too. Every pixel is tested against the
// viewport, because clipping happens at a larger rectangle.
void DrawLine(Point from, Point to, Pixel color, Surface& surface) {
    if (surface.pixels == nullptr) return;
    const Rect& viewport = surface.viewport;
    LineSegment line{from, to};
    if (!ClipLine(line, {viewport.left - kClipMargin, viewport.top - kClipMargin,
                         viewport.right + kClipMargin, viewport.bottom + kClipMargin})) {
        return;
    }

    PreparePixelAccess(surface);
    Point p = line.from;
    const int32_t dx = std::abs(line.to.x - p.x), dy = -std::abs(line.to.y - p.y);
    const int32_t stepX = p.x < line.to.x ? 1 : -1, stepY = p.y < line.to.y ? 1 : -1;
    int32_t error = dx + dy;
    while (true) {
        if (Contains(viewport, p)) {
            surface.pixels[static_cast<ptrdiff_t>(p.y) * surface.width + p.x] = color;
        }
        if (p == line.to) return;
        const int32_t doubled = 2 * error;
        if (doubled >= dy) {
            error += dy;
            p.x += stepX;
        }
        if (doubled <= dx) {
            error += dx;
            p.y += stepY;
        }
    }
}
