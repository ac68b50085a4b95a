// The boxes that the panels are drawn on, and the lines between them.
#pragma once

#include "editor/layout.h"

// The backgrounds of the top bar, the Hierarchy, the Inspector and the bottom panel, and over them the three
// splitters; the one that is being dragged stands out. Comes before every panel's contents: texts that leave
// their panel stay visible on the next one.
void DrawPanelFrames(const EditorLayout& layout);
