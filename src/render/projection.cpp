#include "render/projection.h"

#include "base/limit.h"

#include <cmath>

// Every comparison is written so that not a number fails it.
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
