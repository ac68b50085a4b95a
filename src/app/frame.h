// One picture of the program.
#pragma once

// Draws the screen that the state asks for at the window's size and shows it. Called from within itself (a
// dialog repaints the window) it does nothing.
void RenderFrame();
