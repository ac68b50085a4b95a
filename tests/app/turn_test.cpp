#include "app/turn.h"

#include "formats/prefab.h"
#include "platform/headless/fault_injection.h"
#include "support/cached_picture.h"
#include "support/editor_input.h"
#include "support/game.h"
#include "support/sample_project.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>

TEST_CASE("every update lets the animation clock run and flies the camera with the keys that are down") {
    editorState = EditorState{};
    editorState.keyDown['W'] = true;
    UpdateFrame(0.05f);
    UpdateFrame(0.05f);
    CHECK(editorState.animationTime == doctest::Approx(0.1));
    CHECK(editorState.camera.position.z == doctest::Approx(-10 + 0.44));
}

TEST_CASE("behind the Project Hub and the Blueprint editor only the clock runs") {
    for (bool hub : {true, false}) {
        editorState = EditorState{};
        editorState.hubVisible = hub;
        if (!hub) editorState.screen = Screen::BlueprintEditor;
        editorState.keyDown['W'] = true;
        UpdateFrame(0.05f);
        CHECK(editorState.animationTime == 0.05f);
        CHECK(editorState.camera.position == Vec3{0, 4, -10});
    }
}

TEST_CASE("in the game no page stands before the scene") {
    editorState = EditorState{};
    editorState.runtimeMode = true;
    editorState.hubVisible = true;
    editorState.keyDown['W'] = true;
    UpdateFrame(0.05f);
    CHECK(editorState.camera.position != Vec3{0, 4, -10});
}

TEST_CASE("an object is moved by its keys, collects, falls and animates, in this order") {
    // The player walks onto the coin and collects it in one frame; the speed of its fall is that after the
    // walk.
    StartGame({{.name = L"Player",
                .rotation{0, 0, 0},
                .meshIndex = kCubeMesh,
                .hasAnimation = true,
                .animationSpeed = 20,
                .scripts = {L"CollectOnTouch", L"PlayerController"},
                .hasGravitation = true,
                .collectTarget = L"Coin"},
               {.name = L"Coin", .position{0, 0, 2.2f}, .meshIndex = kCubeMesh}});
    Hold({'W'});
    UpdateFrame(0.05f);
    CHECK_FALSE(Object(1).active);
    // It walked along its rotation of before the animation, which turned it by a whole radian.
    CHECK(Object(0).position.x == 0);
    CHECK(Object(0).position.z == doctest::Approx(0.2));
    CHECK(Object(0).position.y == doctest::Approx(-0.0245));
    CHECK(Object(0).rotation.y == doctest::Approx(1));
}

TEST_CASE("a collector touches where it stands before its fall") {
    StartGame({{.meshIndex = kCubeMesh,
                .scripts = {L"CollectOnTouch"},
                .hasGravitation = true,
                .gravityStrength = 400,
                .collectTarget = L"Coin"},
               {.name = L"Coin", .position{0, -2.5f, 0}, .meshIndex = kCubeMesh}});
    UpdateFrame(0.05f);
    CHECK(editorState.score == 0);
    UpdateFrame(0.05f);
    CHECK(editorState.score == 1);
}

TEST_CASE("objects act in scene order: one that moved first is met where it is now") {
    const GameObject player{.meshIndex = kCubeMesh, .scripts = {L"PlayerController"}, .hasCollision = true};
    GameObject ahead = player, behind = player;
    ahead.position.z = 2.1f;
    for (const bool aheadFirst : {true, false}) {
        StartGame(aheadFirst ? Scene{ahead, behind} : Scene{behind, ahead});
        Hold({'W'});
        UpdateFrame(0.05f);
        const float z = Object(aheadFirst ? 1 : 0).position.z;
        CHECK(z == doctest::Approx(aheadFirst ? 0.2 : 0.099));
    }
}

TEST_CASE("the animation clock is ahead of the objects in every frame") {
    StartGame({{.hasAnimation = true, .animationType = 1, .animationSpeed = 10}});
    UpdateFrame(0.05f);
    CHECK(Object(0).scale.x > 1.07f);  // the sine of 1.5
}

TEST_CASE("nothing acts behind a page, in the Scene editor while it edits, or in a game that was stopped") {
    const auto falls = [] {
        const float y = Object(0).position.y;
        UpdateFrame(0.05f);
        return Object(0).position.y < y;
    };
    StartGame({{.hasGravitation = true}});
    CHECK(falls());
    editorState.hubVisible = true;
    CHECK_FALSE(falls());
    editorState.runtimeMode = true;
    CHECK(falls());
    editorState.playMode = false;
    CHECK_FALSE(falls());
}

TEST_CASE("an empty scene plays") {
    StartGame({});
    Hold({'W', 'L'});
    UpdateFrame(0.05f);
    CHECK(editorState.scene.empty());
    CHECK(editorState.animationTime == 0.05f);
}

