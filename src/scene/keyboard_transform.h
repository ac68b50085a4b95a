// Moving, turning and scaling the selected object with J, L, U, O, I and K while the scene is edited.
#pragma once

// One step of `dt` seconds with the current tool, 2.5 times as fast while Ctrl is held. All steps between the
// first key that goes down and the last one that comes up are one undo step. Nothing happens while playing,
// in the game, or without a selected object that can be seen.
void KeyboardTransformStep(float dt);
