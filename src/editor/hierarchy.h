// The Hierarchy panel: the scene's objects as a tree of rows, and dragging them to another place in it.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"
#include "state/game_object.h"
#include "state/gesture.h"
#include "state/hit_zone.h"

#include <cstdint>
#include <optional>

// One row per object that a chain of parents connects to a root, parents before their children, siblings in
// scene order. While playing, inactive objects are left out with all below them.
HierarchyRowList ListHierarchyRows(const Scene& scene, bool isPlaying);

// Title and rows on the panel's frame, with the place where a dragged row would land. Fills
// EditorState::hierarchyRows: every row is listed, those below the window are not drawn. Rows are not cut at
// the panel's edges.
void DrawHierarchy(const EditorLayout& layout);

// What follows asks for the rows of the last drawn frame.

// The row at a height in the window, wherever x is. Null between rows.
const HierarchyRow* HierarchyRowAt(int32_t y);

// True when some row reaches below a height: the tree is not cut where its panel ends.
bool HierarchyReachesBelow(int32_t y);

// The object whose row is under a point of the panel. -1 without one.
int32_t HierarchyObjectAt(Point point, const EditorLayout& layout);

// Where `dragged` would land when it is let go at a point. Nowhere on itself and on what is below it.
std::optional<DropPlace> HierarchyDropAt(Point point, int32_t dragged);

// A press of the left button: on a row it may become a drag. True when it lies inside the panel.
bool PressHierarchy(Point pointer, const EditorLayout& layout);

// Follows the pointer after a press on a row. A drag begins six pixels away from the press.
void DragInHierarchy(HierarchyDrag& drag, Point pointer);

// Lets go: a dragged object moves to where it would land, one that was only pressed becomes the selection.
void ReleaseHierarchy(const HierarchyDrag& drag);
