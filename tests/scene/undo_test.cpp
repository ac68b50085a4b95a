#include "scene/undo.h"

#include "editor/component_search.h"
#include "scene/clipboard.h"
#include "scene/commands.h"
#include "scene/name_entry.h"
#include "scene/number_entry.h"
#include "scene/object_fields.h"
#include "scene/selection.h"
#include "support/capture.h"
#include "support/edited_scene.h"
#include "support/gestures.h"
#include "support/open_menu.h"

#include "doctest/doctest.h"
#include "formats/scene_file.h"
#include "scene/snapshots.h"
#include "support/allocation_limit.h"

#include <algorithm>
#include <string_view>

TEST_CASE("undo brings back the scene and the selection before the last change") {
    StartWithSamples();
    const Scene before = editorState.scene;
    addEntity();
    undo();
    CHECK(editorState.scene == before);
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.statusMessage == L"Ctrl+Z: posledni zmena sceny byla vracena.");
    undo();
    CHECK(editorState.scene == before);
    CHECK(editorState.statusMessage == L"Ctrl+Z: neni co vratit.");
}

TEST_CASE("the 65th change drops the oldest one, and the 65th undo finds nothing") {
    StartWithSamples();
    for (int i = 0; i < 65; ++i) addCube();
    CHECK(editorState.undoSteps.size() == 64);
    for (int i = 0; i < 64; ++i) {
        undo();
        REQUIRE(editorState.statusMessage == L"Ctrl+Z: posledni zmena sceny byla vracena.");
    }
    CHECK(editorState.scene.size() == 7);
    CHECK(editorState.scene.back().name == L"GameObject_06");
    CHECK(editorState.undoSteps.empty());
    undo();
    CHECK(editorState.statusMessage == L"Ctrl+Z: neni co vratit.");
}

TEST_CASE("a step is named after its command") {
    struct {
        void (*run)();
        std::string_view label;
    } cases[] = {
        {addCube, "Add cube"},
        {addEntity, "Add entity"},
        {addCamera, "Add camera"},
        {addLight, "Add light"},
        {addPlane, "Add plane"},
        {addText, "Add text"},
        {[] { addChild(2); }, "Add child"},
        {[] { addChild(-1); }, "Add cube"},
        {[] { addModelObject(0, L"Tree", -1); }, "Add model object"},
        {duplicateSelected, "Duplicate object"},
        {deleteSelected, "Delete object"},
        {[] { moveInHierarchy(3, 2, true, false); }, "Reorder hierarchy"},
        {[] { copySelected(), pasteObject(); }, "Paste object"},
        {[] { AddComponent(11); }, "Add shape"},
        {[] { AddComponent(12); }, "Add color"},
        {[] { AddComponent(13); }, "Add animation"},
        {[] { AddComponent(14); }, "Add script"},
        {[] { AddComponent(33); }, "Add collision"},
        {[] { AddComponent(34); }, "Add gravity"},
        {[] { AddComponent(40); }, "Add texture"},
        {[] { AddComponent(41); }, "Add rigidbody"},
        {[] { AddComponent(46); }, "Add CollectOnTouch"},
        {[] { AddComponent(47); }, "Add PlanePrefabSpawner"},
        {[] { StartObjectRename(2), CommitNameEntry(); }, "Rename object"},
        {[] { StartTextEdit(2), CommitNameEntry(); }, "Edit text object"},
        {[] { StartNumberEntry(2, NumberEntry::Field::Scale, 0), CommitNumberEntry(); },
         "Edit transform number"},
        {[] { StartNumberEntry(2, NumberEntry::Field::TextSize, -1), CommitNumberEntry(); },
         "Edit text size"},
    };
    for (const auto& [run, label] : cases) {
        CAPTURE(label);
        StartWithSamples();
        editorState.selectedIndex = 2;
        run();
        REQUIRE(editorState.undoSteps.size() == 1);
        CHECK(editorState.undoSteps[0].label == label);
        CHECK(editorState.undoSteps[0].selection == 2);
    }
}

TEST_CASE("undo never returns to an empty scene") {
    StartWithParents({});
    addCube();
    CHECK(editorState.undoSteps.empty());
    undo();
    CHECK(editorState.scene.size() == 1);
    CHECK(editorState.statusMessage == L"Ctrl+Z: neni co vratit.");
}

