// How the current frame sees the scene: for drawing it and for finding what lies under the pointer.
#pragma once

#include "base/matrix4.h"
#include "blueprint/blueprint_layout.h"
#include "editor/layout.h"
#include "project/hub_layout.h"
#include "state/camera_pose.h"
#include "viewport/pick.h"

// True while the scene is shown as the game shows it, also when the game has stopped in the runtime.
bool ShowsGame();

// The regions of the window at its current size, with the panel sizes fitted to it. The viewport is the whole
// client area in the game.
EditorLayout CurrentLayout();

// True while the Project Hub is on the screen; the game never shows it.
bool HubIsShown();

// The regions of the Project Hub in the window at its current size.
HubLayout CurrentHubLayout();

// The same for the Blueprint screen.
BlueprintLayout CurrentBlueprintLayout();

struct FrameView {
    CameraPose camera{};
    Matrix4 viewProjection{};
    Rect viewport{};  // that it fills, frame buffer pixels
};

FrameView CurrentView(const Rect& viewport);

// What PickObject looks at.
PickView CurrentPickView(const Rect& viewport);
