// The editor's own camera: looking, flying, and going to an object.
#pragma once

#include "base/vec3.h"

#include <cstdint>

// The place `distance` units along the view direction, where new objects appear.
Vec3 InFrontOfEditorCamera(float distance);

// Turns the camera by a movement of the mouse in pixels.
void LookWithMouse(int32_t dx, int32_t dy);

// Turns with the arrow keys and flies with W, S, A, D, Space and Shift, as far as they are down. `dt` in
// seconds.
void FlyWithKeys(float dt);

// Goes to 4 units before an object, 1.4 above it, without turning.
void FocusOnObject(int32_t index);
