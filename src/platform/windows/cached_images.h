// What images left on the canvas, cached: the system takes tens of microseconds for an icon, and a frame of a
// panel shows the same icons in the same places on the same ground as the frame before.
#pragma once

#include "platform/canvas.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

struct CachedImage {
    std::vector<Pixel> before{}, after{};  // of the image's rectangle, row by row
};

// An image with left, top, right and bottom. The place is part of the name, so that nothing need be known
// about how the system scales.
using ImagePlace = std::tuple<CanvasImage, int32_t, int32_t, int32_t, int32_t>;

// Emptied when numbers of images get other meanings.
struct CachedImages {
    std::map<ImagePlace, CachedImage> images{};
    size_t pixels = 0;  // of all
};

// Draws `image` into `rect` of the canvas from what it left there before. False, with nothing drawn, when it
// was not drawn there before or the canvas under it is of other colours now.
bool DrawCachedImage(CanvasImage image, const Rect& rect);

// Lets the system draw, by `draw`, and caches what that leaves unless it failed.
void CacheImage(CanvasImage image, const Rect& rect, bool (*draw)(CanvasImage, const Rect&));