TEST_CASE("1,000 collectors, spawners and movers share their look-ups") {
    const ScratchFolder folder;
    Scene scene;
    for (int32_t i = 0; i < 1000; ++i) {
        const auto at = static_cast<float>(i);
        scene.push_back({.name = L"o" + std::to_wstring(i),
                         .position{3 * at, 0, 0},
                         .meshIndex = kCubeMesh,
                         .scripts = {L"CollectOnTouch", L"PlanePrefabSpawner"},
                         .hasCollision = true,
                         .hasGravitation = true,
                         .collectTarget = L"o" + std::to_wstring(999 - i),
                         .collectPrefab = folder / L"a.prefab",
                         .spawnerPrefab = folder / L"b.prefab"});
    }
    StartGame(scene);
    fileFaults.steps = 0;
    UpdateFrame(0.05f);
    CHECK(fileFaults.steps == 2);  // each file is asked for once
}

TEST_CASE("an object in a cycle of parents is met where the scene puts it that has grown in the same frame") {
    const ScratchFolder folder;
    REQUIRE(WritePrefab(folder / L"coin.prefab", Scene{{.meshIndex = kCubeMesh}}));
    GameObject player{.position{6, 0, 0},
                      .scale{0.5f, 0.5f, 0.5f},
                      .meshIndex = kCubeMesh,
                      .scripts = {L"PlayerController"},
                      .hasCollision = true};
    GameObject early = player;
    early.position.x = 90;
    const GameObject spawner{.position{50, 0, 0},
                             .meshIndex = kCubeMesh,
                             .scripts = {L"PlanePrefabSpawner"},
                             .spawnerPrefab = folder / L"coin.prefab"};
    // As many parents are followed as there are objects: five put the wall at 3.75, a sixth puts it at 4.75.
    const GameObject wall{.position{1, 0, 0}, .meshIndex = kCubeMesh, .parentIndex = 3, .hasCollision = true};
    StartGame({early, spawner, wall, {.position{0.25f, 0, 0}, .parentIndex = 2}, player});
    Hold({'W'});
    UpdateFrame(0.05f);
    REQUIRE(editorState.scene.size() == 6);
    CHECK(Object(4).position.z == doctest::Approx(-1.501));
}

// What a turn draws.

static int32_t PresentsOf(Turn& turn, float dt = 0.016f) {
    const int32_t before = headless.presents;
    const bool isShown = RunTurn(dt, turn);
    const int32_t shown = headless.presents - before;
    CHECK(isShown == (shown == 1));
    return shown;
}

TEST_CASE("the first turn draws, and none after it while nothing happens") {
    StartEditor();
    for (const bool hub : {false, true}) {
        editorState.hubVisible = hub;
        Turn turn;
        CHECK(PresentsOf(turn) == 1);
        for (int32_t i = 0; i < 5; ++i) CHECK(PresentsOf(turn) == 0);
    }
}

TEST_CASE("a turn draws after each kind of event, once") {
    const ScratchFolder folder;  // the event of dropped files makes the project's folders
    folderAnswers.workingFolder = folder.path;
    StartEditor();
    Turn turn;
    PresentsOf(turn);
    for (const InputEvent& event :
         std::initializer_list<InputEvent>{{.kind = InputKind::MouseMove, .x = 3, .y = 4},
                                           {.kind = InputKind::LeftDown, .x = 600, .y = 20},
                                           {.kind = InputKind::LeftUp, .x = 600, .y = 20},
                                           {.kind = InputKind::LeftDoubleClick, .x = 600, .y = 20},
                                           {.kind = InputKind::RightDown, .x = 600, .y = 20},
                                           {.kind = InputKind::RightUp, .x = 600, .y = 20},
                                           {.kind = InputKind::KeyDown, .key = kKeyF2},
                                           {.kind = InputKind::KeyUp, .key = kKeyF2},
                                           {.kind = InputKind::Character, .character = L'x'},
                                           {.kind = InputKind::FilesDropped},
                                           {.kind = InputKind::FocusLost},
                                           {.kind = InputKind::CaptureLost},
                                           {.kind = InputKind::SessionEnds},
                                           {.kind = InputKind::Paint}}) {
        CAPTURE(static_cast<int32_t>(event.kind));
        HandleInput(event);
        CHECK(PresentsOf(turn) == 1);
        if (event.kind != InputKind::KeyDown) CHECK(PresentsOf(turn) == 0);
    }
}

