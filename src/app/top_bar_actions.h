// What the buttons of the top bar run.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

// Runs the button under the pointer. False when there is none.
bool ClickTopBar(Point pointer, const EditorLayout& layout);
