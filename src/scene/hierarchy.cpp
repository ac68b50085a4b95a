#include "scene/hierarchy.h"

#include <cassert>
#include <cstddef>
#include <numeric>

static bool IsIndexOf(size_t count, int32_t index) {
    return index >= 0 && static_cast<size_t>(index) < count;
}

ChildLists BuildChildLists(std::span<const GameObject> scene) {
    // A begin runs on while its list is filled and ends as the begin of the next list. So the counts are
    // gathered two places behind their parent's begin, and summed up they are the begins one place behind.
    ChildLists lists;
    std::vector<int32_t>& begins = lists.begins;
    begins.assign(scene.size() + 3, 0);
    const auto isListed = [&](const GameObject& object) {
        return object.parentIndex == -1 || IsIndexOf(scene.size(), object.parentIndex);
    };
    for (const GameObject& object : scene) {
        if (isListed(object)) ++begins[object.parentIndex + 3];
    }
    std::partial_sum(begins.begin(), begins.end(), begins.begin());

    lists.children.resize(begins.back());
    for (size_t i = 0; i < scene.size(); ++i) {
        if (isListed(scene[i])) lists.children[begins[scene[i].parentIndex + 2]++] = static_cast<int32_t>(i);
    }
    begins.pop_back();
    return lists;
}

std::span<const int32_t> ChildrenOf(const ChildLists& lists, int32_t parent) {
    assert(IsIndexOf(lists.begins.size() - 1, parent + 1));
    const int32_t begin = lists.begins[parent + 1], end = lists.begins[parent + 2];
    return std::span(lists.children).subspan(begin, end - begin);
}

std::vector<bool> MarkSubtree(std::span<const GameObject> scene, int32_t root) {
    assert(IsIndexOf(scene.size(), root));
    const ChildLists lists = BuildChildLists(scene);
    std::vector<bool> isBelow(scene.size(), false);
    std::vector<int32_t> open{root};
    isBelow[root] = true;
    while (!open.empty()) {
        const int32_t parent = open.back();
        open.pop_back();
        for (const int32_t child : ChildrenOf(lists, parent)) {
            if (isBelow[child]) continue;
            isBelow[child] = true;
            open.push_back(child);
        }
    }
    return isBelow;
}

bool IsInSubtree(std::span<const GameObject> scene, int32_t index, int32_t root) {
    for (size_t step = 0; step <= scene.size() && IsIndexOf(scene.size(), index); ++step) {
        if (index == root) return true;
        index = scene[index].parentIndex;
    }
    return false;
}

void RenumberParents(std::span<const int32_t> newIndices, std::span<GameObject> scene) {
    for (GameObject& object : scene) {
        const bool hasParent = IsIndexOf(newIndices.size(), object.parentIndex);
        object.parentIndex = hasParent ? newIndices[object.parentIndex] : -1;
    }
}
