// Play mode: beginning a game, one step of it per frame, and its end.
#pragma once

#include "play/world_boxes.h"

// Resets velocities, animation clock and score for a new game, and shows the score.
void ResetGameState();

// Keeps scene, undo history, editor camera, animation clock and selection aside and begins to play. Only in
// the Scene editor while it edits; nothing happens elsewhere.
void StartPlayMode();

// Ends the game and puts back what StartPlayMode kept. A game that the runtime started keeps its scene.
void StopPlayMode();

// What one step computes and the next one can still use. An empty cache is always right.
struct PlayCache {
    WorldBoxes boxes{};
};

// Lets every object act once, in scene order, including objects added on the way. `dt` in seconds, at most
// 0.05.
void PlayStep(float dt, PlayCache& cache);
