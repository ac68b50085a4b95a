#include "state/editor_state.h"

#include "scene/status.h"

#include "doctest/doctest.h"

#include <algorithm>

TEST_CASE("a fresh state is an editor without a project, a scene or anything under way") {
    const EditorState state;
    CHECK(state.camera.position == Vec3{0, 4, -10});
    CHECK(state.camera.yaw == 0);
    CHECK(state.camera.pitch == -0.24f);
    CHECK(state.scene.empty());
    CHECK(state.meshes.empty());
    CHECK(state.textures.empty());
    CHECK(state.undoSteps.empty());
    CHECK_FALSE(state.clipboardObject.has_value());
    CHECK_FALSE(state.sceneBeforePlay.has_value());
    CHECK_FALSE(state.sceneBeforePrefab.has_value());
    CHECK(state.selectedIndex == 0);
    CHECK(std::ranges::count(state.keyDown, true) == 0);
    CHECK_FALSE(state.runtimeMode);
    CHECK_FALSE(state.hubVisible);
    CHECK_FALSE(state.playMode);
    CHECK(static_cast<int32_t>(state.screen) == 0);
    CHECK(static_cast<int32_t>(state.tool) == 0);
    CHECK(static_cast<int32_t>(state.bottomTab) == 1);
    CHECK_FALSE(state.prefabDirty);
    CHECK_FALSE(state.blueprintDirty);
    CHECK_FALSE(state.componentSearchActive);
    CHECK(state.score == 0);
    CHECK(state.animationTime == 0);
    CHECK(state.randomState == 0x9E3779B9u);
    CHECK(state.panels == PanelLayout{230, 320, 132});
    CHECK(std::holds_alternative<std::monostate>(state.gesture));
    CHECK(state.recentProjects.empty());
    CHECK(state.statusMessage == L"Ready. Software renderer bezi bez externich knihoven.");
}

TEST_CASE("before a project is opened the scene path is relative to the working folder") {
    const EditorState state;
    CHECK(state.projectRoot == L"Project");
    CHECK(state.filesRoot == L"Project\\Files");
    CHECK(state.filesFolder == L"Project\\Files");
    CHECK(state.scenePath == L"Project\\Files\\Scenes\\Main.scene");
}

TEST_CASE("only the second of two messages remains") {
    editorState = EditorState{};
    SetStatus(L"prvni");
    SetStatus(L"druha");
    CHECK(editorState.statusMessage == L"druha");
}
