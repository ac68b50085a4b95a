// The bevelled box that panels, menus and viewport labels share.
#pragma once

#include "base/color.h"
#include "base/rect.h"

// The two bevel colours that every box has.
constexpr Pixel kBoxSecondLine{0x443B36};
constexpr Pixel kBoxDarkEdge{0x14100D};

// `fill`, with `light` along the top and left edges.
void DrawPanelBox(const Rect& rect, Pixel fill, Pixel light);
