#include "platform/clock.h"

#include "doctest/doctest.h"

TEST_CASE("the clock never goes back, and a sleep takes at least most of its time") {
    const double start = MonotonicSeconds();
    double last = start;
    for (int32_t i = 0; i < 1000; ++i) {
        const double now = MonotonicSeconds();
        CHECK(now >= last);
        last = now;
    }
    SleepMilliseconds(50);
    CHECK(MonotonicSeconds() - start > 0.03);  // the system's timer may tick early by its own grain
}
