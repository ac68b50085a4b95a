// Time.
#pragma once

#include <cstdint>

// Seconds since some fixed moment, never going back.
double MonotonicSeconds();

// The same for measuring how long work takes that is under way. In tests it stands still unless told
// otherwise.
double WorkSeconds();

void SleepMilliseconds(uint32_t milliseconds);
