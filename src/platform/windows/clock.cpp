#include "platform/clock.h"

#include <windows.h>

double MonotonicSeconds() {
    LARGE_INTEGER frequency{}, counter{};
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&counter);
    return static_cast<double>(counter.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double WorkSeconds() { return MonotonicSeconds(); }

void SleepMilliseconds(uint32_t milliseconds) { Sleep(milliseconds); }
