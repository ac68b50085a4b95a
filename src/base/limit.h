// Keeping a number in its range, whatever it is.
#pragma once

// `value` limited to low .. high. Not a number counts as too low, so that it never reaches a conversion to an
// integer.
template <typename Number>
constexpr Number Limit(Number value, Number low, Number high) {
    if (!(value > low)) return low;
    return value < high ? value : high;
}
