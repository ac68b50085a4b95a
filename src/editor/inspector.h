// The Inspector: the selected object as a column of sections, and what a click on them does.
#pragma once

#include "editor/layout.h"
#include "render/rect.h"

// Paints what the panel holds into its frame, and refills EditorState::inspectorZones with what can be
// clicked. Without a selected object only the title stands there.
void DrawInspector(const EditorLayout& layout);

// Runs the action of the first zone of the last frame under the pointer that has one. False when the pointer
// is outside the panel; inside, the press is taken even where nothing is.
bool ClickInspector(Point pointer, const EditorLayout& layout);
