// Running out of memory as an ordinary failure.
#pragma once

#include <new>

// Returns what `act` returns, or false when memory runs out meanwhile. `act` must leave the state whole at
// every step that takes memory.
template <typename Act>
bool WithEnoughMemory(Act act) {
    try {
        return act();
    } catch (const std::bad_alloc&) {
        return false;
    }
}
