// Where the regions of the Scene editor lie.
#pragma once

#include "base/rect.h"
#include "state/gesture.h"
#include "state/panel_layout.h"

#include <cstdint>
#include <optional>

constexpr int32_t kTopBarHeight = 42;
constexpr int32_t kMinHierarchyWidth = 170, kMinInspectorWidth = 320, kMinBottomHeight = 96;

struct EditorLayout {
    int32_t width = 0, height = 0;  // of the client area, pixels
    int32_t bottomTop = 0;          // top of the bottom panel, never above the top bar's end
    int32_t inspectorLeft = 0;      // never negative
    Rect topBar{};
    Rect hierarchy{};
    Rect inspector{};
    Rect viewport{};  // may be empty
    Rect bottom{};
};

EditorLayout LayoutEditor(const PanelLayout& panels, int32_t width, int32_t height);

// The sizes limited so that the viewport keeps 220 pixels where it can: the Inspector gives way first, down
// to its least width, then the Hierarchy. Both are 0 in a window of 220 pixels or less. Unchanged without a
// client area.
PanelLayout FitPanelsToWindow(PanelLayout panels, int32_t width, int32_t height);

// Where a drag is let go over the Inspector: the panel, and all that lies right of it, also beyond the
// window.
bool IsInInspectorBand(Point p, const EditorLayout& layout);

// The panel edge under a point, none elsewhere. The vertical ones win at a corner.
std::optional<PanelEdge> SplitterHitTest(Point p, const PanelLayout& panels, int32_t width, int32_t height);
