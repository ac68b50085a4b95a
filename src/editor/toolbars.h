// The bar along the top with program, mode and a few buttons, and the palette of the three transform tools in
// the viewport's top left corner.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"
#include "state/editor_state.h"

enum class TopBarButton { None, CloseEditor, SavePrefab, ProjectHub, SaveProject, BuildProject };

// Logo, title, mode and buttons, on the bar's frame.
void DrawTopBar(const EditorLayout& layout);

// The button that is shown under a point.
TopBarButton TopBarButtonAt(Point point, const EditorLayout& layout);

// Makes a tool the current one and says so.
void SelectTool(Tool tool);

void DrawToolPalette(const EditorLayout& layout);

// True when the press lay on the palette.
bool ClickToolPalette(Point pointer, const EditorLayout& layout);
