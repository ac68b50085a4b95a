#include "scene/commands.h"

#include "render/builtin_meshes.h"
#include "render/raster/camera.h"
#include "scene/transform.h"
#include "scene/undo.h"
#include "support/capture.h"
#include "support/edited_scene.h"
#include "support/gestures.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <vector>

static std::vector<std::wstring> Names() {
    std::vector<std::wstring> names;
    for (const GameObject& object : editorState.scene) names.push_back(object.name);
    return names;
}

static std::vector<int32_t> Parents() {
    std::vector<int32_t> parents;
    for (const GameObject& object : editorState.scene) parents.push_back(object.parentIndex);
    return parents;
}

// The place `distance` before a camera at (1, 2, 3) that looks along +X.
static Vec3 BeforeCamera(float distance) { return {1 + distance, 2, 3}; }

TEST_CASE("three cubes added to the sample scene are numbered and stand in a row") {
    StartWithSamples();
    for (int i = 0; i < 3; ++i) addCube();
    const std::vector<std::wstring> names = Names();
    CHECK(std::vector(names.begin() + 6, names.end()) ==
          std::vector<std::wstring>{L"GameObject_06", L"GameObject_07", L"GameObject_08"});
    CHECK(editorState.scene[6].position.z == doctest::Approx(5.4));
    CHECK(editorState.scene[7].position.z == doctest::Approx(5.8));
    CHECK(editorState.scene[8].position.z == doctest::Approx(6.2));
    CHECK(editorState.selectedIndex == 8);
}

TEST_CASE("every add command gives its object, its name and its message") {
    const GameObject cube{.name = L"GameObject_06",
                          .position{0, 0, 3.0f + 0.4f * 6},
                          .scale{0.75f, 0.75f, 0.75f},
                          .meshIndex = kCubeMesh};
    struct {
        void (*add)();
        GameObject object;
        const wchar_t* message;
    } cases[] = {
        {addCube, cube, L"Pridan novy GameObject s Cube mesh rendererem."},
        {addEntity,
         {.name = L"Entity_06", .position{-1, 0, 3.0f + 0.35f * 6}, .isEntity = true},
         L"Pridana Entity jako bodovy marker."},
        {addCamera,
         {.name = L"Camera_06", .position = BeforeCamera(4), .isCamera = true},
         L"Pridan kamerovy objekt do Hierarchy."},
        {addLight,
         {.name = L"Light_06", .position = BeforeCamera(3.5f), .rotation{-0.7f, 0.4f, 0}, .isLight = true},
         L"Pridan Light objekt: funguje jako slunce pro scenu."},
        {addPlane,
         {.name = L"Plane_06", .position = BeforeCamera(4), .scale{2, 1, 2}, .meshIndex = kPlaneMesh},
         L"Pridan Plane objekt."},
        {addText,
         {.name = L"Text_06", .position = BeforeCamera(3.5f), .hasShape = false, .isText = true},
         L"Pridan Text objekt. V Inspectoru upravis vlastnost Text."},
        {[] { addChild(2); },
         {.name = L"Child_06",
          .position{0.7f, 0, 0.7f},
          .scale{0.55f, 0.55f, 0.55f},
          .meshIndex = kCubeMesh,
          .parentIndex = 2},
         L"Pridan child object s lokalni pozici pod vybrany objekt."},
        {[] { addChild(-1); }, cube, L"Pridan novy GameObject s Cube mesh rendererem."},
        {[] { addChild(6); }, cube, L"Pridan novy GameObject s Cube mesh rendererem."},
        {[] { addModelObject(7, L"Tower"); },
         {.name = L"Tower", .position = BeforeCamera(4), .meshIndex = 7},
         L"OBJ model pridan jako objekt se Shape mesh: Tower"},
        {[] { addModelObject(7, L"Tower", 6); },
         {.name = L"Tower", .position = BeforeCamera(4), .meshIndex = 7},
         L"OBJ model pridan jako objekt se Shape mesh: Tower"},
        {[] { addModelObject(7, L"Tower", 5); },
         {.name = L"Tower", .position{0.7f, 0, 0.7f}, .meshIndex = 7, .parentIndex = 5},
         L"OBJ model pridan jako objekt se Shape mesh: Tower"},
    };
    for (const auto& [add, object, message] : cases) {
        StartWithSamples();
        editorState.camera.position = {1, 2, 3};
        editorState.camera.yaw = 1.5707964f;
        editorState.camera.pitch = 0;
        const Scene before = editorState.scene;
        add();
        REQUIRE(editorState.scene.size() == 7);
        GameObject added = editorState.scene.back();
        CHECK(Length(added.position - object.position) < 1e-5f);
        added.position = object.position;
        CHECK(added == object);
        CHECK(editorState.selectedIndex == 6);
        CHECK(editorState.statusMessage == message);
        CHECK(editorState.undoSteps.size() == 1);
        undo();
        CHECK(editorState.scene == before);
    }
}

TEST_CASE("the hundredth object has three digits") {
    editorState = EditorState{};
    editorState.scene.resize(100);
    addEntity();
    CHECK(editorState.scene.back().name == L"Entity_100");
}

