#include "formats/prefab.h"

#include "base/enough_memory.h"
#include "base/path_text.h"
#include "formats/object_line.h"
#include "scene/editor_camera.h"
#include "scene/object_tree.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

// The header line stores no object, so ReadObjects skips it and no reader of its own is needed.
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

// Adds `root` and what is below it: depth first, each object before its children, none that is taken. The
// list of open objects stands in for recursion, because a chain may be as long as the scene; what is taken is
// marked, because parents may form a cycle.
static void AddSubtree(const ObjectTree& tree, int32_t root, std::vector<bool>& isTaken,
                       std::vector<int32_t>& order) {
    std::vector<int32_t> open{root};
    while (!open.empty()) {
        const int32_t index = open.back();
        open.pop_back();
        if (isTaken[index]) continue;
        isTaken[index] = true;
        order.push_back(index);
        const auto first = static_cast<ptrdiff_t>(open.size());
        for (int32_t child = FirstChild(tree, index); child >= 0; child = tree.nextSibling[child])
            open.push_back(child);
        std::reverse(open.begin() + first, open.end());  // the first child is taken next
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

// The root comes first in the file, so that placing an instance means moving one object. The parent that it
// had in the scene is not part of the prefab.
Scene CollectPrefab(std::span<const GameObject> scene, int32_t root) {
    std::vector<bool> isTaken(scene.size(), false);
    std::vector<int32_t> order;
    AddSubtree(BuildObjectTree(scene), root, isTaken, order);
    Scene objects = Reordered(scene, order);
    objects.front().parentIndex = -1;
    return objects;
}

// Roots are made first: nothing leads to an object under a stranger, and it would lose its place.
Scene InPrefabOrder(std::span<const GameObject> list) {
    const Scene objects = WithinItself(list);
    const ObjectTree tree = BuildObjectTree(objects);
    std::vector<bool> isTaken(objects.size(), false);
    std::vector<int32_t> order;
    for (int32_t root = FirstChild(tree, -1); root >= 0; root = tree.nextSibling[root])
        AddSubtree(tree, root, isTaken, order);
    for (int32_t i = 0; i < static_cast<int32_t>(objects.size()); ++i) AddSubtree(tree, i, isTaken, order);
    return Reordered(objects, order);
}

constexpr float kPlacingDistance = 4.0f;  // world units before the camera

static std::wstring InstanceName(const std::wstring& path, const std::wstring& storedName) {
    const std::wstring name = NameWithoutExtension(path);
    return name.empty() ? storedName + L"_Prefab" : name;
}

// Parent indices into `objects` become indices into the scene that they are put behind. One that names none
// of them would name a stranger there, and makes a root instead.
static void ShiftParents(Scene& objects) {
    const auto count = static_cast<int32_t>(objects.size());
    const auto shift = static_cast<int32_t>(editorState.scene.size());
    for (GameObject& object : objects) {
        const bool hasParent = object.parentIndex >= 0 && object.parentIndex < count;
        object.parentIndex = hasParent ? object.parentIndex + shift : -1;
    }
}

// Puts the objects of a prefab behind those of the scene, the root under `parent` at `position`. Behind, so
// that no index changes that somebody holds. Every object remembers the prefab, and starts at rest.
static void AppendInstance(const std::wstring& path, int32_t parent, Vec3 position, Scene objects) {
    if (objects.empty()) return;
    ShiftParents(objects);
    for (GameObject& object : objects) {
        object.prefabSource = path;
        object.velocityY = 0;
        object.velocity = {};
    }
    GameObject& root = objects.front();
    root.name = InstanceName(path, root.name);
    root.position = position;
    root.parentIndex = parent;
    editorState.scene.insert(editorState.scene.end(), std::make_move_iterator(objects.begin()),
                             std::make_move_iterator(objects.end()));
}

bool InstantiatePrefab(const std::wstring& path, int32_t parent) {
    Scene objects;
    if (!LoadPrefab(path, objects)) {
        SetStatus(L"Prefab se nepodarilo nacist.");
        return false;
    }
    pushUndo("Instantiate prefab");

    const bool hasParent = IsObjectIndex(parent);
    const auto root = static_cast<int32_t>(editorState.scene.size());
    AppendInstance(path, hasParent ? parent : -1,
                   hasParent ? Vec3{} : InFrontOfEditorCamera(kPlacingDistance), std::move(objects));
    const bool isPlaced = IsObjectIndex(root);
    if (isPlaced) editorState.selectedIndex = root;

    SetStatus(L"Prefab vlozen do sceny: " + (isPlaced ? SelectedObject().name : NameWithoutExtension(path)));
    return true;
}

// Without an undo step and without a selection: a game places it, not the user.
bool SpawnPrefab(const std::wstring& path, Vec3 position) {
    Scene objects;
    if (!LoadPrefab(path, objects)) {
        SetStatus(L"Prefab se nepodarilo nacist pro spawn.");
        return false;
    }
    AppendInstance(path, -1, position, std::move(objects));
    return true;
}
