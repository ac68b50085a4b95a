#include "play/box_tree.h"

#include <array>
#include <cassert>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

constexpr int32_t kBoxesInLeaf = 4;
constexpr int32_t kFewAdded = 32;  // added boxes that are not worth a new tree
constexpr size_t kDeepest = 64;    // more nodes than wait in a search; halving gives half as many
constexpr float kInfinity = std::numeric_limits<float>::infinity();

static float CentreOn(float Vec3::*axis, const NumberedBox& numbered) {
    const float centre = (numbered.box.min.*axis + numbered.box.max.*axis) / 2;
    return std::isnan(centre) ? 0 : centre;
}

// The axis along which the box is longest.
static float Vec3::*LongestAxis(const Box& box) {
    const Vec3 size = box.max - box.min;
    if (size.x >= size.y && size.x >= size.z) return &Vec3::x;
    return size.y >= size.z ? &Vec3::y : &Vec3::z;
}

static std::span<NumberedBox> BoxesOf(const BoxTreeNode& node, BoxTree& tree) {
    return std::span(tree.boxes)
        .subspan(static_cast<size_t>(node.begin), static_cast<size_t>(node.end - node.begin));
}

static void MeasureNode(BoxTreeNode& node, BoxTree& tree) {
    node.bounds = {{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}};
    node.lowest = std::numeric_limits<int32_t>::max();
    node.highest = -1;
    for (const NumberedBox& numbered : BoxesOf(node, tree)) {
        Include(numbered.box, node.bounds);
        node.lowest = std::min(node.lowest, numbered.number);
        node.highest = std::max(node.highest, numbered.number);
    }
}

// Gives the node two children with half of its boxes each, divided along the longest side.
static void DivideNode(int32_t index, BoxTree& tree) {
    const BoxTreeNode node = tree.nodes[index];
    float Vec3::*const axis = LongestAxis(node.bounds);
    const auto boxes = BoxesOf(node, tree);
    const int32_t middle = node.begin + (node.end - node.begin) / 2;
    std::nth_element(
        boxes.begin(), boxes.begin() + (middle - node.begin), boxes.end(),
        [axis](const NumberedBox& a, const NumberedBox& b) { return CentreOn(axis, a) < CentreOn(axis, b); });
    tree.nodes[index].child = static_cast<int32_t>(tree.nodes.size());
    for (const auto& [begin, end] : {std::pair{node.begin, middle}, std::pair{middle, node.end}}) {
        tree.nodes.push_back({.begin = begin, .end = end, .parent = index});
        MeasureNode(tree.nodes.back(), tree);
    }
}

static void NoteLeaf(int32_t index, BoxTree& tree) {
    for (int32_t slot = tree.nodes[index].begin; slot < tree.nodes[index].end; ++slot) {
        tree.leaves[slot] = index;
        tree.slots[tree.boxes[slot].number] = slot;
    }
}

BoxTree BuildBoxTree(std::vector<NumberedBox> boxes) {
    BoxTree tree{.boxes = std::move(boxes)};
    if (tree.boxes.empty()) return tree;

    tree.nodes.push_back({.end = static_cast<int32_t>(tree.boxes.size())});
    MeasureNode(tree.nodes[0], tree);
    tree.leaves.assign(tree.boxes.size(), 0);
    tree.slots.assign(static_cast<size_t>(tree.nodes[0].highest) + 1, -1);
    for (int32_t index = 0; index < static_cast<int32_t>(tree.nodes.size()); ++index) {
        const bool isLeaf = tree.nodes[index].end - tree.nodes[index].begin <= kBoxesInLeaf;
        if (isLeaf) {
            NoteLeaf(index, tree);
        } else {
            DivideNode(index, tree);
        }
    }
    return tree;
}

void AddBox(const NumberedBox& added, BoxTree& tree) {
    const auto number = static_cast<size_t>(added.number);
    if (tree.slots.size() <= number) tree.slots.resize(number + 1, -1);
    assert(tree.slots[number] < 0);
    tree.slots[number] = static_cast<int32_t>(tree.boxes.size());
    tree.boxes.push_back(added);

    const size_t inTree = tree.leaves.size(), outside = tree.boxes.size() - inTree;
    if (outside > kFewAdded + inTree / 4) tree = BuildBoxTree(std::move(tree.boxes));
}

void MoveBox(const NumberedBox& moved, BoxTree& tree) {
    const auto number = static_cast<size_t>(moved.number);
    if (number >= tree.slots.size() || tree.slots[number] < 0) return;
    const auto slot = static_cast<size_t>(tree.slots[number]);
    tree.boxes[slot].box = moved.box;
    if (slot >= tree.leaves.size()) return;
    for (int32_t index = tree.leaves[slot]; index >= 0; index = tree.nodes[index].parent) {
        if (Holds(tree.nodes[index].bounds, moved.box)) return;
        Include(moved.box, tree.nodes[index].bounds);
    }
}

namespace {
// A search for the lowest touching number.
struct Search {
    const Box& box;
    int32_t after, except;
    int32_t best = std::numeric_limits<int32_t>::max();

    bool IsWorthwhile(const BoxTreeNode& node) const {
        return node.highest > after && node.lowest < best && BoxesTouch(node.bounds, box);
    }

    void LookAt(const NumberedBox& candidate) {
        if (candidate.number <= after || candidate.number >= best || candidate.number == except) return;
        if (BoxesTouch(candidate.box, box)) best = candidate.number;
    }
};
}  // namespace

int32_t NextTouching(const Box& box, int32_t after, int32_t except, const BoxTree& tree) {
    Search search{box, after, except};
    for (size_t slot = tree.leaves.size(); slot < tree.boxes.size(); ++slot) search.LookAt(tree.boxes[slot]);

    std::array<int32_t, kDeepest> open{};
    size_t openCount = 0;
    if (!tree.nodes.empty()) open[openCount++] = 0;
    while (openCount > 0) {
        const BoxTreeNode& node = tree.nodes[open[--openCount]];
        if (!search.IsWorthwhile(node)) continue;
        if (node.child < 0) {
            for (int32_t slot = node.begin; slot < node.end; ++slot) search.LookAt(tree.boxes[slot]);
            continue;
        }
        // The half with the lower numbers comes out first: what it finds rules out more of the other.
        const bool firstIsLower = tree.nodes[node.child].lowest < tree.nodes[node.child + 1].lowest;
        assert(openCount + 2 <= open.size());
        open[openCount++] = node.child + firstIsLower;
        open[openCount++] = node.child + !firstIsLower;
    }
    return search.best == std::numeric_limits<int32_t>::max() ? -1 : search.best;
}