TEST_CASE("a duplicate stands beside the first object, under the same parent") {
    StartWithParents({-1, -1, 1, -1});
    editorState.selectedIndex = 2;
    editorState.scene[2].velocity = {1, 2, 3};
    editorState.scene[2].position = {1, 1, 1};
    editorState.scene[2].scripts = {L"a", L"b"};
    duplicateSelected();
    GameObject expected = editorState.scene[2];
    expected.name = L"o2_Copy";
    expected.position = {1.6f, 1, 1.6f};
    CHECK(editorState.scene.back() == expected);
    CHECK(editorState.scene.back().parentIndex == 1);
    CHECK(editorState.selectedIndex == 4);
    CHECK(editorState.statusMessage == L"Objekt byl duplikovan.");
}

TEST_CASE("duplicating and deleting without a selection do nothing and say nothing") {
    for (const int32_t selected : {-1, 6, INT32_MAX, INT32_MIN}) {
        for (const auto command : {duplicateSelected, deleteSelected}) {
            StartWithSamples();
            editorState.selectedIndex = selected;
            editorState.statusMessage = L"before";
            command();
            CHECK(editorState.scene.size() == 6);
            CHECK(editorState.undoSteps.empty());
            CHECK(editorState.statusMessage == L"before");
        }
    }
}

TEST_CASE("deleting a parent deletes all below it and leaves the others' parents") {
    StartWithParents({-1, -1, 8, -1, 3, 3, 4, 1, -1, 7});
    editorState.selectedIndex = 3;
    deleteSelected();
    CHECK(Names() == std::vector<std::wstring>{L"o0", L"o1", L"o2", L"o7", L"o8", L"o9"});
    CHECK(Parents() == std::vector<int32_t>{-1, -1, 4, 1, -1, 3});
    CHECK(editorState.selectedIndex == 3);
    CHECK(editorState.statusMessage == L"Vybrany objekt byl smazan.");
    undo();
    CHECK(editorState.scene.size() == 10);
    CHECK(editorState.selectedIndex == 3);
}

TEST_CASE("after the last object is deleted the one before it is selected") {
    StartWithParents({-1, -1, -1, -1});
    editorState.selectedIndex = 3;
    deleteSelected();
    CHECK(editorState.selectedIndex == 2);
}

TEST_CASE("the first two objects of a scene are protected by their place, not their name") {
    for (const int32_t selected : {0, 1}) {
        StartWithSamples();
        editorState.scene[selected].name = L"Anything";
        editorState.selectedIndex = selected;
        const Scene before = editorState.scene;
        deleteSelected();
        CHECK(editorState.scene == before);
        CHECK(editorState.undoSteps.empty());
        CHECK(editorState.statusMessage ==
              L"Game Camera a Directional Light jsou chranene editorove objekty.");
    }
}

TEST_CASE("in the Prefab editor every object can be deleted, the last one too") {
    StartWithParents({-1, 0});
    editorState.screen = Screen::PrefabEditor;
    editorState.selectedIndex = 0;
    deleteSelected();
    CHECK(editorState.scene.empty());
    CHECK(editorState.selectedIndex == -1);
    CHECK(editorState.prefabDirty);
    undo();
    CHECK(editorState.scene.size() == 2);
}

TEST_CASE("deleting an object in a cycle of parents deletes the cycle") {
    StartWithParents({-1, -1, 3, 4, 2, 4, -1});
    editorState.selectedIndex = 4;
    deleteSelected();
    CHECK(Names() == std::vector<std::wstring>{L"o0", L"o1", L"o6"});
}

TEST_CASE("a cycle of parents that is not deleted stays a cycle") {
    StartWithParents({-1, -1, -1, 4, 3});
    editorState.selectedIndex = 2;
    deleteSelected();
    CHECK(Parents() == std::vector<int32_t>{-1, -1, 3, 2});
}

TEST_CASE("deleting an object ends its drag and closes the boxes about it") {
    StartWithSamples();
    Hold<HierarchyDrag>({.source = 2});
    editorState.numberEntry = {.open = true, .target = 2};
    deleteSelected();
    CHECK_FALSE(GestureIsUnderWay());
    CHECK_FALSE(editorState.numberEntry.open);
}

