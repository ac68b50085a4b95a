#include "formats/prefab_file.h"

#include "formats/object_line.h"
#include "scene/hierarchy.h"

#include <vector>

bool LoadPrefab(const std::wstring& path, Scene& objects) {
    objects.clear();
    TextFile file;
    if (!ReadTextFile(path, file)) return false;
    objects = ReadObjects(file);
    return true;
}

bool WritePrefab(const std::wstring& path, std::span<const GameObject> objects) {
    Scene written(objects.begin(), objects.end());
    for (GameObject& object : written) {
        const bool hasParent =
            object.parentIndex >= 0 && static_cast<size_t>(object.parentIndex) < written.size();
        if (!hasParent) object.parentIndex = -1;
    }
    return WriteObjectFile(path, L"ZELENGINE_PREFAB\t1", written);
}

// Depth first, each object before its children. An object in a cycle of parents comes once.
static std::vector<int32_t> SubtreeInOrder(std::span<const GameObject> scene, int32_t root) {
    const ChildLists lists = BuildChildLists(scene);
    std::vector<bool> isTaken(scene.size(), false);
    std::vector<int32_t> order, open{root};
    while (!open.empty()) {
        const int32_t index = open.back();
        open.pop_back();
        if (isTaken[index]) continue;
        isTaken[index] = true;
        order.push_back(index);
        const std::span<const int32_t> children = ChildrenOf(lists, index);
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    return order;
}

Scene CollectPrefab(std::span<const GameObject> scene, int32_t root) {
    std::vector<int32_t> newIndices(scene.size(), -1);
    Scene objects;
    for (const int32_t index : SubtreeInOrder(scene, root)) {
        newIndices[index] = static_cast<int32_t>(objects.size());
        objects.push_back(scene[index]);
    }
    RenumberParents(newIndices, objects);
    objects.front().parentIndex = -1;
    return objects;
}
