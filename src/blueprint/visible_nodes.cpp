#include "blueprint/visible_nodes.h"

#include "blueprint/blueprint_layout.h"

#include <algorithm>
#include <array>
#include <utility>

// A rectangle given from the top left corner of a node.
static Rect PartOf(const Rect& node, const Rect& part) {
    return {node.left + part.left, node.top + part.top, node.left + part.right, node.top + part.bottom};
}

// Where the texts are, with room for letters that reach beyond their cells.
static Rect TitlePart(const Rect& node) { return PartOf(node, {8, 2, kNodeWidth - 8, 26}); }
static Rect LabelsPart(const Rect& node) { return PartOf(node, {8, 36, kNodeWidth - 8, 58}); }

// Everything that a node fills: its box and its two shadows.
static std::array<Rect, 3> FilledBy(const Rect& node) {
    return {node, PartOf(node, {2, 2, kNodeWidth + 2, kNodeHeight + 2}),
            PartOf(node, {4, 5, kNodeWidth + 4, kNodeHeight + 5})};
}

// From the topmost node down: a node is visible if some pixel of its box or shadow is not yet covered by the
// nodes above it; what it fills is covered from then on. The list is then reversed, because nodes are drawn
// from the lowest up. A hidden node costs a look at a few words of bits instead of a drawn box with two
// texts.
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

constexpr int32_t kWordBits = 64;

namespace {

// The words of a row that a range of columns touches. Between the first and the last word all bits count;
// the masks give the bits of these two. If both are the same word, the first mask holds all bits and the
// last one none.
struct ColumnBits {
    size_t first = 0, last = 0;
    uint64_t firstMask = 0, lastMask = 0;
};

}  // namespace

// `left` < `right`, both counted from the area's left edge.
static ColumnBits BitsOf(int32_t left, int32_t right) {
    ColumnBits bits{.first = static_cast<size_t>(left / kWordBits),
                    .last = static_cast<size_t>((right - 1) / kWordBits),
                    .firstMask = ~uint64_t{0} << (left % kWordBits),
                    .lastMask = ~uint64_t{0} >> (kWordBits - 1 - (right - 1) % kWordBits)};
    if (bits.first == bits.last) bits.firstMask &= std::exchange(bits.lastMask, 0);
    return bits;
}

// The part of a rectangle inside the area, counted from the area's corner. Empty without one.
static Rect PartInside(const Rect& area, const Rect& rect) {
    const Rect part{std::max(rect.left, area.left) - area.left, std::max(rect.top, area.top) - area.top,
                    std::min(rect.right, area.right) - area.left,
                    std::min(rect.bottom, area.bottom) - area.top};
    return Width(part) > 0 && Height(part) > 0 ? part : Rect{};
}

CanvasCover StartCover(const Rect& area) {
    const auto columns = static_cast<size_t>(std::max(Width(area), 0));
    const auto rows = static_cast<size_t>(std::max(Height(area), 0));
    const size_t wordsPerRow = (columns + kWordBits - 1) / kWordBits;
    return {area, wordsPerRow, std::vector<uint64_t>(wordsPerRow * rows)};
}

bool IsCovered(const CanvasCover& cover, const Rect& rect) {
    const Rect part = PartInside(cover.area, rect);
    if (part == Rect{}) return true;
    const ColumnBits bits = BitsOf(part.left, part.right);
    for (int32_t y = part.top; y < part.bottom; ++y) {
        const uint64_t* row = cover.words.data() + static_cast<size_t>(y) * cover.wordsPerRow;
        if ((bits.firstMask & ~row[bits.first]) != 0 || (bits.lastMask & ~row[bits.last]) != 0) return false;
        for (size_t word = bits.first + 1; word < bits.last; ++word) {
            if (~row[word] != 0) return false;
        }
    }
    return true;
}

void Cover(CanvasCover& cover, const Rect& rect) {
    const Rect part = PartInside(cover.area, rect);
    if (part == Rect{}) return;
    const ColumnBits bits = BitsOf(part.left, part.right);
    for (int32_t y = part.top; y < part.bottom; ++y) {
        uint64_t* row = cover.words.data() + static_cast<size_t>(y) * cover.wordsPerRow;
        row[bits.first] |= bits.firstMask;
        row[bits.last] |= bits.lastMask;
        for (size_t word = bits.first + 1; word < bits.last; ++word) row[word] = ~uint64_t{0};
    }
}
