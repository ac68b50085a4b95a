// From clip space to pixels of the viewport.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"

// What a visible point keeps to: see ProjectToViewport.
constexpr float kNearestW = 0.05f;  // the effective near cut
constexpr float kDepthSlack = 0.001f;
constexpr float kMaxScreen = 100000.0f;  // keeps far corners within what a conversion to integers holds

// A projected point. Sixteen bytes, so that a vertex is one load.
struct ScreenCorner {
    float x = 0, y = 0;  // frame buffer pixels, -100000 .. 100000
    float depth = 0;     // 0 near .. 1 far
    float inverseW = 0;  // 1 / w of clip space, for perspective-correct interpolation
};
static_assert(sizeof(ScreenCorner) == 16);

// False when the point is not visible: too close to the eye or behind it (w up to 0.05), outside the depth
// range by more than 0.001, or not a number. `corner` is then unchanged.
bool ProjectToViewport(const Vec4& clip, const Rect& viewport, ScreenCorner& corner);

// The projected point of a world position in whole pixels, truncated.
bool ProjectToPixel(const Matrix4& viewProjection, Vec3 world, const Rect& viewport, Point& pixel);
