// The two menus of the Files page: one for an item, one for new items.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"

#include <cstdint>

// `item` is an index into EditorState::fileEntries; -1 opens the menu for new items.
void OpenFilesMenu(int32_t item, Point pointer, const EditorLayout& layout);

// Draws the one that is open, over the panels.
void DrawFilesMenus(const EditorLayout& layout);

// Handles a press. True when a menu has taken it.
bool ClickFilesMenus(Point pointer, const EditorLayout& layout);
