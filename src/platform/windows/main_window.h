// The program's window, for the other answers of this folder.
#pragma once

#include "platform/windows/window_icon.h"

#include <windows.h>

// Null before it is opened and after it is closed.
HWND MainWindow();

// Shows the icons in the title bar and in the task list. Nothing without a window.
void ShowWindowIcons(const WindowIcons& icons);
