// A tree of boxes: finds those that touch a given box without testing all of them.
#pragma once

#include "base/box.h"

#include <cstdint>
#include <vector>

// A box and the number by which callers know it.
struct NumberedBox {
    Box box{};
    int32_t number = 0;
};

// Four parts of the tree, each of them a box or a node below. The sides of all four lie together, so that
// one comparison tests all of them. A missing part has sides that are not numbers: nothing touches it.
struct alignas(64) BoxTreeNode {
    float min[3][4]{}, max[3][4]{};  // by axis, then by part; they hold the boxes below
    int32_t below[4]{};              // a node, or ~ of the number of a box
    int32_t parent = -1;             // 4 * node + part; -1 for the root
};
static_assert(sizeof(BoxTreeNode) == 128);

// The numbers of the boxes below the parts of a node.
struct NumbersBelow {
    int32_t lowest[4]{}, highest[4]{};
};

// Built once and queried while boxes move a little; the bounds of nodes only grow meanwhile. Boxes that are
// added later are tested one by one until the tree is built anew.
struct BoxTree {
    std::vector<NumberedBox> boxes{};     // those in the tree, neighbours together, then those added
    std::vector<BoxTreeNode> nodes{};     // the root first, each before those below; none for an empty tree
    std::vector<NumbersBelow> numbers{};  // by node
    std::vector<int32_t> slots{};         // by number: its place in `boxes`, -1 if there is none
    std::vector<int32_t> parts{};  // by place in `boxes`: 4 * node + part; as long as the tree was built
};

// Makes the bounds of all nodes as tight as possible.
void MeasureNodes(BoxTree& tree);

// Numbers start at 0 and are unique; each gap costs four bytes.
BoxTree BuildBoxTree(std::vector<NumberedBox> boxes);

// Moves every box of the tree; `boxOf` gives the new box for a number. Cheaper than building a tree, and as
// good while neighbours stay neighbours.
template <typename BoxOf>
void RefitBoxTree(BoxTree& tree, BoxOf boxOf) {
    for (NumberedBox& numbered : tree.boxes) numbered.box = boxOf(numbered.number);
    MeasureNodes(tree);
}

// Adds a box with a number that is not there.
void AddBox(const NumberedBox& added, BoxTree& tree);

// Moves one box. Does nothing when no box has that number.
void MoveBox(const NumberedBox& moved, BoxTree& tree);

// The numbers of all boxes except `except` that touch `box`, in order. False when there are more than `most`:
// `found` is then incomplete.
bool FindTouching(const Box& box, int32_t except, size_t most, const BoxTree& tree,
                  std::vector<int32_t>& found);

// The lowest number above `after`, other than `except`, whose box touches `box`. -1 when there is none.
int32_t NextTouching(const Box& box, int32_t after, int32_t except, const BoxTree& tree);
