#include "play/box_tree.h"

#include <immintrin.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

constexpr int32_t kFewAdded = 32;  // added boxes that do not yet justify a new tree
constexpr size_t kDeepest = 64;    // more nodes than wait in a search: three a level, and four boxes a node
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr Box kEmpty{{kInfinity, kInfinity, kInfinity}, {-kInfinity, -kInfinity, -kInfinity}};

// ---- Building. In go numbered boxes, out comes a tree with four parts to a node. The boxes are halved
// along the longest side of the space that they fill, and each half once more; a part of more than one box
// becomes a node in turn. Halving by count keeps the tree flat even if all boxes lie in one place.
// Neighbours end up together in memory, whatever their numbers.

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

namespace {

// Boxes that lie together in the tree.
using Part = std::span<NumberedBox>;

struct Halves {
    Part first, second;
};

}  // namespace

static Halves Halved(Part part) {
    Box bounds = kEmpty;
    for (const NumberedBox& numbered : part) Include(numbered.box, bounds);
    float Vec3::*const axis = LongestAxis(bounds);
    const size_t middle = part.size() / 2;
    std::nth_element(
        part.begin(), part.begin() + static_cast<ptrdiff_t>(middle), part.end(),
        [axis](const NumberedBox& a, const NumberedBox& b) { return CentreOn(axis, a) < CentreOn(axis, b); });
    return {part.first(middle), part.subspan(middle)};
}

static int32_t LowestOf(Part part) {
    return part.empty() ? std::numeric_limits<int32_t>::max()
                        : std::ranges::min_element(part, {}, &NumberedBox::number)->number;
}

// The four parts of a node, the one with the lowest number first, because a search for the lowest number
// looks there first.
static std::array<Part, 4> Divided(Part part) {
    std::array<Part, 4> parts;
    if (part.size() <= parts.size()) {
        for (size_t i = 0; i < parts.size(); ++i)
            parts[i] = part.subspan(std::min(i, part.size()), i < part.size() ? 1 : 0);
    } else {
        const auto [first, second] = Halved(part);
        const Halves a = Halved(first), b = Halved(second);
        parts = {a.first, a.second, b.first, b.second};
    }
    std::ranges::sort(parts, {}, LowestOf);
    return parts;
}

static void SetBounds(BoxTreeNode& node, size_t part, const Box& box) {
    const float low[3] = {box.min.x, box.min.y, box.min.z}, high[3] = {box.max.x, box.max.y, box.max.z};
    for (size_t axis = 0; axis < 3; ++axis) {
        node.min[axis][part] = low[axis];
        node.max[axis][part] = high[axis];
    }
}

static Box BoundsOf(const BoxTreeNode& node, size_t part) {
    return {{node.min[0][part], node.min[1][part], node.min[2][part]},
            {node.max[0][part], node.max[1][part], node.max[2][part]}};
}

static Box BoundsOfAll(const BoxTreeNode& node) {
    Box bounds = kEmpty;
    for (size_t part = 0; part < 4; ++part) Include(BoundsOf(node, part), bounds);
    return bounds;
}

constexpr int32_t kNothing = std::numeric_limits<int32_t>::min();  // below a part that is not there

// From the last node to the first: nodes stand behind those above them, so what is below is measured
// already.
void MeasureNodes(BoxTree& tree) {
    for (auto node = tree.nodes.rbegin(); node != tree.nodes.rend(); ++node) {
        for (size_t part = 0; part < 4; ++part) {
            const int32_t below = node->below[part];
            if (below == kNothing) continue;
            SetBounds(*node, part,
                      below < 0 ? tree.boxes[tree.slots[~below]].box : BoundsOfAll(tree.nodes[below]));
        }
    }
}

