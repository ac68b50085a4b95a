#include "scene/default_scenes.h"

#include "render/builtin_meshes.h"
#include "state/editor_state.h"

static Scene ProtectedObjects() {
    return {
        {.name = L"Game Camera", .position{0, 2, -7}, .rotation{-0.08f, 0, 0}, .isCamera = true},
        {.name = L"Directional Light", .position{0, 4, -2}, .rotation{-0.7f, 0.4f, 0}, .isLight = true},
    };
}

static Scene SampleObjects() {
    return {
        {.name = L"PlayerCube", .position{0, 0.35f, 2}, .meshIndex = kCubeMesh, .hasAnimation = true},
        {.name = L"EnemyEntity", .position{-2.8f, 0.15f, 4.4f}, .isEntity = true},
        {.name = L"Platform",
         .position{2.7f, -0.25f, 5.4f},
         .rotation{0, 0.4f, 0},
         .scale{1.4f, 0.35f, 1.4f},
         .meshIndex = kCubeMesh,
         .hasCollision = true},
        {.name = L"Ground", .meshIndex = kGroundMesh, .hasCollision = true},
    };
}

void resetScene(bool withSamples) {
    editorState.meshes = BuiltinMeshLibrary();
    editorState.textures.clear();

    editorState.scene = ProtectedObjects();
    editorState.selectedIndex = 0;
    if (!withSamples) return;

    for (GameObject& object : SampleObjects()) editorState.scene.push_back(object);
    editorState.selectedIndex = 2;
}
