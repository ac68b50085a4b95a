// The two menus of the Files page: one for an item, one for new items.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

#include <cstdint>

// `item` is an index into EditorState::fileEntries; below 0 the menu for new items opens.
void OpenFilesMenu(int32_t item, Point pointer, const EditorLayout& layout);

// The one that is open, over the panels.
void DrawFilesMenus(const EditorLayout& layout);

// A press while one may be open. True when it goes no further.
bool ClickFilesMenus(Point pointer, const EditorLayout& layout);
