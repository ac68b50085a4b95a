#include "platform/clock.h"

#include "platform/headless/headless.h"

#include <chrono>

double MonotonicSeconds() {
    if (!headless.clock.empty()) {
        const double now = headless.clock.front();
        headless.clock.pop_front();
        return now;
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

double WorkSeconds() { return headless.workTime += headless.workTimeStep; }

// Tests do not wait.
void SleepMilliseconds(uint32_t milliseconds) { headless.slept += milliseconds; }
