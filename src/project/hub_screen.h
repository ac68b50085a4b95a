// The screen of the Project Hub: where everything lies, and the picture of it.
#pragma once

#include "base/rect.h"

#include <cstddef>
#include <cstdint>
#include <vector>

struct HubLayout {
    int32_t width = 0, height = 0;  // of the client area, pixels
    Rect rail{};                    // along the left; empty in a narrow window
    int32_t contentLeft = 0;        // of the headings and the list
    Rect openButton{};
    Rect list{};
    std::vector<Rect> rows{};  // one per project that fits, in list order
    Rect templates{};          // the panel on the right
    Rect basicCard{};
    Rect emptyCard{};
};

// `projects` is the number of entries. Rows that do not fit into one column continue in a second one.
HubLayout LayoutHub(int32_t width, int32_t height, size_t projects);

// The menu of a project, opened at `corner` and moved so that it stays 8 pixels inside the window.
Rect ProjectMenuRect(Point corner, int32_t width, int32_t height);

// Draws the whole screen. What lies under the pointer and can be clicked is lit up.
void DrawProjectHub(const HubLayout& layout);
