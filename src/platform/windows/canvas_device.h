// The memory behind the canvas, for the system's own drawing.
#pragma once

#include "base/color.h"
#include "platform/windows/cached_images.h"

#include <windows.h>

#include <cstdint>
#include <vector>

// The canvas as memory. To be looked at after FlushCanvas only.
struct CanvasPixels {
    Pixel* first = nullptr;         // the top left one; null while there is no canvas
    int32_t width = 0, height = 0;  // rows follow each other without a gap
};

struct CanvasFont {
    int32_t height = 0, weight = 0;
    HFONT font = nullptr;
};

// The one canvas, and what drawing on it has made and uses again.
struct Canvas {
    HDC device = nullptr;           // made once, there until the program ends
    HGDIOBJ firstBitmap = nullptr;  // what the device held when it was made
    HBITMAP bitmap = nullptr;
    CanvasPixels pixels{};            // of `bitmap`
    std::vector<CanvasFont> fonts{};  // few, and asked for a hundred times a frame
    CachedImages cachedImages{};
    bool isWindowStale = true;  // the window may show something else than the last picture
};

extern Canvas windowCanvas;

// The device context with the canvas selected into it. Null while there is no canvas.
HDC CanvasDevice();

// The description of a bitmap in the frame buffer's form: 0x00RRGGBB, row 0 at the top.
BITMAPINFO TopDownPixels(int32_t width, int32_t height);
