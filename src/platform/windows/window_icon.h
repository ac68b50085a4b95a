// The window's icon in its two sizes.
#pragma once

#include "platform/image_decoder.h"

#include <windows.h>

struct WindowIcons {
    HICON large = nullptr;   // 32 x 32, for the list of tasks
    HICON little = nullptr;  // 16 x 16, for the title bar
};

// Those made by MakeWindowIcon, else those of the executable, else the system's default. Never null.
WindowIcons CurrentWindowIcons();

// Destroys what MakeWindowIcon made.
void ReleaseWindowIcons();

// An image of `size` x `size` pixels out of a larger or smaller one: each pixel is the average over the area
// that it covers, its colour weighed by how opaque each part is.
DecodedImage ScaleByArea(const DecodedImage& image, int32_t size);