BoxTree BuildBoxTree(std::vector<NumberedBox> boxes) {
    BoxTree tree{.boxes = std::move(boxes)};
    if (tree.boxes.empty()) return tree;

    const NumberedBox* const first = tree.boxes.data();
    std::vector<Part> open{tree.boxes};  // by node
    tree.nodes.emplace_back();
    tree.numbers.emplace_back();
    tree.parts.assign(tree.boxes.size(), 0);
    const auto last = std::ranges::max_element(tree.boxes, {}, &NumberedBox::number);
    tree.slots.assign(static_cast<size_t>(last->number) + 1, -1);
    for (size_t index = 0; index < tree.nodes.size(); ++index) {
        const std::array<Part, 4> parts = Divided(open[index]);
        for (size_t i = 0; i < 4; ++i) {
            const Part& part = parts[i];
            const auto place = static_cast<int32_t>(4 * index + i);
            int32_t below = kNothing;
            if (part.size() == 1) {
                const auto slot = static_cast<int32_t>(part.data() - first);
                below = ~part.front().number;
                tree.parts[slot] = place;
                tree.slots[part.front().number] = slot;
            } else if (part.size() > 1) {
                below = static_cast<int32_t>(tree.nodes.size());
                tree.nodes.push_back({.parent = place});
                tree.numbers.emplace_back();
                open.push_back(part);
            }
            BoxTreeNode& node = tree.nodes[index];
            node.below[i] = below;
            SetBounds(node, i, {{kNotANumber, kNotANumber, kNotANumber}, {}});
            NumbersBelow& numbers = tree.numbers[index];
            numbers.lowest[i] = LowestOf(part);
            numbers.highest[i] =
                part.empty() ? -1 : std::ranges::max_element(part, {}, &NumberedBox::number)->number;
        }
    }
    MeasureNodes(tree);
    return tree;
}

// An added box waits outside the tree, where every search tests it. Building anew for each one would cost
// more than the tests; it is done when more wait than a quarter of the tree, and a few.
void AddBox(const NumberedBox& added, BoxTree& tree) {
    const auto number = static_cast<size_t>(added.number);
    if (tree.slots.size() <= number) tree.slots.resize(number + 1, -1);
    assert(tree.slots[number] < 0);
    tree.slots[number] = static_cast<int32_t>(tree.boxes.size());
    tree.boxes.push_back(added);

    const size_t inTree = tree.parts.size(), outside = tree.boxes.size() - inTree;
    if (outside > kFewAdded + inTree / 4) tree = BuildBoxTree(std::move(tree.boxes));
}

// The box itself becomes exact, and the nodes above it only grow. Most moves end at the first node, which
// already holds the new box. Bounds that have grown too far cost time but never miss a box, and the next
// RefitBoxTree tightens them.
void MoveBox(const NumberedBox& moved, BoxTree& tree) {
    const auto number = static_cast<size_t>(moved.number);
    if (number >= tree.slots.size() || tree.slots[number] < 0) return;
    const auto slot = static_cast<size_t>(tree.slots[number]);
    tree.boxes[slot].box = moved.box;
    if (slot >= tree.parts.size()) return;
    const auto place = static_cast<size_t>(tree.parts[slot]);
    SetBounds(tree.nodes[place / 4], place % 4, moved.box);
    for (int32_t above = tree.nodes[place / 4].parent; above >= 0;) {
        BoxTreeNode& node = tree.nodes[above / 4];
        const auto part = static_cast<size_t>(above % 4);
        Box bounds = BoundsOf(node, part);
        if (Holds(bounds, moved.box)) return;
        Include(moved.box, bounds);
        SetBounds(node, part, bounds);
        above = node.parent;
    }
}

// ---- Searching: from the root down, through every part that touches. Four parts are tested by one
// comparison. Nodes that are still to be searched wait on a list of fixed size, not on the call stack.

namespace {

// BoxesTouch for one box and the four parts of a node at once.
struct TouchTest {
    __m128 min[3], max[3];

