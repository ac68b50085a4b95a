// Keeping a number in its range, and asking whether it is.
#pragma once

#include <cstddef>
#include <cstdint>

// True when `index` names one of `count` items.
constexpr bool IsIndexOf(int32_t index, size_t count) {
    return index >= 0 && static_cast<size_t>(index) < count;
}

// `value` limited to low .. high. A value that is not a number counts as too low, so that it never reaches a
// conversion to an integer.
template <typename Number>
constexpr Number Limit(Number value, Number low, Number high) {
    if (!(value > low)) return low;
    return value < high ? value : high;
}
