// The Files page of the bottom panel: one folder of the project as a grid of items.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"
#include "state/gesture.h"

#include <cstdint>

// Draws path bar and items onto the frame of the panel, if the page is shown. Registers a cell for each item
// that it draws.
void DrawFilesPage(const EditorLayout& layout);

// Draws the name of the item that is being dragged, beside the pointer.
void DrawFilesDrag();

// The index into EditorState::fileEntries of the item that was drawn under a point of the page. -1 for none,
// or if the item is no longer in the folder shown.
int32_t FilesItemAt(Point point, const EditorLayout& layout);

// A left press on the page: the back button goes up, an item is selected and may be dragged, empty space
// opens the create menu. False when the page is not shown there.
bool PressFilesPage(Point pointer, const EditorLayout& layout);

// Moves the pressed item. The drag begins 6 pixels from the press.
void DragFilesItem(FilesDrag& drag, Point pointer);

// Opens the item under the pointer. False when there is none.
bool OpenFilesItemAt(Point pointer, const EditorLayout& layout);

// Opens the menu for the item under the pointer, or the one for new items. False when the page is not shown
// there.
bool OpenFilesMenuAt(Point pointer, const EditorLayout& layout);
