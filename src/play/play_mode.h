// Switching between editing and playing, and the state of a running game.
#pragma once

// Resets velocities, animation clock and score for a new game, and shows the score.
void ResetGameState();

// Keeps scene, undo history, editor camera, animation clock and selection aside and begins to play. Only in
// the Scene editor while it edits; nothing happens elsewhere.
void StartPlayMode();

// Ends the game and puts back what StartPlayMode kept. A game that the runtime started keeps its scene.
void StopPlayMode();
