#include "formats/prefab_instance.h"

#include "base/path_text.h"
#include "formats/prefab_file.h"
#include "scene/editor_camera.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <iterator>
#include <utility>

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

// Puts the objects of a prefab behind those of the scene, the root under `parent` at `position`.
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

bool SpawnPrefab(const std::wstring& path, Vec3 position) {
    Scene objects;
    if (!LoadPrefab(path, objects)) {
        SetStatus(L"Prefab se nepodarilo nacist pro spawn.");
        return false;
    }
    AppendInstance(path, -1, position, std::move(objects));
    return true;
}