TEST_CASE("an object moves before, behind and under another one") {
    struct {
        int32_t dragged, target;
        bool asChild, after;
        std::vector<std::wstring> names;
        std::vector<int32_t> parents;
        int32_t selected;
    } cases[] = {
        // A list of o0, o1 with child o2, o3 with child o4.
        {0, 3, false, false, {L"o1", L"o2", L"o0", L"o3", L"o4"}, {-1, 0, -1, -1, 3}, 2},
        {0, 3, false, true, {L"o1", L"o2", L"o3", L"o0", L"o4"}, {-1, 0, -1, -1, 2}, 3},
        {0, 3, true, false, {L"o1", L"o2", L"o3", L"o0", L"o4"}, {-1, 0, -1, 2, 2}, 3},
        {0, 3, true, true, {L"o1", L"o2", L"o3", L"o0", L"o4"}, {-1, 0, -1, 2, 2}, 3},
        {3, 0, false, false, {L"o3", L"o0", L"o1", L"o2", L"o4"}, {-1, -1, -1, 2, 0}, 0},
        {3, 0, false, true, {L"o0", L"o3", L"o1", L"o2", L"o4"}, {-1, -1, -1, 2, 1}, 1},
        {3, 2, false, true, {L"o0", L"o1", L"o2", L"o3", L"o4"}, {-1, -1, 1, 1, 3}, 3},
        {4, 2, true, false, {L"o0", L"o1", L"o2", L"o4", L"o3"}, {-1, -1, 1, 2, -1}, 3},
        {2, 4, false, true, {L"o0", L"o1", L"o3", L"o4", L"o2"}, {-1, -1, -1, 2, 2}, 4},
        {1, 0, true, false, {L"o0", L"o1", L"o2", L"o3", L"o4"}, {-1, 0, 1, -1, 3}, 1},
        {2, 1, false, false, {L"o0", L"o2", L"o1", L"o3", L"o4"}, {-1, -1, -1, -1, 3}, 1},
    };
    for (const auto& [dragged, target, asChild, after, names, parents, selected] : cases) {
        CAPTURE(dragged);
        CAPTURE(target);
        StartWithParents({-1, -1, 1, -1, 3});
        moveInHierarchy(dragged, target, asChild, after);
        CHECK(Names() == names);
        CHECK(Parents() == parents);
        CHECK(editorState.selectedIndex == selected);
        CHECK(editorState.statusMessage == (asChild ? L"Objekt byl presunut jako potomek v Hierarchy."
                                                    : L"Objekt byl presunut v Hierarchy."));
        undo();
        CHECK(Names() == std::vector<std::wstring>{L"o0", L"o1", L"o2", L"o3", L"o4"});
        CHECK(Parents() == std::vector<int32_t>{-1, -1, 1, -1, 3});
    }
}

TEST_CASE("an object is never moved into its own subtree, onto itself or to nowhere") {
    struct {
        int32_t dragged, target;
    } cases[] = {{1, 2}, {1, 3}, {1, 1}, {-1, 0}, {0, -1}, {4, 0}, {0, 4}, {INT32_MAX, INT32_MIN}};
    for (const auto& [dragged, target] : cases) {
        StartWithParents({-1, -1, 1, 2});
        editorState.statusMessage = L"before";
        moveInHierarchy(dragged, target, true, false);
        CHECK(Parents() == std::vector<int32_t>{-1, -1, 1, 2});
        CHECK(editorState.undoSteps.empty());
        CHECK(editorState.statusMessage == L"before");
    }
}

TEST_CASE("a moved object stays at its place in the world and keeps the numbers of its rotation and scale") {
    StartWithParents({-1, 0, 1, -1, 3});
    Scene& scene = editorState.scene;
    scene[0] = {.name = L"o0", .position{1, 2, 3}, .rotation{0.1f, 0.7f, 0}, .scale{2, 1, 0.5f}};
    scene[1].position = {4, 0, -2};
    scene[3] = {.name = L"o3", .position{-3, 0, 1}, .rotation{0, -0.4f, 0.3f}, .scale{0.5f, 3, 1}};
    const Vec3 place = WorldPosition(scene, 1);
    const GameObject before = scene[1];

    moveInHierarchy(1, 3, true, false);
    REQUIRE(Names() == std::vector<std::wstring>{L"o0", L"o2", L"o3", L"o1", L"o4"});
    CHECK(Parents() == std::vector<int32_t>{-1, 3, -1, 2, 2});
    CHECK(Length(WorldPosition(scene, 3) - place) < 1e-4f);
    CHECK(scene[3].rotation == before.rotation);
    CHECK(scene[3].scale == before.scale);

    moveInHierarchy(3, 0, false, false);
    CHECK(Length(scene[0].position - place) < 1e-4f);
    CHECK(scene[0].parentIndex == -1);
}

TEST_CASE("under a flat parent a moved object keeps its distance from it") {
    StartWithParents({-1, -1});
    editorState.scene[0].position = {5, 5, 5};
    editorState.scene[1] = {.position{1, 2, 3}, .scale{1, 0, 1}};
    moveInHierarchy(0, 1, true, false);
    CHECK(editorState.scene[1].position == Vec3{4, 3, 2});
}

TEST_CASE("moving beside an object whose parent is not there makes a root") {
    StartWithParents({-1, 77});
    moveInHierarchy(0, 1, false, true);
    CHECK(Parents() == std::vector<int32_t>{-1, -1});
}

TEST_CASE("an object that leaves a chain of 1,099 parents stays where it is in the world") {
    editorState = EditorState{};
    for (int32_t i = 0; i < 1100; ++i)
        editorState.scene.push_back({.position{1, 0, 0}, .parentIndex = i - 1});
    moveInHierarchy(1099, 0, false, false);
    CHECK(editorState.scene[0].parentIndex == -1);
    CHECK(editorState.scene[0].position == Vec3{1100, 0, 0});
}
