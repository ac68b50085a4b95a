// What the buttons of the top bar run.
#pragma once

#include "editor/layout.h"
#include "render/rect.h"

// Runs the button under the pointer. False when there is none.
bool ClickTopBar(Point pointer, const EditorLayout& layout);
