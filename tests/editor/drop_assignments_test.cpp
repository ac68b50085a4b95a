#include "editor/drop_assignments.h"

#include "scene/undo.h"
#include "state/editor_state.h"
#include "support/image_bytes.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <string>
#include <vector>

using Scripts = std::vector<std::wstring>;

// Two objects, the first one selected.
static void StartWith(GameObject first, GameObject second = {.name = L"second"}) {
    editorState = EditorState{};
    editorState.scene = {std::move(first), std::move(second)};
    editorState.statusMessage = L"untouched";
}

static AssetEntry File(AssetKind kind, const wchar_t* name) {
    return {.name = name, .path = std::wstring{L"C:\\game\\Files\\"} + name, .kind = kind};
}

// The dropped on object is the second one, as `after` has it; undo brings both back with it selected.
static void CheckAssigned(const GameObject& before, const GameObject& after, const wchar_t* message) {
    CHECK(editorState.scene[1] == after);
    CHECK(editorState.selectedIndex == 1);
    CHECK(editorState.statusMessage == message);
    CHECK(editorState.undoSteps.size() == 1);
    undo();
    CHECK(editorState.scene[1] == before);
    CHECK(editorState.selectedIndex == 1);
}

static void CheckRefused(bool assigned, const wchar_t* message) {
    CHECK_FALSE(assigned);
    CHECK(editorState.statusMessage == message);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.selectedIndex == 0);
    CHECK(editorState.scene == Scene{{.name = L"first"}, {.name = L"second"}});
}

TEST_CASE("a script dropped on an object becomes one of its scripts, by its name") {
    const GameObject before{.scriptCount = 1, .scripts = {L"Mover"}};
    StartWith({.name = L"first"}, before);
    CHECK(AssignScript(File(AssetKind::Script, L"PlayerController.cpp"), 1));
    GameObject after = before;
    after.scripts = {L"Mover", L"PlayerController"};
    after.scriptCount = 2;
    CheckAssigned(before, after, L"Script pridan jako vlastnost objektu: PlayerController");
}

TEST_CASE("a script that the object has is not added again, and its count is put right") {
    const GameObject before{.scriptCount = 7, .scripts = {L"Mover", L"Jump"}};
    StartWith({.name = L"first"}, before);
    CHECK(AssignScript(File(AssetKind::Script, L"Mover.cpp"), 1));
    GameObject after = before;
    after.scriptCount = 2;
    CheckAssigned(before, after, L"Script pridan jako vlastnost objektu: Mover");
}

TEST_CASE("a script named CollectOnTouch makes the object solid") {
    const GameObject before{.collisionExpanded = false};
    StartWith({.name = L"first"}, before);
    CHECK(AssignScript(File(AssetKind::Script, L"CollectOnTouch.cpp"), 1));
    GameObject after = before;
    after.scripts = {L"CollectOnTouch"};
    after.scriptCount = 1;
    after.hasCollision = after.collisionExpanded = true;
    CheckAssigned(before, after, L"Script pridan jako vlastnost objektu: CollectOnTouch");
}

TEST_CASE("only a script is taken for a script, and only on an object") {
    StartWith({.name = L"first"});
    for (const AssetKind kind :
         {AssetKind::Folder, AssetKind::Model, AssetKind::SceneFile, AssetKind::Blueprint, AssetKind::Prefab,
          AssetKind::Image, AssetKind::Other}) {
        CheckRefused(AssignScript(File(kind, L"a.txt"), 1), L"Na objekt jde pretahnout jen script.");
    }
    for (const int32_t target : {-1, 2, INT32_MAX, INT32_MIN}) {
        CheckRefused(AssignScript(File(AssetKind::Script, L"a.cpp"), target),
                     L"Script nebyl pusten na objekt.");
    }
}

TEST_CASE("an image dropped on an object becomes its texture, and gives it a shape to show it on") {
    const ScratchFolder folder;
    PutFile(folder / L"brick.png", PngBytes({1, 1, {0xFF112233}}));
    const AssetEntry file{.name = L"brick.png", .path = folder / L"brick.png", .kind = AssetKind::Image};
    for (const int32_t mesh : {-1, 4}) {
        const GameObject before{.meshIndex = mesh, .hasShape = false};
        StartWith({.name = L"first"}, before);
        CHECK(AssignTexture(file, 1));
        GameObject after = before;
        after.hasTexture = true;
        after.textureIndex = 0;
        after.texturePath = file.path;
        after.hasShape = true;
        after.meshIndex = mesh < 0 ? 0 : mesh;
        CheckAssigned(before, after, L"Texture pridana na objekt: brick.png");
    }
}

