// Where the first window lies.
#pragma once

#include <windows.h>

// `wanted` moved into the work area, and made smaller on the sides that do not fit into it. Both in pixels of
// the screen.
RECT FitIntoWorkArea(const RECT& wanted, const RECT& workArea);
