// The window's icon, for the window.
#pragma once

#include <windows.h>

// Null when none was loaded.
HICON WindowIcon();
