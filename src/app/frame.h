// One picture of the program.
#pragma once

#include "editor/layout.h"

// Draws the screen that the state asks for at the window's size and shows it. False when that was not
// possible: the window has no size, memory does not suffice, or a picture is being drawn already (a dialog
// that it opened asks for one).
bool RenderFrame();

// The editor around the viewport, over the scene: tool palette, panels, menus, entries.
void DrawPanels(const EditorLayout& layout);
