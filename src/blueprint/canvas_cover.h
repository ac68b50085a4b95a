// Which part of the canvas lies under nodes already, so that what nobody could see need not be drawn.
#pragma once

#include "base/rect.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// One bit per pixel of the area.
struct CanvasCover {
    Rect area{};
    size_t wordsPerRow = 0;
    std::vector<uint64_t> words{};
};

// Nothing of `area` is covered yet.
CanvasCover StartCover(const Rect& area);

// True when every pixel of the rectangle is covered or lies outside the area.
bool IsCovered(const CanvasCover& cover, const Rect& rect);

void Cover(CanvasCover& cover, const Rect& rect);
