// Updates as the program makes them, one frame after the other.
#pragma once

#include "app/turn.h"

// Kept from frame to frame.
inline PlayCache playCache;

inline bool UpdateFrame(float dt) { return UpdateFrame(dt, playCache); }
