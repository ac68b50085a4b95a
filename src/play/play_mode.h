// The state of a running game.
#pragma once

// Puts velocities, animation clock and score to where a game begins, and shows the score.
void ResetGameState();
