// The memory behind the canvas, for the system's own drawing.
#pragma once

#include "base/color.h"

#include <windows.h>

#include <cstdint>

// The one memory device context, with the canvas selected into it. Null while there is no canvas.
HDC CanvasDevice();

// The canvas as memory. To be looked at after FlushCanvas only.
struct CanvasPixels {
    Pixel* first = nullptr;         // the top left one; null while there is no canvas
    int32_t width = 0, height = 0;  // rows follow each other without a gap
};
CanvasPixels PixelsOfCanvas();

// The description of a bitmap in the frame buffer's form: 0x00RRGGBB, row 0 at the top.
BITMAPINFO TopDownPixels(int32_t width, int32_t height);

// Gives back the fonts that texts were drawn with.
void ReleaseCanvasFonts();
