#include "blueprint/visible_nodes.h"

#include "blueprint/blueprint_layout.h"
#include "blueprint/canvas_cover.h"

#include <algorithm>
#include <array>

// A part of a node's rectangle, given from its top left corner.
static Rect PartOf(const Rect& node, const Rect& part) {
    return {node.left + part.left, node.top + part.top, node.left + part.right, node.top + part.bottom};
}

// Where the texts are, with room for what letters reach beyond their cells.
static Rect TitlePart(const Rect& node) { return PartOf(node, {8, 2, kNodeWidth - 8, 26}); }
static Rect LabelsPart(const Rect& node) { return PartOf(node, {8, 36, kNodeWidth - 8, 58}); }

// All that a button with a shadow fills: itself and its two shadows.
static std::array<Rect, 3> FilledBy(const Rect& node) {
    return {node, PartOf(node, {2, 2, kNodeWidth + 2, kNodeHeight + 2}),
            PartOf(node, {4, 5, kNodeWidth + 4, kNodeHeight + 5})};
}

std::vector<VisibleNode> VisibleNodes(std::span<const BlueprintNode> nodes, const Rect& canvas) {
    CanvasCover cover = StartCover(canvas);
    const auto isHidden = [&cover](const Rect& rect) { return IsCovered(cover, rect); };
    std::vector<VisibleNode> visible;
    for (size_t i = nodes.size(); i-- > 0;) {
        const Rect rect = NodeRect(nodes[i]);
        const auto filled = FilledBy(rect);
        if (std::ranges::all_of(filled, isHidden)) continue;
        visible.push_back(
            {.index = i, .title = !isHidden(TitlePart(rect)), .labels = !isHidden(LabelsPart(rect))});
        for (const Rect& part : filled) Cover(cover, part);
    }
    std::ranges::reverse(visible);
    return visible;
}
