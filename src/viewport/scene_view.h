// How a scene is seen: its camera, its light, its background, and which of its objects are drawn.
#pragma once

#include "base/color.h"
#include "base/matrix4.h"
#include "base/rect.h"
#include "state/camera_pose.h"
#include "state/game_object.h"

#include <cstddef>
#include <cstdint>
#include <span>

// True for what is shown by an icon and not in the game: entities, cameras and lights.
bool HasMarker(const GameObject& object);

// False for what no frame of this mode shows: inactive objects, and in the game those with a marker.
bool IsShown(const GameObject& object, bool showsGame);

// True when a shown object is drawn as its mesh. A Text shows its text instead.
bool ShowsMesh(const GameObject& object, size_t meshCount);

// Where the frame is seen from. In Play mode the first camera object, active or not: its world position, and
// its own rotation without that of its parents. Else, and without a camera object, the editor's camera.
CameraPose ActiveCamera(std::span<const GameObject> scene, const CameraPose& editorCamera, bool playMode);

// The unit vector toward the light: from the own rotation of the first light object, or a fixed one without
// any. A light that is turned by a quarter about x gives the zero vector.
Vec3 LightDirection(std::span<const GameObject> scene);

// The colour behind the scene. In Play mode of the first active camera; else of the selected object if it is
// a camera, else of the first camera, else a fixed one.
Pixel ViewportBackground(std::span<const GameObject> scene, int32_t selectedIndex, bool playMode);

// True while the scene is shown as the game shows it, also when the game has stopped in the runtime.
bool ShowsGame();

struct FrameView {
    CameraPose camera{};
    Matrix4 viewProjection{};
    Rect viewport{};  // the part of the frame buffer that it fills, pixels
};

// How the scene is seen now: for drawing it and for finding what lies under the pointer.
FrameView CurrentView(const Rect& viewport);
