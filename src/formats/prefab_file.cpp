#include "formats/prefab_file.h"

#include "base/enough_memory.h"
#include "formats/object_line.h"
#include "scene/hierarchy.h"

#include <vector>

bool LoadPrefab(const std::wstring& path, Scene& objects) {
    objects.clear();
    return WithEnoughMemory([&] {
        TextFile file;
        if (!ReadTextFile(path, file)) return false;
        objects = ReadObjects(file);
        return true;
    });
}

// The objects with a parent index outside the list made roots.
static Scene WithinItself(std::span<const GameObject> objects) {
    Scene within(objects.begin(), objects.end());
    for (GameObject& object : within) {
        const bool hasParent =
            object.parentIndex >= 0 && static_cast<size_t>(object.parentIndex) < within.size();
        if (!hasParent) object.parentIndex = -1;
    }
    return within;
}

bool WritePrefab(const std::wstring& path, std::span<const GameObject> objects) {
    return WithEnoughMemory(
        [&] { return WriteObjectFile(path, L"ZELENGINE_PREFAB\t1", WithinItself(objects)); });
}

// Adds `root` and what is below it: depth first, each object before its children, none that is taken.
static void AddSubtree(const ChildLists& lists, int32_t root, std::vector<bool>& isTaken,
                       std::vector<int32_t>& order) {
    std::vector<int32_t> open{root};
    while (!open.empty()) {
        const int32_t index = open.back();
        open.pop_back();
        if (isTaken[index]) continue;
        isTaken[index] = true;
        order.push_back(index);
        const std::span<const int32_t> children = ChildrenOf(lists, index);
        open.insert(open.end(), children.rbegin(), children.rend());
    }
}

// Copies of the objects of that order. A parent that is not among them makes a root.
static Scene Reordered(std::span<const GameObject> scene, std::span<const int32_t> order) {
    std::vector<int32_t> newIndices(scene.size(), -1);
    Scene objects;
    for (const int32_t index : order) {
        newIndices[index] = static_cast<int32_t>(objects.size());
        objects.push_back(scene[index]);
    }
    RenumberParents(newIndices, objects);
    return objects;
}

Scene CollectPrefab(std::span<const GameObject> scene, int32_t root) {
    std::vector<bool> isTaken(scene.size(), false);
    std::vector<int32_t> order;
    AddSubtree(BuildChildLists(scene), root, isTaken, order);
    Scene objects = Reordered(scene, order);
    objects.front().parentIndex = -1;
    return objects;
}

// Roots are made first: nothing leads to an object under a stranger, and it would lose its place.
Scene InPrefabOrder(std::span<const GameObject> list) {
    const Scene objects = WithinItself(list);
    const ChildLists lists = BuildChildLists(objects);
    std::vector<bool> isTaken(objects.size(), false);
    std::vector<int32_t> order;
    for (const int32_t root : ChildrenOf(lists, -1)) AddSubtree(lists, root, isTaken, order);
    for (int32_t i = 0; i < static_cast<int32_t>(objects.size()); ++i) AddSubtree(lists, i, isTaken, order);
    return Reordered(objects, order);
}
