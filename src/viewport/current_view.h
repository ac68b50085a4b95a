// How the scene is seen now: for drawing it and for finding what lies under the pointer.
#pragma once

#include "base/matrix4.h"
#include "base/rect.h"
#include "state/camera_pose.h"
#include "viewport/pick.h"

// True while the scene is shown as the game shows it, also when the game has stopped in the runtime.
bool ShowsGame();

struct FrameView {
    CameraPose camera{};
    Matrix4 viewProjection{};
    Rect viewport{};  // that it fills, frame buffer pixels
};

FrameView CurrentView(const Rect& viewport);

// What PickObject looks at.
PickView CurrentPickView(const Rect& viewport);
