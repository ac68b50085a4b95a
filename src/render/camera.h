// Cameras: from the world to clip space. Camera space is left-handed: +X right, +Y up, +Z into the screen.
#pragma once

#include "base/matrix4.h"
#include "state/camera_pose.h"

#include <cstdint>

// The unit vector that the camera looks along. Yaw 0 and pitch 0 look along +Z.
Vec3 CameraForward(float yaw, float pitch);

Matrix4 ViewMatrix(const CameraPose& camera);

// Vertical field of view 70 degrees, near plane 0.1, far plane 100; depth runs from 0 to 1 between them.
// Sides below one pixel count as one.
Matrix4 ProjectionMatrix(int32_t width, int32_t height);
