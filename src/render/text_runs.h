// Texts kept as pixels. The system needs tens of microseconds for a string and an editor frame shows a
// hundred or more, mostly the same ones at the same place as in the frame before.
#pragma once

#include "base/color.h"

#include <cstdint>
#include <string>

// Draws a text out of kept pixels, so that the picture is the one that the system would make. False, with
// nothing drawn, when the text is new, hangs over an edge of the frame buffer, or lies on more than one
// colour: the system must draw it then. A text asked for a second time is kept from then on.
bool DrawKeptText(int32_t x, int32_t y, const std::wstring& text, TextColor color, int32_t height,
                  int32_t weight);

// Gives the memory back. The next texts are new again.
void ForgetKeptTexts();
