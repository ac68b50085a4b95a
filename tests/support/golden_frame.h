// Whole frames of the program as golden pictures.
#pragma once

#include <string>

// Loads the program's icons from its assets, so that frames show them.
void LoadTestIcons();

// Draws a frame. True when its pixels, and the list of its texts and images, are the golden ones of that
// name.
bool FrameMatchesGolden(const std::string& name);
