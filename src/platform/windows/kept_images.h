// What images left on the canvas, kept: the system takes tens of microseconds for an icon, and a frame of a
// panel shows the same icons in the same places on the same ground as the frame before.
#pragma once

#include "platform/canvas.h"

// Draws `image` into `rect` from what it left there before. False, with nothing drawn, when it was not drawn
// there before or the canvas under it is of other colours now.
bool DrawKeptImage(CanvasImage image, const Rect& rect);

// Lets the system draw, by `draw`, and keeps what that leaves unless it failed.
void KeepImage(CanvasImage image, const Rect& rect, bool (*draw)(CanvasImage, const Rect&));

// To be called when numbers of images get other meanings.
void ForgetKeptImages();
