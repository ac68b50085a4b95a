// Whether two objects are alike to the last bit.
#pragma once

#include "state/game_object.h"

// True when every field is alike and every float has the same bits. Unlike ==, 0 and -0 differ, which a file
// shows, and what is not a number equals itself.
bool SameBits(const GameObject& a, const GameObject& b);

// The same of all fields but the parent index.
bool SameBitsButParent(const GameObject& a, const GameObject& b);
