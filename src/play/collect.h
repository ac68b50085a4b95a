// The component CollectOnTouch: an object that collects what it touches, and the score that counts it.
#pragma once

#include "play/play_pass.h"

#include <cstdint>

// Deactivates at most one thing that the object touches, and counts it: an instance of its `collectPrefab`,
// or, if that file does not exist, the object named `collectTarget`. An inactive object collects nothing.
// `index` names an object.
void CollectOnTouchStep(int32_t index, PlayPass& pass);

// Sets `active` of the object and of everything below it.
void SetActiveRecursive(int32_t index, bool active, WorldBoxes& boxes);

// Writes the score into the first active Text object whose name or text contains "score" or "skore" in any
// case, else into the first active Text object. Does nothing if there is none.
void ShowScore();
