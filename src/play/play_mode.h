// Play mode: beginning a game, one step of it per frame, and its end.
#pragma once

#include "play/world_boxes.h"

// Sets velocities, animation clock and score to 0 for a new game, and shows the score.
void ResetGameState();

// Puts scene, undo history, editor camera, animation clock and selection aside and begins to play. Does
// nothing outside the Scene editor or while a game runs.
void StartPlayMode();

// Ends the game and puts back what StartPlayMode has put aside. A game that the runtime started keeps its
// scene.
void StopPlayMode();

// What one step has computed and the next one may use again. An empty cache is always right.
struct PlayCache {
    WorldBoxes boxes{};
};

// Lets every object act once, in scene order, including objects added on the way. `dt` in seconds, at most
// 0.05.
void PlayStep(float dt, PlayCache& cache);
