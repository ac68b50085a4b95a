// The scene that a start, a new project and an empty scene file begin with.
#pragma once

// Replaces the mesh library by the built-in meshes, drops all textures, and replaces the scene by "Game
// Camera" and "Directional Light", followed by the four sample objects when `withSamples`. Selects
// "PlayerCube", or the camera without samples. Paths, undo history and clipboard stay as they are.
void resetScene(bool withSamples);
