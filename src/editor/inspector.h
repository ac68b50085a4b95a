// The Inspector: the selected object as a column of sections, and what a click on them does.
#pragma once

#include "editor/layout.h"
#include "render/rect.h"

// Paints the panel, and refills EditorState::inspectorZones with what can be clicked. An object that is not
// there leaves the panel empty.
void DrawInspector(const EditorLayout& layout);

// Runs the action of the first zone of the last frame under the pointer that has one. False when the pointer
// is outside the panel; inside, the press is taken even where nothing is.
bool ClickInspector(Point pointer, const EditorLayout& layout);
