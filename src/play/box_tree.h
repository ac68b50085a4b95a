// Finds among many boxes the next one that touches a given box, without looking at all of them.
#pragma once

#include "base/box.h"

#include <cstdint>
#include <vector>

// A box and the number that it is known by.
struct NumberedBox {
    Box box{};
    int32_t number = 0;
};

// Four parts of the tree, each a box or a node below. The sides of all four lie together, so that one
// comparison asks all of them. Not a number where there is no part: nothing touches it.
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

// Built once and queried while boxes move a little: the bounds of nodes only grow. Boxes that are added later
// are looked at one by one until the tree is built anew.
struct BoxTree {
    std::vector<NumberedBox> boxes{};     // those of the tree, neighbours together, then those added
    std::vector<BoxTreeNode> nodes{};     // the root first, each before those below; none for an empty tree
    std::vector<NumbersBelow> numbers{};  // by node
    std::vector<int32_t> slots{};         // by number: its place in `boxes`, -1 where there is none
    std::vector<int32_t> parts{};  // by place in `boxes`: 4 * node + part; as long as the tree was built
};

// Makes the bounds of all nodes as tight as their boxes allow.
void MeasureNodes(BoxTree& tree);

// Every number is there once, from 0 on; gaps cost four bytes each.
BoxTree BuildBoxTree(std::vector<NumberedBox> boxes);

// Gives every box that was in the tree when it was built a new place: `boxOf` names it by its number. Costs
// less than building a tree, which stays as good as long as neighbours stay neighbours.
template <typename BoxOf>
void RefitBoxTree(BoxTree& tree, BoxOf boxOf) {
    for (NumberedBox& numbered : tree.boxes) numbered.box = boxOf(numbered.number);
    MeasureNodes(tree);
}

// Adds a box with a number that is not there.
void AddBox(const NumberedBox& added, BoxTree& tree);

// Nothing happens when there is no box with that number.
void MoveBox(const NumberedBox& moved, BoxTree& tree);

// The numbers of all boxes that touch `box`, but not `except`, in order. False when there are more than
// `most`: `found` is then of no use.
bool FindTouching(const Box& box, int32_t except, size_t most, const BoxTree& tree,
                  std::vector<int32_t>& found);

// The lowest number above `after` whose box touches `box`, but not `except`. -1 when there is none.
int32_t NextTouching(const Box& box, int32_t after, int32_t except, const BoxTree& tree);
