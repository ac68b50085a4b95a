// The three panel sizes that the user drags.
#pragma once

#include <cstdint>

struct PanelLayout {
    int32_t hierarchyWidth = 230;  // pixels from the left edge of the window
    int32_t inspectorWidth = 320;  // pixels from the right edge
    int32_t bottomHeight = 132;    // pixels from the bottom edge

    friend constexpr bool operator==(const PanelLayout&, const PanelLayout&) = default;
};
