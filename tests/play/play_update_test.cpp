#include "play/play_update.h"

#include "scene/editor_state.h"

#include "doctest/doctest.h"

TEST_CASE("every update lets the animation clock run and flies the camera with the keys that are down") {
    editorState = EditorState{};
    editorState.keyDown['W'] = true;
    UpdatePlay(0.05f);
    UpdatePlay(0.05f);
    CHECK(editorState.animationTime == doctest::Approx(0.1));
    CHECK(editorState.cameraPosition.z == doctest::Approx(-10 + 0.44));
}

TEST_CASE("behind the Project Hub and the Blueprint editor only the clock runs") {
    for (bool hub : {true, false}) {
        editorState = EditorState{};
        editorState.hubVisible = hub;
        if (!hub) editorState.screen = Screen::BlueprintEditor;
        editorState.keyDown['W'] = true;
        UpdatePlay(0.05f);
        CHECK(editorState.animationTime == 0.05f);
        CHECK(editorState.cameraPosition == Vec3{0, 4, -10});
    }
}

TEST_CASE("in the game no page stands before the scene") {
    editorState = EditorState{};
    editorState.runtimeMode = true;
    editorState.hubVisible = true;
    editorState.keyDown['W'] = true;
    UpdatePlay(0.05f);
    CHECK(editorState.cameraPosition != Vec3{0, 4, -10});
}
