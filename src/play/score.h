// The score of a game, shown by a Text object of the scene.
#pragma once

// Writes the score into the score text: the first active Text object whose name or text contains "score" or
// "skore" in any case, else the first active Text object. Nothing without one.
void ShowScore();
