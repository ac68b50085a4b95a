// The object that commands work on.
#pragma once

#include "state/game_object.h"

#include <cstdint>

// True when `index` names an object of the scene.
bool IsObjectIndex(int32_t index);

bool SelectionIsValid();

// Only with a valid selection.
GameObject& SelectedObject();

// Puts the object at the end of the scene and selects it.
void AppendAndSelect(GameObject object);
