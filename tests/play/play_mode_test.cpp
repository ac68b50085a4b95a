#include "play/play_mode.h"

#include "scene/commands.h"
#include "scene/editor_camera.h"
#include "scene/undo.h"
#include "support/edited_scene.h"
#include "support/gestures.h"

#include "doctest/doctest.h"

TEST_CASE("starting to play resets the game and keeps the edited scene aside") {
    StartWithSamples();
    editorState.scene[2].velocityY = -3;
    editorState.scene[3].velocity = {1, 2, 3};
    addText();
    const Scene before = editorState.scene;
    editorState.animationTime = 12;
    editorState.score = 5;

    StartPlayMode();
    CHECK(editorState.playMode);
    CHECK(editorState.scene[2].velocityY == 0);
    CHECK(editorState.scene[3].velocity == Vec3{});
    CHECK(editorState.animationTime == 0);
    CHECK(editorState.score == 0);
    CHECK(editorState.scene[6].text == L"Score: 0");
    REQUIRE(editorState.sceneBeforePlay.has_value());
    CHECK(editorState.sceneBeforePlay->scene == before);
    CHECK(editorState.statusMessage == L"Play mode zapnuty: stav sceny byl ulozen.");
}

TEST_CASE("stopping puts scene, camera, clock and selection back as they were") {
    StartWithSamples();
    editorState.scene[2].velocityY = -3;
    editorState.animationTime = 12;
    const CameraPose camera{{1, 2, 3}, 0.4f, 0.2f};
    editorState.camera = camera;
    editorState.selectedIndex = 4;
    const Scene before = editorState.scene;

    StartPlayMode();
    editorState.scene[2].position.y = -50;
    editorState.scene.resize(3);
    editorState.animationTime = 99;
    editorState.camera = {};
    editorState.selectedIndex = 1;
    StopPlayMode();

    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.scene == before);
    CHECK(editorState.camera == camera);
    CHECK(editorState.animationTime == 12);
    CHECK(editorState.selectedIndex == 4);
    CHECK_FALSE(editorState.sceneBeforePlay.has_value());
    CHECK(editorState.statusMessage == L"Edit mode zapnuty: scena obnovena do stavu pred spustenim hry.");
}

TEST_CASE("after stopping an object is selected if there is one") {
    struct {
        std::initializer_list<int32_t> parents;
        int32_t selected, restored;
    } cases[] = {{{-1, -1}, -1, 0}, {{-1, -1}, 1, 1}, {{-1, -1}, 9, 1}, {{}, 0, -1}, {{}, -1, -1}};
    for (const auto& [parents, selected, restored] : cases) {
        StartWithParents(parents);
        editorState.selectedIndex = selected;
        StartPlayMode();
        StopPlayMode();
        CHECK(editorState.selectedIndex == restored);
    }
}

TEST_CASE("a game that the runtime started keeps its scene when it stops") {
    StartWithSamples();
    editorState.runtimeMode = true;
    editorState.playMode = true;
    editorState.scene[2].position.y = -50;
    StopPlayMode();
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.scene[2].position.y == -50);
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.statusMessage == L"Edit mode zapnuty.");
}

TEST_CASE("playing starts only in the Scene editor, once, and not in the runtime") {
    const auto stays = [] {
        const auto kept = [] { return editorState.sceneBeforePlay.value_or(KeptScene{}).scene; };
        const Scene snapshot = kept();
        const bool playMode = editorState.playMode;
        editorState.statusMessage = L"before";
        StartPlayMode();
        return editorState.playMode == playMode && kept() == snapshot &&
               editorState.statusMessage == L"before";
    };
    StartWithSamples();
    editorState.screen = Screen::PrefabEditor;
    CHECK(stays());
    editorState.screen = Screen::BlueprintEditor;
    CHECK(stays());
    StartWithSamples();
    editorState.runtimeMode = true;
    CHECK(stays());
    StartWithSamples();
    StartPlayMode();
    editorState.scene[2].position.y = -50;
    CHECK(stays());
}

TEST_CASE("starting and stopping end drags and entries") {
    StartWithSamples();
    const auto beginGestures = [] {
        Hold<GizmoDrag>();
        editorState.keyboardTransform = true;
        editorState.nameEntry.kind = NameEntry::Kind::Object;
        editorState.numberEntry.open = true;
    };
    for (const auto change : {StartPlayMode, StopPlayMode}) {
        beginGestures();
        change();
        CHECK_FALSE(GestureIsUnderWay());
        CHECK_FALSE(editorState.keyboardTransform);
        CHECK(editorState.nameEntry.kind == NameEntry::Kind::Closed);
        CHECK_FALSE(editorState.numberEntry.open);
    }
}

TEST_CASE("stopping without a game does nothing") {
    StartWithSamples();
    editorState.statusMessage = L"before";
    StopPlayMode();
    CHECK(editorState.scene.size() == 6);
    CHECK(editorState.statusMessage == L"before");
}

TEST_CASE("undo and commands during a game leave no step behind, and the earlier steps come back") {
    StartWithSamples();
    addCube();
    addCube();
    const Scene before = editorState.scene;
    StartPlayMode();
    undo();
    undo();
    for (int32_t i = 0; i < 70; ++i) addCube();
    StopPlayMode();
    CHECK(editorState.scene == before);
    REQUIRE(editorState.undoSteps.size() == 2);
    undo();
    CHECK(editorState.scene.size() == 7);
    undo();
    CHECK(editorState.scene.size() == 6);
}
