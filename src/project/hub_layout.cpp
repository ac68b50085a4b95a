#include "project/hub_layout.h"

#include <algorithm>

constexpr int32_t kRailWidth = 208, kNarrowWindow = 1000;  // pixels; a narrower window has no rail
constexpr int32_t kEdge = 24;                              // between the regions
constexpr int32_t kTop = 96, kRightEdge = 32, kBottomEdge = 36;
constexpr int32_t kRowPitch = 78, kRowHeight = 70;
constexpr int32_t kFirstRow = 72;  // below the list's top
constexpr int32_t kListEdge = 12;  // between the list's edge, its columns and their rows
constexpr int32_t kLeastColumn = 200;
constexpr int32_t kMenuWidth = 246, kMenuHeight = 112, kMenuEdge = 8;

static void PlaceRows(HubLayout& layout, size_t projects) {
    const Rect& list = layout.list;
    const int32_t room = list.bottom - kListEdge - (list.top + kFirstRow);
    const int32_t perColumn = std::max((room + kRowPitch - kRowHeight) / kRowPitch, 0);
    const int32_t space = Width(list) - 2 * kListEdge;
    const bool isLong = projects > static_cast<size_t>(perColumn);
    const int32_t columns = isLong && (space - kListEdge) / 2 >= kLeastColumn ? 2 : 1;
    const int32_t rowWidth = (space - (columns - 1) * kListEdge) / columns;
    if (rowWidth < 1) return;

    const size_t shown = std::min(projects, static_cast<size_t>(perColumn * columns));
    for (int32_t i = 0; i < static_cast<int32_t>(shown); ++i) {
        const int32_t left = list.left + kListEdge + i / perColumn * (rowWidth + kListEdge);
        const int32_t top = list.top + kFirstRow + i % perColumn * kRowPitch;
        layout.rows.push_back({left, top, left + rowWidth, top + kRowHeight});
    }
}

HubLayout LayoutHub(int32_t width, int32_t height, size_t projects) {
    HubLayout layout{.width = width, .height = height};
    const int32_t railWidth = width >= kNarrowWindow ? kRailWidth : 0;
    layout.rail = {0, 0, railWidth, height};
    layout.contentLeft = railWidth + kEdge;
    layout.openButton = {width - 220, 20, width - 32, 54};

    const int32_t right = width - kRightEdge, bottom = height - kBottomEdge;
    const int32_t left = right - std::clamp(width * 3 / 10, 280, 400);
    layout.templates = {left, kTop, right, bottom};
    layout.basicCard = {left + 22, kTop + 126, right - 22, kTop + 208};
    layout.emptyCard = {left + 22, kTop + 220, right - 22, kTop + 302};
    layout.list = {layout.contentLeft, kTop, left - kEdge, bottom};
    PlaceRows(layout, projects);
    return layout;
}

Rect ProjectMenuRect(Point corner, int32_t width, int32_t height) {
    const int32_t left = std::max(std::min(corner.x, width - kMenuEdge - kMenuWidth), kMenuEdge);
    const int32_t top = std::max(std::min(corner.y, height - kMenuEdge - kMenuHeight), kMenuEdge);
    return {left, top, left + kMenuWidth, top + kMenuHeight};
}
