#include "play/collect.h"

#include "play/play_mode.h"
#include "state/editor_state.h"
#include "support/game.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

// Its box reaches from -1 to 1, and what it touches to 1.08.
static GameObject Collector(const std::wstring& target, const std::wstring& prefab = L"") {
    return {.name = L"Collector",
            .meshIndex = kCubeMesh,
            .scripts = {L"CollectOnTouch"},
            .collectTarget = target,
            .collectPrefab = prefab};
}

static GameObject Thing(float x, int32_t parent = -1) {
    return {.name = L"Thing", .position{x, 0, 0}, .meshIndex = kCubeMesh, .parentIndex = parent};
}

static GameObject Instance(const std::wstring& prefab, float x, int32_t parent = -1) {
    GameObject object = Thing(x, parent);
    object.prefabSource = prefab;
    return object;
}

static std::vector<bool> Active() {
    std::vector<bool> active;
    for (const GameObject& object : editorState.scene) active.push_back(object.active);
    return active;
}

static void PlayFrame() {
    editorState.statusMessage = L"before";
    UpdateFrame(0.05f);
}

TEST_CASE("a collector hides its target and counts it when they touch within 0.08") {
    struct {
        float x;
        bool touches;
    } cases[] = {{2.07f, true}, {2.09f, false}, {-2.07f, true}, {-2.09f, false}, {0, true}};
    for (const auto [x, touches] : cases) {
        StartGame({Collector(L"Thing"), Thing(x)});
        PlayFrame();
        CHECK(Active() == std::vector<bool>{true, !touches});
        CHECK(editorState.score == (touches ? 1 : 0));
        CHECK(editorState.statusMessage ==
              (touches ? L"CollectOnTouch: score +1, sebran objekt Thing" : L"before"));
    }
}

TEST_CASE("a target is collected once") {
    StartGame({Collector(L"Thing"), Thing(1)});
    PlayFrame();
    PlayFrame();
    CHECK(editorState.score == 1);
    CHECK(editorState.statusMessage == L"before");
}

TEST_CASE("only the first object of the target's name is the target") {
    StartGame({Collector(L"Thing"), Thing(9), Thing(1)});
    PlayFrame();
    CHECK(editorState.score == 0);
    Object(1).active = false;
    PlayFrame();
    CHECK(editorState.score == 0);
}

TEST_CASE("a collector never collects itself, and one without a target collects nothing") {
    StartGame({Collector(L"Collector"), Collector(L"Nobody"), Collector(L""), GameObject{.name = L""}});
    PlayFrame();
    CHECK(editorState.score == 0);
    CHECK(Active() == std::vector<bool>{true, true, true, true});
}

TEST_CASE("everything below a collected object is hidden with it") {
    StartGame({Collector(L"Thing"), Thing(1), {.parentIndex = 4}, {.parentIndex = 0}, {.parentIndex = 1}});
    PlayFrame();
    CHECK(Active() == std::vector<bool>{true, false, false, true, false});
}

TEST_CASE("objects in a cycle of parents are hidden together, and the search ends") {
    GameObject thing = Thing(1, 2);
    StartGame({Collector(L"Thing"), thing, {.parentIndex = 1}});
    PlayFrame();
    CHECK(Active() == std::vector<bool>{true, false, false});
}

TEST_CASE("a collected object stops being solid in the same frame") {
    GameObject wall = Thing(1.5f);
    wall.hasCollision = true;
    GameObject player{
        .position{0, 0, 0}, .meshIndex = kCubeMesh, .scripts = {L"PlayerController"}, .hasCollision = true};
    player.position = {1.5f, 0, -2.05f};
    StartGame({Collector(L"Thing"), wall, player});
    Hold({'W'});
    PlayFrame();
    CHECK_FALSE(Object(1).active);
    CHECK(Object(2).position.z == doctest::Approx(-1.85));
}

TEST_CASE("an inactive collector collects nothing") {
    GameObject collector = Collector(L"Thing");
    collector.active = false;
    StartGame({collector, Thing(1)});
    PlayFrame();
    CHECK(editorState.score == 0);
}

TEST_CASE("a collector that touches two instances collects one per frame, the first in scene order") {
    const ScratchFolder folder;
    const std::wstring coin = folder / L"coin.prefab";
    PutFile(coin, "");
    StartGame({Collector(L"", coin), Instance(coin, 5), Instance(coin, 1), Instance(coin, -1)});
    PlayFrame();
    CHECK(Active() == std::vector<bool>{true, true, false, true});
    CHECK(editorState.statusMessage == L"CollectOnTouch: score +1, sebran prefab coin.prefab");
    PlayFrame();
    CHECK(Active() == std::vector<bool>{true, true, false, false});
    PlayFrame();
    CHECK(editorState.score == 2);
    CHECK(editorState.statusMessage == L"before");
}

TEST_CASE("an instance is collected as a whole from its root, which may lie far away") {
    const ScratchFolder folder;
    const std::wstring coin = folder / L"coin.prefab";
    PutFile(coin, "");
    StartGame({Collector(L"", coin), Thing(50), Instance(coin, 0, 1), Instance(coin, -49, 2),
               Instance(coin, 70, 2)});
    PlayFrame();
    CHECK(Active() == std::vector<bool>{true, true, false, false, false});
    CHECK(editorState.score == 1);
}

