// What happens between two frames.
#pragma once

// Flies the editor camera with the keys that are down and lets the animation clock run. `dt` in seconds.
void UpdatePlay(float dt);
