// The frames of the panels with the splitters between them, and the bottom panel with its two pages, Files
// and Console.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

// The backgrounds of the top bar, the Hierarchy, the Inspector and the bottom panel, and over them the three
// splitters; the one that is being dragged stands out. Comes before every panel's contents: texts that leave
// their panel stay visible on the next one.
void DrawPanelFrames(const EditorLayout& layout);

// The tabs, and the page with the status message when it is the Console, on the panel's frame.
void DrawBottomPanel(const EditorLayout& layout);

// Turns to the page whose tab is under the pointer. True when there is a tab.
bool ClickBottomTabs(Point pointer, const EditorLayout& layout);
