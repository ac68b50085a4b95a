// What happens between two frames.
#pragma once

#include "play/play_step.h"

// Flies the editor camera with the keys that are down, moves the selected object with its keys, lets the
// animation clock run, and plays the scene in Play mode. Behind a page that covers the window only the clock
// runs. `dt` in seconds, at most 0.05. `cache` belongs to whoever calls this for frame after frame.
void UpdateFrame(float dt, PlayCache& cache);
