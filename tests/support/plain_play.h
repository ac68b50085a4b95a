// A frame of a playing scene once more, in the plainest words: every object is compared with every other.
#pragma once

// Does what UpdateFrame does in Play mode, from the definition alone: nothing of the program's own boxes,
// collisions, look-ups or steps is called. `dt` in seconds.
void UpdatePlayPlainly(float dt);
