// Which nodes are worth drawing. A file may place thousands of them on each other or beyond the canvas, and
// drawing all would take longer than a frame.
#pragma once

#include "base/rect.h"
#include "state/blueprint_node.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// A node whose box or shadow is at least partly visible.
struct VisibleNode {
    size_t index = 0;
    bool title = true, labels = true;  // whether some of it is visible too

    friend bool operator==(const VisibleNode&, const VisibleNode&) = default;
};

// The nodes that later ones with their shadows do not cover entirely, from the lowest to the topmost.
std::vector<VisibleNode> VisibleNodes(std::span<const BlueprintNode> nodes, const Rect& canvas);

// One bit per pixel of the area.
struct CanvasCover {
    Rect area{};
    size_t wordsPerRow = 0;
    std::vector<uint64_t> words{};
};

// Nothing of `area` is covered yet.
CanvasCover StartCover(const Rect& area);

// True when every pixel of the rectangle is covered or lies outside the area.
bool IsCovered(const CanvasCover& cover, const Rect& rect);

void Cover(CanvasCover& cover, const Rect& rect);
