// Where everything on the Blueprint screen lies. Only arithmetic; places are pixels of the client area.
#pragma once

#include "base/rect.h"
#include "state/blueprint_node.h"

#include <array>
#include <cstdint>
#include <vector>

// The canvas begins here; the places of nodes count from this corner.
constexpr Point kCanvasOrigin{230, 44};

constexpr int32_t kNodeWidth = 190, kNodeHeight = 82;

struct BlueprintLayout {
    int32_t width = 0, height = 0;  // of the client area
    Rect topBar{};
    Rect sceneButton{};
    Rect saveButton{};
    Rect palette{};
    Rect canvas{};   // at least 290 wide, beyond the right edge of a narrow window; empty in a very low one
    Rect details{};  // empty in a narrow window
};

BlueprintLayout LayoutBlueprint(int32_t width, int32_t height);

// The rectangle of a node on the screen. A node that lies far beyond the canvas gets a nearer place, still
// beyond it.
Rect NodeRect(const BlueprintNode& node);

// The centres of the two pins of a node, where links enter and leave it. They move with its rectangle.
Point InputPin(const BlueprintNode& node);
Point OutputPin(const BlueprintNode& node);

// The index of the topmost node under a point of the canvas: the last in the list. -1 without one.
int32_t NodeAt(Point point, const std::vector<BlueprintNode>& nodes, const BlueprintLayout& layout);

// The three segments of a link from one node's output to the next one's input: across, down or up, across.
// Clipped to the canvas; a segment outside it is empty.
std::array<Rect, 3> LinkSegments(const BlueprintNode& from, const BlueprintNode& to, const Rect& canvas);

// The Add Node menu with its corner at a point, moved and cut so that it stays 8 pixels inside the window
// and below the top bar. Empty if the window has no room for it.
Rect AddNodeMenuRect(Point corner, int32_t width, int32_t height);

// Where on the canvas a node is added from a menu at `corner`.
Point PlaceOfAddedNode(Point corner, const BlueprintLayout& layout);

// Where on the canvas a node is dragged to that the pointer holds `grab` pixels from its corner. A dragged
// node may come a little nearer to the edges than an added one.
Point PlaceOfDraggedNode(Point pointer, Point grab, const BlueprintLayout& layout);
