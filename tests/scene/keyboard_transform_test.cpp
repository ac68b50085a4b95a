#include "platform/headless/headless.h"
#include "scene/undo.h"
#include "support/game.h"

#include "doctest/doctest.h"

static void StartEditing(GameObject object) {
    StartGame({std::move(object)});
    StopPlayMode();
    headless = {};
    editorState.selectedIndex = 0;
    editorState.statusMessage = L"before";
}

static GameObject Cube() { return {.meshIndex = kCubeMesh}; }

static void CheckVec3(Vec3 value, Vec3 expected) {
    CHECK(value.x == doctest::Approx(expected.x));
    CHECK(value.y == doctest::Approx(expected.y));
    CHECK(value.z == doctest::Approx(expected.z));
}

TEST_CASE("holding L for two seconds moves by 4 units and is one undo step") {
    StartEditing(Cube());
    Hold({'L'});
    PlayFrames(40);
    CheckVec3(Object(0).position, {4, 0, 0});
    CHECK(editorState.undoSteps.size() == 1);
    CHECK(editorState.statusMessage == L"Move tool: upravuji pozici vybraneho objektu.");
    undo();
    CHECK(Object(0).position == Vec3{});
}

TEST_CASE("with Ctrl held two seconds move by 10 units") {
    StartEditing(Cube());
    Hold({'L'});
    headless.controlIsHeld = true;
    PlayFrames(40);
    CheckVec3(Object(0).position, {10, 0, 0});
}

TEST_CASE("each key moves along its axis, and both keys of a pair cancel") {
    struct {
        char key;
        Vec3 moved;
    } cases[] = {{'L', {0.1f, 0, 0}},  {'J', {-0.1f, 0, 0}}, {'U', {0, 0.1f, 0}},
                 {'O', {0, -0.1f, 0}}, {'I', {0, 0, 0.1f}},  {'K', {0, 0, -0.1f}}};
    for (const auto& [key, moved] : cases) {
        StartEditing(Cube());
        Hold({key});
        PlayFrames(1);
        CheckVec3(Object(0).position, moved);
    }
    StartEditing(Cube());
    Hold({'L', 'J', 'U', 'I', 'K'});
    PlayFrames(1);
    CheckVec3(Object(0).position, {0, 0.1f, 0});
    StartEditing(Cube());
    Hold({'L', 'J'});
    PlayFrames(1);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.statusMessage == L"before");
}

TEST_CASE("the Rotate tool turns by 1.8 radians a second, the Scale tool grows by 0.9") {
    StartEditing(Cube());
    editorState.tool = Tool::Rotate;
    Hold({'U'});
    PlayFrames(20);
    CheckVec3(Object(0).rotation, {0, 1.8f, 0});
    CHECK(editorState.statusMessage == L"Rotate tool: upravuji rotaci vybraneho objektu.");
    StartEditing(Cube());
    editorState.tool = Tool::Scale;
    Hold({'L'});
    PlayFrames(20);
    CheckVec3(Object(0).scale, {1.9f, 1, 1});
    CHECK(editorState.statusMessage == L"Scale tool: upravuji velikost vybraneho objektu.");
}

TEST_CASE("scaling stops at 0.1 on every axis, and raises what is below") {
    StartEditing(Cube());
    editorState.tool = Tool::Scale;
    Object(0).scale = {1, 1, -3};
    Hold({'J', 'O', 'K'});
    PlayFrames(40);
    CHECK(Object(0).scale == Vec3{0.1f, 0.1f, 0.1f});
}

TEST_CASE("letting go of all keys ends the undo step, changing keys does not") {
    StartEditing(Cube());
    Hold({'L'});
    PlayFrames(2);
    ReleaseKeys();
    Hold({'I'});
    PlayFrames(2);
    CHECK(editorState.undoSteps.size() == 1);
    ReleaseKeys();
    PlayFrames(1);
    CHECK_FALSE(editorState.keyboardTransform);
    Hold({'L'});
    PlayFrames(2);
    CHECK(editorState.undoSteps.size() == 2);
}

TEST_CASE("objects with a mesh, entities, cameras, lights and texts can be moved, others cannot") {
    for (const GameObject& object : {Cube(), GameObject{.isEntity = true}, GameObject{.isCamera = true},
                                     GameObject{.isLight = true}, GameObject{.isText = true}}) {
        StartEditing(object);
        Hold({'L'});
        PlayFrames(1);
        CheckVec3(Object(0).position, {0.1f, 0, 0});
    }
    StartEditing({});
    Hold({'L'});
    editorState.keyboardTransform = true;
    PlayFrames(1);
    CHECK(Object(0).position == Vec3{});
    CHECK_FALSE(editorState.keyboardTransform);
}

TEST_CASE("without a selection nothing moves and no undo step begins") {
    for (const int32_t selected : {-1, 1, 99}) {
        StartEditing(Cube());
        editorState.selectedIndex = selected;
        editorState.keyboardTransform = true;
        Hold({'L'});
        PlayFrames(1);
        CHECK(Object(0).position == Vec3{});
        CHECK_FALSE(editorState.keyboardTransform);
        CHECK(editorState.undoSteps.empty());
    }
}

TEST_CASE("the keys do not move the selection while playing, nor in the game after it was stopped") {
    StartEditing(Cube());
    StartPlayMode();
    Hold({'L'});
    PlayFrames(2);
    CHECK(Object(0).position == Vec3{});
    StopPlayMode();
    editorState.runtimeMode = true;
    PlayFrames(2);
    CHECK(Object(0).position == Vec3{});
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("the keys move an object of a prefab that is edited, and mark it as changed") {
    StartEditing(Cube());
    editorState.screen = Screen::PrefabEditor;
    Hold({'L'});
    PlayFrames(1);
    CheckVec3(Object(0).position, {0.1f, 0, 0});
    CHECK(editorState.prefabDirty);
}

TEST_CASE("behind the Project Hub and the Blueprint editor the keys move nothing") {
    for (const bool hub : {true, false}) {
        StartEditing(Cube());
        editorState.hubVisible = hub;
        if (!hub) editorState.screen = Screen::BlueprintEditor;
        Hold({'L'});
        PlayFrames(2);
        CHECK(Object(0).position == Vec3{});
    }
}
