// What happens between two frames.
#pragma once

// Flies the editor camera with the keys that are down, moves the selected object with its keys, lets the
// animation clock run, and while playing lets every object act once, in scene order, those that are added on
// the way too. Behind a page that covers the window only the clock runs. `dt` in seconds, at most 0.05.
void UpdatePlay(float dt);
