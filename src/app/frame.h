// One picture of the program.
#pragma once

#include "editor/layout.h"

// Draws the screen that the state asks for at the window's size and shows it. Called from within itself (a
// dialog repaints the window) it does nothing.
void RenderFrame();

// The editor around the viewport, over the scene: tool palette, panels, menus, entries.
void DrawPanels(const EditorLayout& layout);
