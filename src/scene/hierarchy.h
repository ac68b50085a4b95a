// Who is whose child. Objects name their parent only; everything else follows from that in one pass.
#pragma once

#include "state/game_object.h"

#include <cstdint>
#include <span>
#include <vector>

// The children of every object, in scene order. Read through ChildrenOf.
struct ChildLists {
    std::vector<int32_t> begins{};    // by parent plus one: where its children begin in `children`
    std::vector<int32_t> children{};  // the roots, then the children of object 0, of object 1 ...
};

// In time proportional to the objects. An object whose parent index is neither -1 nor names an object is
// nobody's child and no root.
ChildLists BuildChildLists(std::span<const GameObject> scene);

// The children of an object, or the roots for -1. `parent` is -1 or an index of the scene.
std::span<const int32_t> ChildrenOf(const ChildLists& lists, int32_t parent);

// For every object, whether it is `root` or below it. `root` names an object. In time proportional to the
// objects; a cycle of parents is below `root` when `root` is in it.
std::vector<bool> MarkSubtree(std::span<const GameObject> scene, int32_t root);

// True when `index` is `root` or below it. The way up ends at -1, at an index outside the scene, and after as
// many steps as there are objects.
bool IsInSubtree(std::span<const GameObject> scene, int32_t index, int32_t root);

// Gives every object the parent that its old one has become. `newIndices` says by old index where an object
// stands now, -1 where it was removed. A parent that is not there makes a root.
void RenumberParents(std::span<const int32_t> newIndices, std::span<GameObject> scene);
