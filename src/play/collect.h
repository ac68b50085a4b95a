// The component CollectOnTouch: an object that collects what it touches.
#pragma once

#include "play/play_pass.h"

#include <cstdint>

// Hides at most one thing that the object touches, and counts it: an instance of its `collectPrefab`, or
// where there is no such file the object named `collectTarget`. An inactive object collects nothing. `index`
// names an object.
void CollectOnTouchStep(int32_t index, PlayPass& pass);

// Of the object and all below it.
void SetActiveRecursive(int32_t index, bool active, WorldBoxes& boxes);
