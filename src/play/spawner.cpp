#include "play/spawner.h"

#include "base/path_text.h"
#include "formats/prefab.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>

constexpr float kReach = 0.1f;    // world units around the spawner's box in which an instance stands on it
constexpr float kHeight = 0.04f;  // world units above the box

// The next number of the game's random sequence, 0 .. 1.
static float NextRandom() {
    editorState.randomState = editorState.randomState * 1664525u + 1013904223u;
    return static_cast<float>(editorState.randomState >> 8) / 16777215.0f;
}

static Vec3 RandomSpotOn(const Box& box) {
    const float x = NextRandom() * (box.max.x - box.min.x) + box.min.x;
    const float z = NextRandom() * (box.max.z - box.min.z) + box.min.z;
    return {x, box.max.y + kHeight, z};
}

// Gives the spawner the first prefab of the project if its own does not exist. False when the project has
// none.
static bool FindPrefab(GameObject& spawner, SceneLookup& lookup) {
    if (IsFile(spawner.spawnerPrefab, lookup)) return true;
    const auto& files = editorState.fileEntries;
    const auto found = std::ranges::find_if(files, [&](const AssetEntry& file) {
        return file.kind == AssetKind::Prefab && IsFile(file.path, lookup);
    });
    if (found == files.end()) return false;
    spawner.spawnerPrefab = found->path;
    return true;
}

static bool InstanceStandsOn(int32_t spawner, const std::wstring& prefab, const Box& box, PlayPass& pass) {
    const Box reach = Grown(box, kReach);
    return std::ranges::any_of(InstancesOf(prefab, pass.lookup), [&](int32_t index) {
        return index != spawner && editorState.scene[index].active &&
               BoxesTouch(WorldBox(index, pass.boxes), reach);
    });
}

// True when this spawner was placed in this pass and comes from the prefab itself, or one of the spawners
// that led to it in this pass does. Otherwise a prefab that spawns itself out of its own reach would fill
// the scene within one frame, because whatever is added still acts in the same pass.
static bool WasPlacedBy(const std::wstring& prefab, int32_t spawner, const PlayPass& pass) {
    while (spawner >= pass.objectsBefore) {
        if (editorState.scene[spawner].prefabSource == prefab) return true;
        spawner = pass.spawnedBy[spawner - pass.objectsBefore];
    }
    return false;
}

// Asks in this order: is there a prefab, was this spawner itself placed by it in this pass, does an instance
// stand here already. A random spot is drawn only after that, so that the random sequence depends on what
// was placed and on nothing else.
void SpawnerStep(int32_t index, PlayPass& pass) {
    GameObject& spawner = editorState.scene[index];
    if (!spawner.active || !spawner.hasShape) return;
    if (!FindPrefab(spawner, pass.lookup)) {
        SetStatus(L"PlanePrefabSpawner: v Files neni zadny .prefab.");
        return;
    }
    const std::wstring prefab = spawner.spawnerPrefab;  // a copy, because the scene may move as it grows
    const Box box = WorldBox(index, pass.boxes);
    if (WasPlacedBy(prefab, index, pass) || InstanceStandsOn(index, prefab, box, pass)) return;
    if (!SpawnPrefab(prefab, RandomSpotOn(box))) return;

    const auto count = static_cast<int32_t>(editorState.scene.size());
    pass.spawnedBy.resize(static_cast<size_t>(count - pass.objectsBefore), index);
    SetStatus(L"PlanePrefabSpawner: spawned " + LastComponent(prefab));
}
