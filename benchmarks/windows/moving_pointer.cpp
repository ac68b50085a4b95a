#include "moving_pointer.h"

#include "platform/clock.h"

#include <windows.h>

MovingPointer::MovingPointer(const std::wstring& windowTitle)
    : thread([this, windowTitle] { Run(windowTitle); }) {}

MovingPointer::~MovingPointer() {
    ends = true;
    thread.join();
}

void MovingPointer::Run(const std::wstring& windowTitle) {
    const HWND window = FindWindowW(nullptr, windowTitle.c_str());
    for (int i = 0; !ends; ++i) {
        Sleep(static_cast<DWORD>(7 + i % 5));
        if (moved != 0) continue;
        moved = MonotonicSeconds();
        PostMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(600 + i % 2, 300));
    }
}
