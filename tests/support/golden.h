// Pictures that the program must draw again, kept as PNG files in tests/golden, and the texts on them.
#pragma once

#include "platform/image_decoder.h"
#include "support/image_bytes.h"

#include <string>

// True when the frame buffer equals the golden picture of that name, pixel by pixel. A picture that differs,
// or is new, is written to the build folder; both are named, and where they differ. With --accept on the
// command line it becomes the golden one.
bool MatchesGolden(const std::string& name);

// The same for the texts and images that were drawn since the test last emptied their lists: one per line in
// tests/golden/<name>.txt, as "text <x> <y> <colour 0x00BBGGRR> <height> <weight> <string>" and
// "image <left> <top> <right> <bottom> <file name>".
bool MatchesGoldenText(const std::string& name);

// In words, where a picture is another than expected: the smallest rectangle around all pixels that differ,
// and the first of them. Empty when none does.
std::string PictureDifference(const DecodedImage& expected, const TestImage& drawn);

// The same of texts: the first line that differs, as expected and as drawn.
std::string LineDifference(const std::string& expected, const std::string& drawn);

// Set by the test program's command line.
extern bool acceptGolden;
