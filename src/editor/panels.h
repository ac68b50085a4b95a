// The frames of the panels with the splitters between them, and the bottom panel with its two pages, Files
// and Console.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

// The backgrounds of the top bar, the Hierarchy and the Inspector. Come before the contents of these panels.
void DrawPanelFrames(const EditorLayout& layout);

// The background of the bottom panel and the three splitters; the one that is being dragged stands out. Comes
// after the Inspector, whose sections end where this panel begins, and before the Hierarchy, whose tree runs
// on over it.
void DrawBottomFrame(const EditorLayout& layout);

// Fills a part of the bottom panel with its background again, its edges left out: where something is shown
// that must be readable although the tree of the Hierarchy runs on below it.
void FillBottomStrip(const Rect& strip, const EditorLayout& layout);

// The tabs with the status message: on its page when that is the Console, else beside the tabs, shortened
// where it would reach the Inspector.
void DrawBottomPanel(const EditorLayout& layout);

// Turns to the page whose tab is under the pointer. True when there is a tab.
bool ClickBottomTabs(Point pointer, const EditorLayout& layout);
