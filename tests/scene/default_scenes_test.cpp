#include "scene/default_scenes.h"

#include "render/builtin_meshes.h"
#include "state/editor_state.h"

#include "doctest/doctest.h"

TEST_CASE("a reset without samples holds the camera and the light, the camera selected") {
    editorState = EditorState{};
    editorState.selectedIndex = 5;
    resetScene(false);
    REQUIRE(editorState.scene.size() == 2);
    CHECK(editorState.selectedIndex == 0);

    const GameObject camera{
        .name = L"Game Camera", .position{0, 2, -7}, .rotation{-0.08f, 0, 0}, .isCamera = true};
    const GameObject light{
        .name = L"Directional Light", .position{0, 4, -2}, .rotation{-0.7f, 0.4f, 0}, .isLight = true};
    CHECK(editorState.scene[0] == camera);
    CHECK(editorState.scene[1] == light);
}

TEST_CASE("a reset with samples adds four objects and selects the turning PlayerCube") {
    editorState = EditorState{};
    resetScene(true);
    REQUIRE(editorState.scene.size() == 6);
    CHECK(editorState.selectedIndex == 2);

    const GameObject player{
        .name = L"PlayerCube", .position{0, 0.35f, 2}, .meshIndex = 0, .hasAnimation = true};
    const GameObject enemy{.name = L"EnemyEntity", .position{-2.8f, 0.15f, 4.4f}, .isEntity = true};
    const GameObject platform{.name = L"Platform",
                              .position{2.7f, -0.25f, 5.4f},
                              .rotation{0, 0.4f, 0},
                              .scale{1.4f, 0.35f, 1.4f},
                              .meshIndex = 0,
                              .hasCollision = true};
    const GameObject ground{.name = L"Ground", .meshIndex = 2, .hasCollision = true};
    CHECK(editorState.scene[2] == player);
    CHECK(editorState.scene[2].animationType == 0);
    CHECK(editorState.scene[2].animationSpeed == 1.0f);
    CHECK(editorState.scene[3] == enemy);
    CHECK(editorState.scene[4] == platform);
    CHECK(editorState.scene[5] == ground);
}

TEST_CASE("a reset drops imported meshes and textures and names the seven built-in meshes") {
    editorState = EditorState{};
    resetScene(true);
    editorState.meshes.push_back({.name = L"Imported", .source = L"C:\\imported.obj"});
    editorState.textures.push_back({.path = L"C:\\image.png", .width = 1, .height = 1});

    resetScene(false);
    const std::vector<std::wstring> names = {L"Cube",   L"Pyramid", L"Ground",  L"Plane",
                                             L"Sphere", L"Capsule", L"Cylinder"};
    REQUIRE(editorState.meshes.size() == names.size());
    for (size_t i = 0; i < names.size(); ++i) {
        CHECK(editorState.meshes[i].name == names[i]);
        CHECK(editorState.meshes[i].source.empty());
    }
    CHECK(editorState.textures.empty());
}

TEST_CASE("a reset leaves paths, undo history and clipboard as they are") {
    editorState = EditorState{};
    editorState.scenePath = L"elsewhere.scene";
    editorState.undoSteps = {{.selection = 1}, {.selection = 2}, {.selection = 3}};
    editorState.clipboardObject = {.name = L"kept"};
    resetScene(true);
    CHECK(editorState.scenePath == L"elsewhere.scene");
    REQUIRE(editorState.undoSteps.size() == 3);
    for (int32_t i = 0; i < 3; ++i) CHECK(editorState.undoSteps[static_cast<size_t>(i)].selection == i + 1);
    REQUIRE(editorState.clipboardObject.has_value());
    CHECK(editorState.clipboardObject->name == L"kept");
}
