// Time.
#pragma once

#include <cstdint>

// Seconds since some fixed moment, never going back.
double MonotonicSeconds();

void SleepMilliseconds(uint32_t milliseconds);
