#include "editor/drop_assignments.h"

#include "base/path_text.h"
#include "editor/components.h"
#include "formats/texture_file.h"
#include "scene/scripts.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

static bool Refuse(const wchar_t* message) {
    SetStatus(message);
    return false;
}

bool AssignScript(const AssetEntry& file, int32_t target) {
    if (file.kind != AssetKind::Script) return Refuse(L"Na objekt jde pretahnout jen script.");
    if (!IsObjectIndex(target)) return Refuse(L"Script nebyl pusten na objekt.");
    editorState.selectedIndex = target;
    pushUndo("Add script from file");

    const std::wstring name = NameWithoutExtension(file.name);
    GameObject& object = SelectedObject();
    EnsureScript(object, name);
    if (name == kCollectOnTouch) AddCollision(object);

    SetStatus(L"Script pridan jako vlastnost objektu: " + name);
    return true;
}

// The image is loaded before the undo step: a file that cannot be read changes nothing.
bool AssignTexture(const AssetEntry& file, int32_t target) {
    if (file.kind != AssetKind::Image) return Refuse(L"Na Texture jde pretahnout jen PNG, JPG nebo BMP.");
    if (!IsObjectIndex(target)) return Refuse(L"Texture nebyla pustena na objekt.");
    editorState.selectedIndex = target;
    const int32_t texture = LoadTextureImage(file.path);
    if (texture < 0) return false;
    pushUndo("Add texture from file");

    GameObject& object = SelectedObject();
    object.hasTexture = true;
    object.textureIndex = texture;
    object.texturePath = file.path;
    AddShape(object);

    SetStatus(L"Texture pridana na objekt: " + file.name);
    return true;
}

static void AssignCollectedPrefab(const AssetEntry& file) {
    pushUndo("Assign CollectOnTouch prefab");

    GameObject& object = SelectedObject();
    EnsureScript(object, kCollectOnTouch);
    AddCollision(object);
    object.collectTarget.clear();
    object.collectPrefab = file.path;

    SetStatus(L"CollectOnTouch prefab nastaven: " + file.name);
}

static void AssignSpawnedPrefab(const AssetEntry& file) {
    pushUndo("Assign prefab spawner source");

    GameObject& object = SelectedObject();
    EnsureScript(object, kPlanePrefabSpawner);
    object.hasShape = true;
    AddCollision(object);
    object.spawnerPrefab = file.path;

    SetStatus(L"PlanePrefabSpawner prefab nastaven: " + file.name);
}

// Which of the two scripts takes the prefab: the spawner only if it is there alone.
bool AssignPrefab(const AssetEntry& file, int32_t target) {
    if (file.kind != AssetKind::Prefab || !IsObjectIndex(target)) return false;
    editorState.selectedIndex = target;
    const GameObject& object = SelectedObject();
    const bool spawns = HasScript(object, kPlanePrefabSpawner) && !HasScript(object, kCollectOnTouch);
    if (spawns) {
        AssignSpawnedPrefab(file);
    } else {
        AssignCollectedPrefab(file);
    }
    return true;
}

bool AssignObjectReference(int32_t dropped) {
    if (!SelectionIsValid() || !IsObjectIndex(dropped) || dropped == editorState.selectedIndex) {
        return Refuse(L"Vyber objekt 1, potom pretahni objekt 2 z Hierarchy do Inspectoru.");
    }
    pushUndo("Assign object reference");

    GameObject& object = SelectedObject();
    const GameObject& target = editorState.scene[static_cast<size_t>(dropped)];
    EnsureScript(object, kCollectOnTouch);
    object.collectTarget = target.name;

    SetStatus(L"Inspector Target nastaven: " + object.name + L"->" + target.name);
    return true;
}
