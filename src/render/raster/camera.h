// How a point reaches the screen: the camera takes it from the world to clip space, the projection from
// there to the pixels of the viewport. Camera space is left-handed: +X right, +Y up, +Z into the screen.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"
#include "state/camera_pose.h"

#include <cstdint>

// The unit vector that the camera looks along. Yaw 0 and pitch 0 look along +Z.
Vec3 CameraForward(float yaw, float pitch);

Matrix4 ViewMatrix(const CameraPose& camera);

// Vertical field of view 70 degrees, near plane 0.1, far plane 100; depth runs from 0 to 1 between them.
// Sides below one pixel count as one.
Matrix4 ProjectionMatrix(int32_t width, int32_t height);

// The limits of ProjectToViewport.
constexpr float kNearestW = 0.05f;  // points this close to the eye are not visible
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

// Projects a world position to whole pixels, truncated. False when it is not visible.
bool ProjectToPixel(const Matrix4& viewProjection, Vec3 world, const Rect& viewport, Point& pixel);
