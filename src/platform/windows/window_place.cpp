#include "platform/windows/window_place.h"

#include <algorithm>

// One side: moved as far as it must, and cut to the room that there is.
static void FitSide(LONG low, LONG high, LONG& from, LONG& to) {
    const LONG length = std::min(to - from, high - low);
    from = std::clamp(from, low, high - length);
    to = from + length;
}

RECT FitIntoWorkArea(const RECT& wanted, const RECT& workArea) {
    RECT place = wanted;
    FitSide(workArea.left, workArea.right, place.left, place.right);
    FitSide(workArea.top, workArea.bottom, place.top, place.bottom);
    return place;
}