TEST_CASE("nothing is recorded in the game runtime") {
    StartWithSamples();
    editorState.runtimeMode = true;
    addCube();
    CHECK(editorState.scene.size() == 7);
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("after an undo something is selected") {
    struct {
        int32_t stored, restored;
    } cases[] = {{-1, 0}, {-9, 0}, {1, 1}, {2, 1}, {INT32_MAX, 1}};
    for (const auto& [stored, restored] : cases) {
        StartWithParents({-1, -1});
        editorState.selectedIndex = stored;
        pushUndo("Test");
        editorState.selectedIndex = 1;
        undo();
        CHECK(editorState.selectedIndex == restored);
    }
}

TEST_CASE("changes and undo in the Prefab editor make the prefab unsaved") {
    for (const Screen screen : {Screen::SceneEditor, Screen::PrefabEditor}) {
        StartWithSamples();
        editorState.screen = screen;
        addCube();
        CHECK(editorState.prefabDirty == (screen == Screen::PrefabEditor));
        editorState.prefabDirty = false;
        undo();
        CHECK(editorState.prefabDirty == (screen == Screen::PrefabEditor));
        editorState.prefabDirty = false;
        undo();
        CHECK_FALSE(editorState.prefabDirty);
    }
}

TEST_CASE("undo ends drags, entries and the component search") {
    StartWithSamples();
    addCube();
    Hold<GizmoDrag>();
    editorState.keyboardTransform = true;
    editorState.menu = PopupMenu{.kind = MenuKind::Object, .item = 6};
    editorState.nameEntry = {.kind = NameEntry::Kind::Object, .target = 6, .text = L"x"};
    editorState.numberEntry = {.open = true, .target = 6};
    editorState.componentSearchActive = true;
    undo();
    CHECK_FALSE(GestureIsUnderWay());
    CHECK_FALSE(editorState.keyboardTransform);
    CHECK_FALSE(MenuIsOpen(MenuKind::Object));
    CHECK(editorState.nameEntry.kind == NameEntry::Kind::Closed);
    CHECK(editorState.nameEntry.target == -1);
    CHECK_FALSE(editorState.numberEntry.open);
    CHECK_FALSE(editorState.componentSearchActive);
}

TEST_CASE("a cleared history has nothing to undo") {
    StartWithSamples();
    addCube();
    ClearUndo();
    undo();
    CHECK(editorState.scene.size() == 7);
    CHECK(editorState.statusMessage == L"Ctrl+Z: neni co vratit.");
}

static void RunRandomCommand(RandomSource& random) {
    const auto count = static_cast<int32_t>(editorState.scene.size());
    editorState.selectedIndex = random.IntBetween(-1, count);
    switch (random.IntBetween(0, 11)) {
        case 0: return addCube();
        case 1: return addEntity();
        case 2: return addText();
        case 3: return addChild(random.IntBetween(-1, count));
        case 4: return addModelObject(7, L"model", random.IntBetween(-1, count));
        case 5: return duplicateSelected();
        case 6:
        case 7: return deleteSelected();
        case 8: return copySelected();
        case 9: return pasteObject();
        case 10: AddComponent(ComponentCommands()[random.IntBetween(0, 9)]->action); return;
        default:
            return moveInHierarchy(random.IntBetween(-1, count), random.IntBetween(-1, count),
                                   random.OneIn(2), random.OneIn(2));
    }
}

// For every object, the name of its parent. Names are kept unique here, so that they stand for the objects.
static std::vector<std::wstring> ParentNames() {
    std::vector<std::wstring> names;
    for (const GameObject& object : editorState.scene) {
        const bool hasParent = IsObjectIndex(object.parentIndex);
        names.push_back(hasParent ? editorState.scene[object.parentIndex].name : L"");
    }
    return names;
}

TEST_CASE("undo after any commands brings back the scene before each of them, bit for bit") {
    constexpr uint32_t kSeed = 1492;
    constexpr int32_t kOldStep = -777;
    CAPTURE(kSeed);
    RandomSource random(kSeed);
    for (int run = 0; run < 40; ++run) {
        editorState = EditorState{};
        const int32_t count = random.IntBetween(1, 30);
        for (int32_t i = 0; i < count; ++i) editorState.scene.push_back(RandomObject(random, count));

        std::vector<Scene> before;
        for (int round = 0; round < 100; ++round) {
            // A stored selection that no command stores marks the newest step as an old one.
            if (!editorState.undoSteps.empty()) editorState.undoSteps.back().selection = kOldStep;
            Scene scene = editorState.scene;
            RunRandomCommand(random);
            REQUIRE(editorState.undoSteps.size() <= 64);
            const auto& steps = editorState.undoSteps;
            if (!steps.empty() && steps.back().selection != kOldStep) {
                before.push_back(std::move(scene));
            } else if (!scene.empty()) {
                REQUIRE(std::ranges::equal(scene, editorState.scene, SameBits));
            }
            const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
            REQUIRE(editorState.selectedIndex <= std::max(last + 1, 0));
        }
        while (!editorState.undoSteps.empty()) {
            undo();
            REQUIRE(std::ranges::equal(before.back(), editorState.scene, SameBits));
            before.pop_back();
        }
    }
}

TEST_CASE("deleting and moving leave every other object under its parent") {
    constexpr uint32_t kSeed = 1848;
    CAPTURE(kSeed);
    RandomSource random(kSeed);
    for (int round = 0; round < 1000; ++round) {
        editorState = EditorState{};
        const int32_t count = random.IntBetween(3, 14);
        for (int32_t i = 0; i < count; ++i) {
            GameObject object = RandomObject(random, count);
            object.name = L"o" + std::to_wstring(i);
            editorState.scene.push_back(std::move(object));
        }
        const std::vector<std::wstring> parents = ParentNames();
        const int32_t dragged = random.IntBetween(0, count - 1);
        const bool isMove = random.OneIn(2);
        if (isMove) {
            moveInHierarchy(dragged, random.IntBetween(0, count - 1), random.OneIn(2), random.OneIn(2));
        } else {
            editorState.selectedIndex = dragged;
            deleteSelected();
        }
        const bool isChanged = !editorState.undoSteps.empty();
        const std::vector<std::wstring> newParents = ParentNames();
        for (size_t i = 0; i < editorState.scene.size(); ++i) {
            const GameObject& object = editorState.scene[i];
            const auto old = static_cast<size_t>(std::stoi(object.name.substr(1)));
            if (isMove && static_cast<int32_t>(old) == dragged) continue;
            REQUIRE(newParents[i] == parents[old]);
            if (isChanged) REQUIRE((object.parentIndex == -1 || IsObjectIndex(object.parentIndex)));
        }
    }
}

// Whether there is something to save.

TEST_CASE("a change gives the scene another version, and undo brings the earlier one back") {
    editorState = EditorState{};
    editorState.scene.resize(3);
    MarkSceneSaved();
    CHECK_FALSE(SceneHasChanges());
    addCube();
    CHECK(SceneHasChanges());
    addCube();
    undo();
    CHECK(SceneHasChanges());
    undo();
    CHECK_FALSE(SceneHasChanges());
}

TEST_CASE("undo after saving is a change, and what was saved is not reached by another change") {
    editorState = EditorState{};
    editorState.scene.resize(3);
    addCube();
    MarkSceneSaved();
    CHECK_FALSE(SceneHasChanges());
    undo();
    CHECK(SceneHasChanges());
    addEntity();  // as many changes as at saving, but others
    CHECK(SceneHasChanges());
}

TEST_CASE("a fold of the Inspector changes the scene, but does not make a prefab unsaved") {
    editorState = EditorState{};
    editorState.screen = Screen::PrefabEditor;
    RaiseSceneVersion();
    CHECK(SceneHasChanges());
    CHECK_FALSE(editorState.prefabDirty);
    MarkChanged();
    CHECK(editorState.prefabDirty);
}

TEST_CASE("changes in a game or a prefab are no changes of the scene that comes back") {
    editorState = EditorState{};
    editorState.scene.resize(3);
    MarkSceneSaved();
    for (const bool hadChanges : {false, true}) {
        std::optional<KeptScene> kept = KeepScene();
        addCube();
        CHECK(SceneHasChanges());
        PutSceneBack(kept);
        CHECK(SceneHasChanges() == hadChanges);
        addCube();
    }
}

TEST_CASE("a step whose paths have changed has another version than the saved scene") {
    editorState = EditorState{};
    editorState.scene = {{.prefabSource = L"a"}, {}};
    MarkSceneSaved();
    addCube();
    ChangeHistory(editorState.undoSteps, [](GameObject& object) {
        const bool isNamed = object.prefabSource == L"a";
        if (isNamed) object.prefabSource = L"b";
        return isNamed;
    });
    undo();
    CHECK(editorState.scene[0].prefabSource == L"b");
    CHECK(SceneHasChanges());
}

TEST_CASE("a scene counts as changed when memory did not suffice to keep its saved objects") {
    editorState = EditorState{};
    editorState.scene.resize(3);
    {
        const AllocationLimit limit(0);
        MarkSceneSaved();
    }
    CHECK(SceneHasChanges());
    CHECK_FALSE(SceneIsSaved());
}
