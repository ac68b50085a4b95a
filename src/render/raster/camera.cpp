#include "render/raster/camera.h"

#include "base/limit.h"

#include <algorithm>
#include <cmath>

constexpr float kHalfFov = 0.6108653f;       // 35 degrees in radians
constexpr float kDepthScale = 1.001001f;     // far / (far - near)
constexpr float kDepthOffset = -0.1001001f;  // -near * far / (far - near)

Vec3 CameraForward(float yaw, float pitch) {
    return Normalise({std::sin(yaw) * std::cos(pitch), std::sin(pitch), std::cos(yaw) * std::cos(pitch)});
}

// The right vector always lies in the horizontal plane: the camera never rolls.
Matrix4 ViewMatrix(const CameraPose& camera) {
    const Vec3 f = CameraForward(camera.yaw, camera.pitch);
    const Vec3 r = Normalise({f.z, 0, -f.x});
    const Vec3 u = Cross(f, r);
    const Vec3 eye = camera.position;
    return {{{{r.x, r.y, r.z, -Dot(r, eye)},
              {u.x, u.y, u.z, -Dot(u, eye)},
              {f.x, f.y, f.z, -Dot(f, eye)},
              {0, 0, 0, 1}}}};
}

// Column vectors, left-handed: clip w is the depth in world units along the view, and z / w runs from 0 at
// the near plane to 1 at the far one. Nothing is clipped at the far plane: a depth beyond it is limited to
// 1 later, and the strict depth test drops it.
Matrix4 ProjectionMatrix(int32_t width, int32_t height) {
    const float aspect = static_cast<float>(std::max(width, 1)) / static_cast<float>(std::max(height, 1));
    const float t = 1 / std::tan(kHalfFov);
    return {{{{t / aspect, 0, 0, 0}, {0, t, 0, 0}, {0, 0, kDepthScale, kDepthOffset}, {0, 0, 1, 0}}}};
}

// Takes a point of clip space to the pixels of the viewport. vertex_kernel.h repeats these operations in
// this order, because one vertex may go through either and must land on the same bits. The tests come
// before the limits: a point at or behind the eye would divide by zero or turn inside out, and must be
// rejected rather than moved to the edge. Every comparison is written so that a value that is not a number
// fails it. The limits come last; they keep what is left within the range of a conversion to integers.
bool ProjectToViewport(const Vec4& clip, const Rect& viewport, ScreenCorner& corner) {
    if (!(clip.w > kNearestW)) return false;
    const float inverseW = 1 / clip.w;
    const float depth = clip.z * inverseW;
    if (!(depth >= -kDepthSlack && depth <= 1 + kDepthSlack)) return false;

    const auto left = static_cast<float>(viewport.left), top = static_cast<float>(viewport.top);
    const auto width = static_cast<float>(Width(viewport)), height = static_cast<float>(Height(viewport));
    const float x = (clip.x * inverseW * 0.5f + 0.5f) * width + left;
    const float y = (0.5f - clip.y * inverseW * 0.5f) * height + top;
    if (std::isnan(x) || std::isnan(y)) return false;

    corner = {Limit(x, -kMaxScreen, kMaxScreen), Limit(y, -kMaxScreen, kMaxScreen), Limit(depth, 0.0f, 1.0f),
              inverseW};
    return true;
}

bool ProjectToPixel(const Matrix4& viewProjection, Vec3 world, const Rect& viewport, Point& pixel) {
    ScreenCorner corner;
    if (!ProjectToViewport(TransformToClip(viewProjection, world), viewport, corner)) return false;
    pixel = {static_cast<int32_t>(corner.x), static_cast<int32_t>(corner.y)};
    return true;
}
