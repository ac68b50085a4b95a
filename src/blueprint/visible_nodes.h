// Which nodes are worth drawing. Thousands of them may lie on each other or beyond the canvas, and drawing
// all would take longer than a frame.
#pragma once

#include "base/rect.h"
#include "state/blueprint_node.h"

#include <cstddef>
#include <span>
#include <vector>

// A node of which some of the box or its shadow is to be seen.
struct VisibleNode {
    size_t index = 0;
    bool title = true, labels = true;  // whether some of these is, too

    friend bool operator==(const VisibleNode&, const VisibleNode&) = default;
};

// What later nodes with their shadows leave of each node on the canvas, from the lowest to the topmost.
std::vector<VisibleNode> VisibleNodes(std::span<const BlueprintNode> nodes, const Rect& canvas);
