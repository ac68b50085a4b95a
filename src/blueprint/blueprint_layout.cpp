#include "blueprint/blueprint_layout.h"

#include <algorithm>

constexpr int32_t kDetailsWidth = 280, kNarrowestCanvasRight = 520;
constexpr int32_t kFarAway = 1'000'000;  // pixels; beyond every window

// Where links leave and enter a node, pixels from its corner.
constexpr int32_t kOutputX = 180, kInputX = 10, kPinY = 65;

constexpr int32_t kMenuWidth = 190, kMenuHeight = 122;
constexpr int32_t kWindowEdge = 8;  // kept free around the menu
constexpr int32_t kHighestMenu = 52;

BlueprintLayout LayoutBlueprint(int32_t width, int32_t height) {
    const auto [left, top] = kCanvasOrigin;
    const int32_t right = std::max(width - kDetailsWidth, kNarrowestCanvasRight);
    const int32_t bottom = std::max(height, top);
    return {.width = width,
            .height = height,
            .topBar{0, 0, width, top},
            .sceneButton{14, 9, 96, 36},
            .saveButton{104, 9, 186, 36},
            .palette{0, top, left, bottom},
            .canvas{left, top, right, bottom},
            .details{right, top, std::max(width, right), bottom}};
}

Rect NodeRect(const BlueprintNode& node) {
    const int32_t x = kCanvasOrigin.x + std::clamp(node.x, -kFarAway, kFarAway);
    const int32_t y = kCanvasOrigin.y + std::clamp(node.y, -kFarAway, kFarAway);
    return {x, y, x + kNodeWidth, y + kNodeHeight};
}

static Point PinAt(const BlueprintNode& node, int32_t x) {
    const Rect rect = NodeRect(node);
    return {rect.left + x, rect.top + kPinY};
}

Point InputPin(const BlueprintNode& node) { return PinAt(node, kInputX); }
Point OutputPin(const BlueprintNode& node) { return PinAt(node, kOutputX); }

int32_t NodeAt(Point point, const std::vector<BlueprintNode>& nodes, const BlueprintLayout& layout) {
    if (!Contains(layout.canvas, point)) return -1;
    for (size_t i = nodes.size(); i-- > 0;) {
        if (Contains(NodeRect(nodes[i]), point)) return static_cast<int32_t>(i);
    }
    return -1;
}

// The pixels from one corner to the other, both included, clipped to the canvas. In 64 bits: files may place
// nodes anywhere in 32, and the sums exceed that.
static Rect CutSegment(int64_t fromX, int64_t fromY, int64_t toX, int64_t toY, const Rect& canvas) {
    const auto cut = [](int64_t value, int32_t low, int32_t high) {
        return static_cast<int32_t>(std::clamp<int64_t>(value, low, high));
    };
    return {cut(std::min(fromX, toX), canvas.left, canvas.right),
            cut(std::min(fromY, toY), canvas.top, canvas.bottom),
            cut(std::max(fromX, toX) + 1, canvas.left, canvas.right),
            cut(std::max(fromY, toY) + 1, canvas.top, canvas.bottom)};
}

std::array<Rect, 3> LinkSegments(const BlueprintNode& from, const BlueprintNode& to, const Rect& canvas) {
    const int64_t startX = int64_t{from.x} + kCanvasOrigin.x + kOutputX;
    const int64_t startY = int64_t{from.y} + kCanvasOrigin.y + kPinY;
    const int64_t endX = int64_t{to.x} + kCanvasOrigin.x + kInputX;
    const int64_t endY = int64_t{to.y} + kCanvasOrigin.y + kPinY;
    const int64_t middle = (startX + endX) / 2;
    return {CutSegment(startX, startY, middle, startY, canvas),
            CutSegment(middle, startY, middle, endY, canvas), CutSegment(middle, endY, endX, endY, canvas)};
}

// The right and lower edges are limited first, so a menu near them moves to the left and up. In a window
// smaller than the menu the other two limits cut it instead.
Rect AddNodeMenuRect(Point corner, int32_t width, int32_t height) {
    const int32_t right = std::min(width - kWindowEdge, corner.x + kMenuWidth);
    const int32_t bottom = std::min(height - kWindowEdge, corner.y + kMenuHeight);
    return {std::max(right - kMenuWidth, kWindowEdge), std::max(bottom - kMenuHeight, kHighestMenu), right,
            bottom};
}

// A position on the screen as a place on the canvas: less the origin and `offset`, limited to low .. high.
// If high lies below low, the canvas is too small and low wins.
static int32_t PlaceOnCanvas(int32_t position, int32_t origin, int32_t offset, int32_t low, int32_t high) {
    const int64_t place = int64_t{position} - offset - origin;
    return static_cast<int32_t>(std::clamp<int64_t>(place, low, std::max(low, high)));
}

Point PlaceOfAddedNode(Point corner, const BlueprintLayout& layout) {
    return {PlaceOnCanvas(corner.x, kCanvasOrigin.x, 0, 12, layout.canvas.right - 440),
            PlaceOnCanvas(corner.y, kCanvasOrigin.y, 0, 12, layout.height - 144)};
}

Point PlaceOfDraggedNode(Point pointer, Point grab, const BlueprintLayout& layout) {
    return {PlaceOnCanvas(pointer.x, kCanvasOrigin.x, grab.x, 8, layout.canvas.right - 432),
            PlaceOnCanvas(pointer.y, kCanvasOrigin.y, grab.y, 8, layout.height - 138)};
}