TEST_CASE("only an image is taken for a texture, and only on an object") {
    StartWith({.name = L"first"});
    for (const AssetKind kind : {AssetKind::Folder, AssetKind::Script, AssetKind::Model, AssetKind::SceneFile,
                                 AssetKind::Blueprint, AssetKind::Prefab, AssetKind::Other}) {
        CheckRefused(AssignTexture(File(kind, L"a.txt"), 1),
                     L"Na Texture jde pretahnout jen PNG, JPG nebo BMP.");
    }
    for (const int32_t target : {-1, 2, INT32_MAX, INT32_MIN}) {
        CheckRefused(AssignTexture(File(AssetKind::Image, L"a.png"), target),
                     L"Texture nebyla pustena na objekt.");
    }
}

TEST_CASE("an image that cannot be loaded changes no object") {
    const ScratchFolder folder;
    StartWith({.name = L"first"});
    CHECK_FALSE(AssignTexture({.name = L"a.png", .path = folder / L"a.png", .kind = AssetKind::Image}, 1));
    CHECK(editorState.statusMessage == L"Texture image se nepodarilo nacist.");
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.scene == Scene{{.name = L"first"}, {.name = L"second"}});
}

TEST_CASE("a prefab goes to the collector, else to the spawner, else it makes a collector") {
    const struct {
        Scripts before, after;
        bool collects;
    } cases[] = {
        {{}, {L"CollectOnTouch"}, true},
        {{L"Mover"}, {L"Mover", L"CollectOnTouch"}, true},
        {{L"CollectOnTouch"}, {L"CollectOnTouch"}, true},
        {{L"PlanePrefabSpawner"}, {L"PlanePrefabSpawner"}, false},
        {{L"PlanePrefabSpawner", L"CollectOnTouch"}, {L"PlanePrefabSpawner", L"CollectOnTouch"}, true},
    };
    for (const auto& test : cases) {
        const GameObject before{.hasShape = false,
                                .scriptCount = static_cast<int32_t>(test.before.size()),
                                .scripts = test.before,
                                .collisionExpanded = false,
                                .collectTarget = L"Coin"};
        StartWith({.name = L"first"}, before);
        const AssetEntry file = File(AssetKind::Prefab, L"Gem.prefab");
        CHECK(AssignPrefab(file, 1));
        GameObject after = before;
        after.scripts = test.after;
        after.scriptCount = static_cast<int32_t>(test.after.size());
        after.hasCollision = after.collisionExpanded = true;
        if (test.collects) {
            after.collectTarget.clear();
            after.collectPrefab = file.path;
        } else {
            after.hasShape = true;
            after.spawnerPrefab = file.path;
        }
        CheckAssigned(before, after,
                      test.collects ? L"CollectOnTouch prefab nastaven: Gem.prefab"
                                    : L"PlanePrefabSpawner prefab nastaven: Gem.prefab");
    }
}

TEST_CASE("a prefab is given to no object that is not there, and nothing else counts as one") {
    StartWith({.name = L"first"});
    for (const int32_t target : {-1, 2, INT32_MAX, INT32_MIN}) {
        CheckRefused(AssignPrefab(File(AssetKind::Prefab, L"a.prefab"), target), L"untouched");
    }
    CheckRefused(AssignPrefab(File(AssetKind::Script, L"a.cpp"), 1), L"untouched");
}

TEST_CASE("an object dropped on the Inspector becomes the target of the selected one") {
    StartWith({.name = L"first", .scriptCount = 1, .scripts = {L"Mover"}});
    CHECK(AssignObjectReference(1));
    CHECK(editorState.scene[0].scripts == Scripts{L"Mover", L"CollectOnTouch"});
    CHECK(editorState.scene[0].scriptCount == 2);
    CHECK(editorState.scene[0].collectTarget == L"second");
    CHECK_FALSE(editorState.scene[0].hasCollision);
    CHECK(editorState.scene[1] == GameObject{.name = L"second"});
    CHECK(editorState.selectedIndex == 0);
    CHECK(editorState.statusMessage == L"Inspector Target nastaven: first->second");
    CHECK(editorState.undoSteps.size() == 1);

    CHECK(AssignObjectReference(1));
    CHECK(editorState.scene[0].scripts == Scripts{L"Mover", L"CollectOnTouch"});
    undo();
    undo();
    CHECK(editorState.scene[0] == GameObject{.name = L"first", .scriptCount = 1, .scripts = {L"Mover"}});
}

TEST_CASE("an object reference takes two different objects") {
    constexpr auto kRefusal = L"Vyber objekt 1, potom pretahni objekt 2 z Hierarchy do Inspectoru.";
    StartWith({.name = L"first"});
    for (const int32_t dropped : {0, -1, 2, INT32_MAX, INT32_MIN}) {
        CheckRefused(AssignObjectReference(dropped), kRefusal);
    }
    editorState.selectedIndex = -1;
    CHECK_FALSE(AssignObjectReference(1));
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.scene == Scene{{.name = L"first"}, {.name = L"second"}});
}
