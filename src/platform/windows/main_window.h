// The program's window as the other answers of this folder need it, and how it looks before it is first seen.
#pragma once

#include "platform/windows/window_icon.h"

#include <windows.h>

// Null before it is opened and after it is closed.
HWND MainWindow();

// Gives the main window, while it is hidden, its dark caption and its icons, lets files be dropped on it and
// moves it onto the screen.
void DressWindow(HWND window);

// Shows the icons in the title bar and in the task list. Nothing without a window.
void ShowWindowIcons(const WindowIcons& icons);

// `wanted` moved into the work area, and made smaller on the sides that do not fit into it. Both in pixels of
// the screen.
RECT FitIntoWorkArea(const RECT& wanted, const RECT& workArea);
