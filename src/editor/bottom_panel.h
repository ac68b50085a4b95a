// The panel along the bottom with its two pages, Files and Console.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

// The tabs, and the page with the status message when it is the Console, on the panel's frame.
void DrawBottomPanel(const EditorLayout& layout);

// Turns to the page whose tab is under the pointer. True when there is a tab.
bool ClickBottomTabs(Point pointer, const EditorLayout& layout);
