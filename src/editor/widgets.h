// The parts that every panel is built of. They take rectangles and values, and never an object.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "base/vec3.h"
#include "state/hit_zone.h"

#include <cstdint>
#include <string>

// A frame of one pixel: its top and left edges in one colour, its bottom and right edges in another.
void DrawBoxEdges(const Rect& rect, Pixel topLeft, Pixel bottomRight);

// A button without its caption.
void DrawButton(const Rect& rect, Pixel fill, Pixel edge, bool shadow);

void DrawTab(const Rect& rect, const std::wstring& title, bool active);

// The head of an Inspector section: 26 pixels high from `top`.
void DrawSectionHeader(int32_t left, int32_t top, int32_t right, const std::wstring& title, bool expanded,
                       bool enabled);

// A label at (x + 10, y) and a box with a value from x + 120 to x + 286.
void DrawValueRow(int32_t x, int32_t y, const std::wstring& label, const std::wstring& value);

// A label and three boxes with the components. With `firstAction` >= 0 each box is a zone of `zones`,
// numbered from it on.
void DrawVectorRow(int32_t x, int32_t y, const std::wstring& label, Vec3 value, int32_t firstAction,
                   HitZoneList& zones);

// A label, a bar of 156 pixels from x + 88 on filled by `value` (limited to 0 .. 1), and the value as text.
void DrawSliderRow(int32_t x, int32_t y, const std::wstring& label, float value);

// Hue around the centre, saturation from it to the edge, with a mark at the place of `color` (0x00BBGGRR).
void DrawColorWheel(Point centre, int32_t radius, uint32_t color);

// A colour 0x00BBGGRR, red in the low byte. `hue` is taken modulo 1; `saturation` and `value` run from 0
// to 1.
uint32_t HsvToColor(float hue, float saturation, float value);

// What a point of the wheel's square picks: its hue and saturation (limited to the edge) at full value.
uint32_t ColorOnWheel(Point point, const Rect& square);

// Part of a bar left of a point, 0 .. 1. A bar narrower than 2 pixels counts as 1 wide.
float BarFraction(int32_t x, const Rect& bar);
