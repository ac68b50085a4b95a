#include "editor/layout.h"

#include <algorithm>

constexpr int32_t kMinViewportWidth = 220;
constexpr int32_t kKeptAboveBottom = 162;  // the bottom panel leaves this much of the height
constexpr int32_t kSplitterReach = 3;      // pixels to each side that grab an edge

EditorLayout LayoutEditor(const PanelLayout& panels, int32_t width, int32_t height) {
    EditorLayout layout{.width = width, .height = height};
    layout.bottomTop = std::max(height - panels.bottomHeight, kTopBarHeight);
    layout.inspectorLeft = std::max(width - panels.inspectorWidth, 0);
    layout.topBar = {0, 0, width, kTopBarHeight};
    layout.hierarchy = {0, kTopBarHeight, panels.hierarchyWidth, layout.bottomTop};
    layout.inspector = {layout.inspectorLeft, kTopBarHeight, width, layout.bottomTop};
    layout.bottom = {0, layout.bottomTop, width, height};

    // Inside the client area, whatever the panels: 3D drawing relies on it.
    const int32_t left = std::clamp(panels.hierarchyWidth, 0, std::max(width, 0));
    const int32_t top = std::min(kTopBarHeight, std::max(height, 0));
    layout.viewport = {left, top, std::max(std::min(layout.inspectorLeft, width), left),
                       std::max(std::min(layout.bottomTop, height), top)};
    return layout;
}

// The bottom panel is limited by the height alone. At the sides the viewport keeps its least width as long as
// both panels can shrink: the Inspector gives way first and the Hierarchy after it, each down to its own
// least width. A window too narrow for even that shows no side panels.
PanelLayout FitPanelsToWindow(PanelLayout panels, int32_t width, int32_t height) {
    if (width < 1 || height < 1) return panels;
    panels.bottomHeight = std::min(std::max(panels.bottomHeight, kMinBottomHeight),
                                   std::max(height - kKeptAboveBottom, kMinBottomHeight));

    const int32_t available = std::max(width - kMinViewportWidth, 0);
    if (available < 1) {
        panels.hierarchyWidth = panels.inspectorWidth = 0;
        return panels;
    }
    panels.inspectorWidth = std::min(std::max(panels.inspectorWidth, kMinInspectorWidth),
                                     std::max(available, kMinInspectorWidth));
    panels.hierarchyWidth = std::min(std::max(panels.hierarchyWidth, kMinHierarchyWidth),
                                     std::max(available, kMinHierarchyWidth));

    int32_t over = panels.hierarchyWidth + panels.inspectorWidth - available;
    if (over <= 0) return panels;
    const int32_t cut = std::min(std::max(panels.inspectorWidth - kMinInspectorWidth, 0), over);
    panels.inspectorWidth -= cut;
    over -= cut;
    if (over > 0) panels.hierarchyWidth = std::max(panels.hierarchyWidth - over, kMinHierarchyWidth);
    return panels;
}

bool IsInInspectorBand(Point p, const EditorLayout& layout) {
    return p.x >= layout.inspectorLeft && p.y >= layout.inspector.top && p.y < layout.inspector.bottom;
}

static bool IsNear(int32_t position, int32_t edge) {
    return position >= edge - kSplitterReach && position < edge + kSplitterReach;
}

// The upright edges first: where they meet the bottom edge, they end.
std::optional<PanelEdge> SplitterHitTest(Point p, const PanelLayout& panels, int32_t width, int32_t height) {
    const EditorLayout layout = LayoutEditor(panels, width, height);
    const bool besidePanels = p.y >= kTopBarHeight && p.y < layout.bottomTop;
    if (besidePanels && IsNear(p.x, panels.hierarchyWidth)) return PanelEdge::HierarchyRight;
    if (besidePanels && IsNear(p.x, layout.inspectorLeft)) return PanelEdge::InspectorLeft;
    if (p.x >= 0 && p.x < width && IsNear(p.y, layout.bottomTop)) return PanelEdge::BottomTop;
    return std::nullopt;
}
