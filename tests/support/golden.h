// Pictures that the program must draw again, kept as PNG files in tests/golden, and the texts on them.
#pragma once

#include <string>

// True when the frame buffer equals the golden picture of that name, pixel by pixel. A picture that differs,
// or is new, is written to the build folder and both are named. With --accept on the command line it becomes
// the golden one.
bool MatchesGolden(const std::string& name);

// The same for the texts and images that were drawn since the test last emptied their lists: one per line in
// tests/golden/<name>.txt, as "text <x> <y> <colour 0x00BBGGRR> <height> <weight> <string>" and
// "image <left> <top> <right> <bottom> <file name>".
bool MatchesGoldenText(const std::string& name);

// Set by the test program's command line.
extern bool acceptGolden;
