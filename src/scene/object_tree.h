// Who is whose child. Objects name their parent only; everything else follows from that in one pass.
#pragma once

#include "state/game_object.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// Each object's first child and next sibling, both in scene order, -1 for none. Two lists of numbers: a scene
// of a hundred thousand objects is linked in one pass, and walked through without touching an object.
struct ObjectTree {
    std::vector<int32_t> firstChild{};   // by parent plus one, so that the first root stands at 0
    std::vector<int32_t> nextSibling{};  // by object
};

// In time proportional to the objects. An object with a parent index that is neither -1 nor in the scene is
// nobody's child and no root.
ObjectTree BuildObjectTree(std::span<const GameObject> scene);

// The first child of an object, or the first root for -1. `parent` is -1 or an index of the scene.
inline int32_t FirstChild(const ObjectTree& tree, int32_t parent) {
    return tree.firstChild[static_cast<size_t>(parent + 1)];
}

// For every object, whether it is `root` or below it. `root` names an object. In time proportional to the
// objects; a cycle of parents is below `root` when `root` is in it.
std::vector<bool> MarkSubtree(std::span<const GameObject> scene, int32_t root);

// True when `index` is `root` or below it. The way up ends at -1, at an index outside the scene, and after as
// many steps as there are objects.
bool IsInSubtree(std::span<const GameObject> scene, int32_t index, int32_t root);

// Gives every object the parent that its old one has become. `newIndices` says by old index where an object
// stands now, -1 where it was removed. A parent that is not there makes a root.
void RenumberParents(std::span<const int32_t> newIndices, std::span<GameObject> scene);
