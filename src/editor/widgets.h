// The parts that every panel is built of. They take rectangles and values, and never an object. Those that
// can be clicked return where: whoever draws one registers that, and knows no coordinate of it.
#pragma once

#include "base/color.h"
#include "base/rect.h"
#include "base/vec3.h"

#include <array>
#include <cstdint>
#include <string>

// A frame of one pixel: its top and left edges in one colour, its bottom and right edges in another.
void DrawBoxEdges(const Rect& rect, Pixel topLeft, Pixel bottomRight);

// A button without its caption.
void DrawButton(const Rect& rect, Pixel fill, Pixel edge, bool shadow);

void DrawTab(const Rect& rect, const std::wstring& title, bool active);

// Where a section's header is clicked.
struct SectionMarks {
    Rect arrow{};   // opens and closes the section
    Rect remove{};  // the "[x]"
};

// The head of an Inspector section: 26 pixels high from `top`.
SectionMarks DrawSectionHeader(int32_t left, int32_t top, int32_t right, const std::wstring& title,
                               bool expanded, bool enabled);

// A label at (x + 10, y) and a box with a value from x + 120 to x + 286, cut with "..." at the box's edge.
// Returns the box with two pixels more below it.
Rect DrawValueRow(int32_t x, int32_t y, const std::wstring& label, const std::wstring& value);

// The path as such a row shows it: shortened in its middle where it is too long for the box.
std::wstring ValueRowPath(const std::wstring& path);

// A label and three boxes with the components. Returns the boxes.
std::array<Rect, 3> DrawVectorRow(int32_t x, int32_t y, const std::wstring& label, Vec3 value);

// A label, a bar of 156 pixels from x + 88 on filled by `value` (limited to 0 .. 1), and the value as text.
// Returns where the bar is clicked: its whole length, and a little higher than its knob.
Rect DrawSliderRow(int32_t x, int32_t y, const std::wstring& label, float value);

// Part of a bar left of a point, 0 .. 1. A bar narrower than 2 pixels counts as 1 wide.
float BarFraction(int32_t x, const Rect& bar);
