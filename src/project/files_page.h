// The Files page of the bottom panel: one folder of the project as a grid of items.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"
#include "state/gesture.h"

#include <cstdint>

// Path bar and items on the panel's frame, when the page is shown. Registers a cell for each item drawn.
void DrawFilesPage(const EditorLayout& layout);

// The name of an item that is being dragged, beside the pointer.
void DrawFilesDrag();

// The index into EditorState::fileEntries of the item drawn under a point of the page, -1 for none, or when
// it is no longer in the folder shown.
int32_t FilesItemAt(Point point, const EditorLayout& layout);

// A left press on the page: the back button, an item that is selected and may be dragged, or empty space,
// which opens the create menu. False when the page is not shown there.
bool PressFilesPage(Point pointer, const EditorLayout& layout);

// Moves the item that was pressed: it is dragged from 6 pixels on.
void DragFilesItem(FilesDrag& drag, Point pointer);

// Opens the item under the pointer. False when there is none.
bool OpenFilesItemAt(Point pointer, const EditorLayout& layout);

// The menu for the item under the pointer, or for new items. False when the page is not shown there.
bool OpenFilesMenuAt(Point pointer, const EditorLayout& layout);
