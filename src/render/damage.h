// Which part of a picture must be drawn anew, because its steps are no longer those of the picture before.
#pragma once

#include "render/drawing_list.h"

#include <vector>

// The rectangles of the canvas in which two pictures may differ, none of them over another, none empty. A
// step that can only be drawn whole touches none of them or lies in one, as far as the canvas shows it. Texts
// of `next` take their ink over from equal ones of `shown`.
std::vector<Rect> DamageBetween(const DrawingList& shown, DrawingList& next, const Rect& canvas);

// Gives every text the ink that it may have at most. Drawing it tells more.
void FindInks(DrawingList& list, const Rect& canvas);

// Where a step may change pixels: at most there, and within the canvas. Empty for none.
Rect BoundsOf(const DrawingStep& step, const DrawingList& list, const Rect& canvas);