TEST_CASE("a cycle of instances ends the climb to the root") {
    const ScratchFolder folder;
    const std::wstring coin = folder / L"coin.prefab";
    PutFile(coin, "");
    StartGame({Collector(L"", coin), Instance(coin, 0, 2), Instance(coin, 0, 1)});
    PlayFrame();
    CHECK(editorState.score == 1);
    CHECK(Active() == std::vector<bool>{true, false, false});
}

TEST_CASE("a collector that is an instance of its own prefab does not collect itself") {
    const ScratchFolder folder;
    const std::wstring coin = folder / L"coin.prefab";
    PutFile(coin, "");
    GameObject collector = Collector(L"", coin);
    collector.prefabSource = coin;
    StartGame({collector});
    PlayFrame();
    CHECK(editorState.score == 0);
}

TEST_CASE(
    "while there is a prefab to collect, the target is left alone; without its file the target counts") {
    const ScratchFolder folder;
    const std::wstring coin = folder / L"coin.prefab";
    PutFile(coin, "");
    StartGame({Collector(L"Thing", coin), Thing(1)});
    PlayFrame();
    CHECK(editorState.score == 0);
    RemoveTree(coin);
    PlayFrame();
    CHECK(editorState.score == 1);
    CHECK(editorState.statusMessage == L"CollectOnTouch: score +1, sebran objekt Thing");
}

TEST_CASE("the score is shown in the score text, and counts without one") {
    StartGame({Collector(L"Thing"),
               Thing(1),
               {.name = L"Title", .isText = true},
               {.name = L"SKORE", .isText = true}});
    PlayFrame();
    CHECK(Object(2).text == L"Text");
    CHECK(Object(3).text == L"Score: 1");
    StartGame({Collector(L"Thing"), Thing(1)});
    PlayFrame();
    CHECK(editorState.score == 1);
}

TEST_CASE("after the game everything collected is back") {
    StartGame({Collector(L"Thing"), Thing(1)});
    PlayFrame();
    StopPlayMode();
    CHECK(Active() == std::vector<bool>{true, true});
}

TEST_CASE("setting an object active reaches everything below it and nothing else") {
    StartGame({{.parentIndex = 2}, {}, {.parentIndex = 1}, {}, {.parentIndex = 7}});
    WorldBoxes boxes;
    SetActiveRecursive(1, false, boxes);
    CHECK(Active() == std::vector<bool>{false, false, false, true, true});
    SetActiveRecursive(2, true, boxes);
    CHECK(Active() == std::vector<bool>{true, false, true, true, true});
}

static void StartWith(Scene scene, int32_t score) {
    editorState = EditorState{};
    editorState.scene = std::move(scene);
    editorState.score = score;
}

TEST_CASE("the score is written into the Text whose name or text mentions it, in any letter case") {
    for (const GameObject& shown :
         {GameObject{.name = L"SKORE", .isText = true},
          GameObject{.name = L"Label", .isText = true, .text = L"your sCoRe here"}}) {
        StartWith({{.name = L"Title", .isText = true, .text = L"Game"}, {.name = L"Score cube"}, shown}, 7);
        ShowScore();
        CHECK(editorState.scene[2].text == L"Score: 7");
        CHECK(editorState.scene[0].text == L"Game");
        CHECK(editorState.scene[1].text == L"Text");
    }
}

TEST_CASE("a Text that almost mentions the score is like any other") {
    for (const wchar_t* nearly : {L"Skor", L"Scor", L"S core", L"Sk ore"}) {
        StartWith({{.name = L"Title", .isText = true}, {.name = nearly, .isText = true, .text = nearly}}, 7);
        ShowScore();
        CHECK(editorState.scene[0].text == L"Score: 7");
        CHECK(editorState.scene[1].text == nearly);
    }
}

TEST_CASE("without such a Text the first active one shows the score") {
    StartWith({{.name = L"Off", .active = false, .isText = true}, {.name = L"On", .isText = true}}, -3);
    ShowScore();
    CHECK(editorState.scene[0].text == L"Text");
    CHECK(editorState.scene[1].text == L"Score: -3");
}

TEST_CASE("an inactive score text is passed over") {
    StartWith({{.name = L"Score", .active = false, .isText = true}, {.name = L"Title", .isText = true}}, 1);
    ShowScore();
    CHECK(editorState.scene[0].text == L"Text");
    CHECK(editorState.scene[1].text == L"Score: 1");
}

TEST_CASE("without a Text the score is shown nowhere") {
    StartWith({{.name = L"Score"}}, 1);
    ShowScore();
    CHECK(editorState.scene[0].text == L"Text");
}

TEST_CASE("a game begins at rest, at time 0 and with a score of 0 shown") {
    StartWith({{.name = L"Ball", .velocityY = -4, .velocity{1, 2, 3}}, {.name = L"Score", .isText = true}},
              12);
    editorState.animationTime = 9;
    ResetGameState();
    CHECK(editorState.scene[0].velocityY == 0);
    CHECK(editorState.scene[0].velocity == Vec3{});
    CHECK(editorState.animationTime == 0);
    CHECK(editorState.score == 0);
    CHECK(editorState.scene[1].text == L"Score: 0");
}
