// One picture of the program.
#pragma once

#include "render/rect.h"

// Draws the screen that the state asks for at the window's size and shows it. Called from within itself (a
// dialog repaints the window) it does nothing.
void RenderFrame();

// The part of the frame buffer that shows the scene.
Rect ViewportOf(int32_t width, int32_t height);
