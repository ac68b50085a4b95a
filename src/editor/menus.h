// The two menus of the Scene editor: one for an object of the Hierarchy, one for new objects.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

#include <cstdint>

// Selects the object, too. `object` is a valid index.
void OpenObjectMenu(int32_t object, Point pointer, const EditorLayout& layout);

void OpenCreateMenu(Point pointer, const EditorLayout& layout);

// The one that is open, over the panels.
void DrawMenus(const EditorLayout& layout);

// A press while one may be open. True when it goes no further.
bool ClickMenus(Point pointer, const EditorLayout& layout);