TEST_CASE("every turn draws while a key is down or a game plays, and one more when that ends") {
    StartEditor();
    Turn turn;
    PresentsOf(turn);
    HandleInput({.kind = InputKind::KeyDown, .key = 'W'});
    for (int32_t i = 0; i < 3; ++i) CHECK(PresentsOf(turn) == 1);
    HandleInput({.kind = InputKind::KeyUp, .key = 'W'});
    CHECK(PresentsOf(turn) == 1);
    CHECK(PresentsOf(turn) == 0);
    TapKey('P');
    for (int32_t i = 0; i < 3; ++i) CHECK(PresentsOf(turn) == 1);
    TapKey('P');
    CHECK(PresentsOf(turn) == 1);
    CHECK(PresentsOf(turn) == 0);
}

TEST_CASE("a window of another size is drawn, and a minimised one is not while its game goes on") {
    StartEditor();
    Turn turn;
    PresentsOf(turn);
    headless.clientSize = {800, 600};
    CHECK(PresentsOf(turn) == 1);
    CHECK(PresentsOf(turn) == 0);
    TapKey('P');
    headless.clientSize = {0, 0};
    const float clock = editorState.animationTime;
    CHECK(PresentsOf(turn) == 0);
    CHECK(editorState.animationTime > clock);
    TapKey('P');
    CHECK(PresentsOf(turn) == 0);
    headless.clientSize = {800, 600};
    CHECK(PresentsOf(turn) == 1);
    CHECK(PresentsOf(turn) == 0);
}

TEST_CASE("a picture that failed is tried again in the next turn") {
    StartEditor();
    Turn turn;
    headless.canvasFails = true;
    headless.clientSize = {640, 480};
    CHECK(PresentsOf(turn) == 0);
    CHECK(PresentsOf(turn) == 0);
    headless.canvasFails = false;
    CHECK(PresentsOf(turn) == 1);
}

TEST_CASE("a pointer that moves over the editor presents nothing, and a tab presents its page") {
    StartEditor();
    CachePictures();
    Turn turn;
    RunTurn(0, turn);
    const auto presented = [&turn] {
        std::ranges::fill(headless.windowPixels, Pixel{0xABCDEF});
        CHECK(PresentsOf(turn, 0) == 1);
        return std::ranges::count_if(headless.windowPixels, [](Pixel p) { return p != Pixel{0xABCDEF}; });
    };
    for (const Point at : {Point{100, 100}, {600, 300}, {1200, 300}, {600, 700}}) {
        Move(at);
        CHECK(presented() == 0);
    }
    Click({30, 702});  // the Files page
    const auto page = presented();
    CHECK(page > 1360 * 50);
    CHECK(page <= 1360 * (820 - 688 + 1));  // the lower panel with its edge
}

// Every turn leaves the picture that drawing would give: one that draws nothing, and one that draws only what
// differs from the picture before. Called where nothing is held.
static void CheckTurns(Turn& turn) {
    for (int32_t i = 0; i < 3; ++i) {
        RunTurn(0.016f, turn);
        REQUIRE(FaultInCachedPicture() == "");
    }
}

TEST_CASE("through a session with each sample every picture is the one that drawing it whole would give") {
    for (const wchar_t* name : {L"Project", L"Dive", L"Harvest"}) {
        StartEditor(900, 560);
        OpenSample(name);
        headless.clientSize = {900, 560};
        CachePictures();
        Turn turn;
        const int32_t before = headless.presents;
        const auto after = [&turn](const auto& act) {
            act();
            CheckTurns(turn);
        };
        CheckTurns(turn);
        for (const Point at : {Point{100, 101}, {100, 213}, {400, 250}, {450, 300}, {700, 300}, {60, 446}}) {
            after([at] { Click(at); });
        }
        after([] { RightClick({400, 250}); });
        after([] { Move({440, 330}); });
        after([] { Click({440, 330}); });
        after([] { TapKey(kKeyF3); });
        after([] { Press({450, 300}); });
        after([] { Move({470, 280}); });
        after([] { Release({470, 280}); });
        after([] { TapWithControl('Z'); });
        after([] { PressRightAt({450, 300}); });
        for (int32_t i = 0; i < 5; ++i) {
            after([i] { Move({450 + 7 * i, 300 + 3 * i}); });
        }
        after([] { ReleaseRightAt({480, 310}); });
        after([] { HandleInput({.kind = InputKind::KeyDown, .key = 'W'}); });
        after([] { HandleInput({.kind = InputKind::KeyUp, .key = 'W'}); });
        after([] { TapKey('P'); });
        for (int32_t i = 0; i < 20; ++i) {
            CHECK(RunTurn(0.016f, turn));  // every turn of a game draws
            REQUIRE(FaultInCachedPicture() == "");
        }
        after([] { TapKey('P'); });
        after([] { LoseFocus(); });
        CHECK(headless.presents > before + 20);
    }
}
