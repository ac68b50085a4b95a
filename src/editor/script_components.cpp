#include "editor/component_blocks.h"

#include "base/numbers.h"
#include "scene/scripts.h"

#include <algorithm>
#include <limits>

// What the rows show. The first row is common to all scripts.

static std::wstring CollectedName(const GameObject& object) {
    if (!object.collectPrefab.empty()) return ShownPath(object.collectPrefab);
    return object.collectTarget.empty() ? L"Drop .prefab from Files" : object.collectTarget;
}

static std::wstring SpawnedName(const GameObject& object) {
    return object.spawnerPrefab.empty() ? L"First .prefab in Files" : ShownPath(object.spawnerPrefab);
}

// clang-format off
constexpr InspectorRow kCollectorRows[] = {
    {34, L"Enabled", 0, L"true"},
    {62, L"Prefab",  0, CollectedName},
    {90, L"Score",   0, L"+1 and hide prefab"},
};
constexpr InspectorRow kSpawnerRows[] = {
    {34, L"Enabled", 0, L"true"},
    {62, L"Prefab",  0, SpawnedName},
    {90, L"Spawn",   0, L"One random object on plane"},
};
// clang-format on

// Adding them.

static void AddCustomScript(GameObject& object) {
    // The count comes from a file and may be anything.
    const int32_t number = std::min(object.scriptCount, std::numeric_limits<int32_t>::max() - 1) + 1;
    AppendScript(object, L"Custom Script " + Padded(number, 2));
}

static void AddCollectOnTouch(GameObject& object) {
    AddCollision(object);
    AppendScript(object, kCollectOnTouch);
}

static void AddPlanePrefabSpawner(GameObject& object) {
    AddShape(object);
    AddCollision(object);
    AppendScript(object, kPlanePrefabSpawner);
}

constexpr ScriptBlock kCustomScriptBlock{
    .look = {L"", 64, std::span{kCollectorRows}.first(1)},
    .adding = {L"Script", L"script code cpp player controller", 14, "Add script", AddCustomScript,
               L"Pridan vlastni Script jako vlastnost objektu."}};
constexpr ScriptBlock kCollectorBlock{
    .look = {kCollectOnTouch, 120, kCollectorRows},
    .adding = {L"CollectOnTouch", L"collect pickup score touch collision score +1", 46, "Add CollectOnTouch",
               AddCollectOnTouch, L"Pridan CollectOnTouch. Pretahni .prefab z Files do Inspectoru.", false}};
constexpr ScriptBlock kSpawnerBlock{
    .look = {kPlanePrefabSpawner, 120, kSpawnerRows},
    .adding = {
        L"PlanePrefabSpawner", L"plane prefab spawn random povrch plocha", 47, "Add PlanePrefabSpawner",
        AddPlanePrefabSpawner,
        L"Pridan PlanePrefabSpawner. Pretahni .prefab do Inspectoru, nebo pouzije prvni prefab ve Files.",
        false}};

// Removing them.

int32_t ScriptBlocks(const GameObject& object) {
    return std::max(object.scriptCount, static_cast<int32_t>(object.scripts.size()));
}

static bool HasPressedScript(const GameObject& object, const ZonePress& press) {
    return press.zone.block < ScriptBlocks(object);
}

// The last one, whichever block was clicked.
constexpr InspectorAction kRemoveScript{.number = kRemoveScriptAction,
                                        .undoLabel = "Remove script",
                                        .effect = [](Edited o, Press) { RemoveLastScript(o); },
                                        .message = L"Posledni vlastni Script byl odebran.",
                                        .isPossible = HasPressedScript};
static_assert(MessageFitsEffect(kRemoveScript));
