#include "scene/object_tree.h"

#include "base/limit.h"
#include "base/prefetch.h"

#include <cassert>
#include <utility>

// From the last object to the first, so that each is put before the siblings that follow it.
ObjectTree BuildObjectTree(std::span<const GameObject> scene) {
    ObjectTree tree{std::vector<int32_t>(scene.size() + 1, -1), std::vector<int32_t>(scene.size(), -1)};
    for (size_t i = scene.size(); i-- > 0;) {
        if (i >= kPrefetchAhead) Prefetch(&scene[i - kPrefetchAhead].parentIndex);
        const int32_t parent = scene[i].parentIndex;
        if (parent != -1 && !IsIndexOf(parent, scene.size())) continue;
        int32_t& first = tree.firstChild[static_cast<size_t>(parent + 1)];
        tree.nextSibling[i] = std::exchange(first, static_cast<int32_t>(i));
    }
    return tree;
}

// A list of objects whose children are still to be marked, and no recursion: a chain of parents may be as
// long as the scene. An object is put on the list once, when it is marked, so a cycle of parents ends by
// itself.
std::vector<bool> MarkSubtree(std::span<const GameObject> scene, int32_t root) {
    assert(IsIndexOf(root, scene.size()));
    const ObjectTree tree = BuildObjectTree(scene);
    std::vector<bool> isBelow(scene.size(), false);
    std::vector<int32_t> open{root};
    isBelow[root] = true;
    while (!open.empty()) {
        const int32_t parent = open.back();
        open.pop_back();
        for (int32_t child = FirstChild(tree, parent); child >= 0; child = tree.nextSibling[child]) {
            if (isBelow[child]) continue;
            isBelow[child] = true;
            open.push_back(child);
        }
    }
    return isBelow;
}

// Up from the object, which is a short way in most scenes. As many steps as there are objects end a cycle.
bool IsInSubtree(std::span<const GameObject> scene, int32_t index, int32_t root) {
    for (size_t step = 0; step <= scene.size() && IsIndexOf(index, scene.size()); ++step) {
        if (index == root) return true;
        index = scene[index].parentIndex;
    }
    return false;
}

void RenumberParents(std::span<const int32_t> newIndices, std::span<GameObject> scene) {
    for (GameObject& object : scene) {
        const bool hasParent = IsIndexOf(object.parentIndex, newIndices.size());
        object.parentIndex = hasParent ? newIndices[object.parentIndex] : -1;
    }
}
