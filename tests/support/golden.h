// Pictures that the program must draw again, kept as PNG files in tests/golden.
#pragma once

#include <string>

// True when the frame buffer equals the golden picture of that name, pixel by pixel. A picture that differs,
// or is new, is written to the build folder and both are named. With --accept on the command line it becomes
// the golden one.
bool MatchesGolden(const std::string& name);

// Set by the test program's command line.
extern bool acceptGolden;
