// The colour wheel: how it looks, and which colour a point of it picks.
#pragma once

#include "base/rect.h"

#include <cstdint>

// Hue around the centre, saturation from it to the edge, with a mark at the place of `color` (0x00BBGGRR).
// Returns the square around the wheel, which is where it is clicked.
Rect DrawColorWheel(Point centre, int32_t radius, uint32_t color);

// A colour 0x00BBGGRR, red in the low byte. `hue` is taken modulo 1; `saturation` and `value` run from 0
// to 1.
uint32_t HsvToColor(float hue, float saturation, float value);

// What a point of the wheel's square picks: its hue and saturation (limited to the edge) at full value.
uint32_t ColorOnWheel(Point point, const Rect& square);
