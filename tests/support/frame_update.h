// Updates as the program makes them, one frame after the other.
#pragma once

#include "app/update.h"

// Kept from frame to frame.
inline PlayCache playCache;

inline void UpdateFrame(float dt) { UpdateFrame(dt, playCache); }