    explicit TouchTest(const Box& box)
        : min{_mm_set1_ps(box.min.x), _mm_set1_ps(box.min.y), _mm_set1_ps(box.min.z)},
          max{_mm_set1_ps(box.max.x), _mm_set1_ps(box.max.y), _mm_set1_ps(box.max.z)} {}

    // One bit for each part that touches.
    uint32_t operator()(const BoxTreeNode& node) const {
        __m128 touching = _mm_cmple_ps(_mm_load_ps(node.min[0]), max[0]);
        touching = _mm_and_ps(touching, _mm_cmple_ps(min[0], _mm_load_ps(node.max[0])));
        for (size_t axis = 1; axis < 3; ++axis) {
            touching = _mm_and_ps(touching, _mm_cmple_ps(_mm_load_ps(node.min[axis]), max[axis]));
            touching = _mm_and_ps(touching, _mm_cmple_ps(min[axis], _mm_load_ps(node.max[axis])));
        }
        return static_cast<uint32_t>(_mm_movemask_ps(touching));
    }
};

struct OpenNodes {
    std::array<int32_t, kDeepest> indices;
    size_t count = 0;

    void Push(int32_t index) {
        assert(count < kDeepest);
        indices[count++] = index;
    }
    int32_t Pop() { return indices[--count]; }
};

}  // namespace

// The caller walks through the touching boxes in scene order while the box itself moves, so it asks for one
// at a time. A number that was found rules out every part whose numbers are all higher; the part with the
// lowest number is therefore searched first. It is pushed last, and so it comes off the list first.
int32_t NextTouching(const Box& box, int32_t after, int32_t except, const BoxTree& tree) {
    constexpr int32_t kNone = std::numeric_limits<int32_t>::max();
    int32_t best = kNone;
    const auto lookAt = [&](int32_t number) {
        if (number > after && number < best && number != except) best = number;
    };
    for (size_t slot = tree.parts.size(); slot < tree.boxes.size(); ++slot) {
        if (BoxesTouch(tree.boxes[slot].box, box)) lookAt(tree.boxes[slot].number);
    }
    const TouchTest touching(box);
    OpenNodes open;
    if (!tree.nodes.empty()) open.Push(0);
    while (open.count > 0) {
        const int32_t index = open.Pop();
        const BoxTreeNode& node = tree.nodes[index];
        const NumbersBelow& numbers = tree.numbers[index];
        const uint32_t parts = touching(node);
        for (int part = 3; part >= 0; --part) {
            const bool isWorthwhile =
                (parts >> part & 1) != 0 && numbers.highest[part] > after && numbers.lowest[part] < best;
            if (!isWorthwhile) continue;
            if (node.below[part] >= 0) {
                open.Push(node.below[part]);
            } else {
                lookAt(~node.below[part]);
            }
        }
    }
    return best == kNone ? -1 : best;
}

bool FindTouching(const Box& box, int32_t except, size_t most, const BoxTree& tree,
                  std::vector<int32_t>& found) {
    found.clear();
    const auto lookAt = [&](int32_t number) {
        if (number != except) found.push_back(number);
    };
    for (size_t slot = tree.parts.size(); slot < tree.boxes.size(); ++slot) {
        if (BoxesTouch(tree.boxes[slot].box, box)) lookAt(tree.boxes[slot].number);
    }
    const TouchTest touching(box);
    OpenNodes open;
    if (!tree.nodes.empty()) open.Push(0);
    while (open.count > 0 && found.size() <= most) {
        const BoxTreeNode& node = tree.nodes[open.Pop()];
        for (uint32_t parts = touching(node); parts != 0; parts &= parts - 1) {
            const auto part = static_cast<size_t>(std::countr_zero(parts));
            if (node.below[part] >= 0) {
                open.Push(node.below[part]);
            } else {
                lookAt(~node.below[part]);
            }
        }
    }
    std::ranges::sort(found);
    return found.size() <= most;
}
