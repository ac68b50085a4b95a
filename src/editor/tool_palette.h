// The three transform tools, in the viewport's top left corner.
#pragma once

#include "editor/layout.h"
#include "state/editor_state.h"

// Makes a tool the current one and says so.
void SelectTool(Tool tool);

void DrawToolPalette(const EditorLayout& layout);

// True when the press lay on the palette.
bool ClickToolPalette(Point pointer, const EditorLayout& layout);
