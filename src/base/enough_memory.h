// Memory that does not suffice, as an ordinary failure.
#pragma once

#include <new>

// What `act` answers; false when memory does not suffice for it. `act` must leave the state whole at every
// step that takes memory.
template <typename Act>
bool WithEnoughMemory(Act act) {
    try {
        return act();
    } catch (const std::bad_alloc&) {
        return false;
    }
}
