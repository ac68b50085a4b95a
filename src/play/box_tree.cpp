#include "play/box_tree.h"

#include <immintrin.h>

#include <algorithm>
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

// Children stand behind their parents.
void MeasureNodes(BoxTree& tree) {
    for (auto node = tree.nodes.rbegin(); node != tree.nodes.rend(); ++node) {
        if (node->child < 0) {
            MeasureNode(*node, tree);
            continue;
        }
        node->bounds = tree.nodes[static_cast<size_t>(node->child)].bounds;
        Include(tree.nodes[static_cast<size_t>(node->child) + 1].bounds, node->bounds);
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
// A box that others are compared with: BoxesTouch without a branch for every axis.
struct TouchTest {
    __m128 min, max;  // min stands one lane higher, as the second load of a box has it

    explicit TouchTest(const Box& box)
        : min(_mm_setr_ps(0, box.min.x, box.min.y, box.min.z)),
          max(_mm_setr_ps(box.max.x, box.max.y, box.max.z, 0)) {}

    bool operator()(const Box& other) const {
        static_assert(sizeof(Box) == 6 * sizeof(float));
        const __m128 from = _mm_loadu_ps(&other.min.x), to = _mm_loadu_ps(&other.min.z);
        const int begins = _mm_movemask_ps(_mm_cmple_ps(from, max)) & 0b0111;
        const int ends = _mm_movemask_ps(_mm_cmple_ps(min, to)) & 0b1110;
        return begins + ends == 0b0111 + 0b1110;
    }
};

// A search for the lowest touching number.
struct Search {
    TouchTest touches;
    int32_t after, except;
    int32_t best = std::numeric_limits<int32_t>::max();

    bool IsWorthwhile(const BoxTreeNode& node) const {
        return node.highest > after && node.lowest < best && touches(node.bounds);
    }

    void LookAt(const NumberedBox& candidate) {
        if (candidate.number <= after || candidate.number >= best || candidate.number == except) return;
        if (touches(candidate.box)) best = candidate.number;
    }
};
}  // namespace

int32_t NextTouching(const Box& box, int32_t after, int32_t except, const BoxTree& tree) {
    Search search{TouchTest(box), after, except};
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

bool FindTouching(const Box& box, int32_t except, size_t most, const BoxTree& tree,
                  std::vector<int32_t>& found) {
    const TouchTest touches(box);
    found.clear();
    const auto lookAt = [&](const NumberedBox& candidate) {
        if (touches(candidate.box) && candidate.number != except) found.push_back(candidate.number);
    };
    for (size_t slot = tree.leaves.size(); slot < tree.boxes.size(); ++slot) lookAt(tree.boxes[slot]);

    std::array<int32_t, kDeepest> open{};
    size_t openCount = 0;
    if (!tree.nodes.empty()) open[openCount++] = 0;
    while (openCount > 0 && found.size() <= most) {
        const BoxTreeNode& node = tree.nodes[open[--openCount]];
        if (!touches(node.bounds)) continue;
        if (node.child < 0) {
            for (int32_t slot = node.begin; slot < node.end; ++slot) lookAt(tree.boxes[slot]);
            continue;
        }
        assert(openCount + 2 <= open.size());
        open[openCount++] = node.child;
        open[openCount++] = node.child + 1;
    }
    std::ranges::sort(found);
    return found.size() <= most;
}
