#include "formats/prefab.h"
#include "support/game.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

static GameObject Spawner(const std::wstring& prefab) {
    return {.name = L"Spawner",
            .position{10, 2, -3},
            .scale{4, 1, 6},
            .meshIndex = kPlaneMesh,
            .scripts = {L"PlanePrefabSpawner"},
            .spawnerPrefab = prefab};
}

// A small cube that stays where it is put.
static GameObject Coin() { return {.name = L"Coin", .scale{0.2f, 0.2f, 0.2f}, .meshIndex = kCubeMesh}; }

static std::wstring PutPrefab(const ScratchFolder& folder, std::wstring_view name, const Scene& objects) {
    REQUIRE(WritePrefab(folder / name, objects));
    return folder / name;
}

static void StartSpawning(const ScratchFolder& folder, Scene objects) {
    StartGame(std::move(objects));
    editorState.projectRoot = folder.path;
}

static int32_t ObjectCount() { return static_cast<int32_t>(editorState.scene.size()); }

static void PlayFrame() {
    editorState.statusMessage = L"before";
    UpdateFrame(0.05f);
}

TEST_CASE("the first ten spots follow from the generator's first state, in every game") {
    // Worked out from the generator's definition in double precision, apart from this program.
    const double spots[10][2] = {{8.0879933, 1.9288337},   {7.9874312, -4.4684691},  {12.6749753, -7.9677607},
                                 {10.6938608, -5.6716803}, {13.0206527, -0.1797332}, {6.6203132, -6.8230454},
                                 {10.2372339, 2.8584008},  {13.4388280, -2.5302425}, {13.7173529, 2.9069982},
                                 {12.8071880, -8.8897970}};
    const ScratchFolder folder;
    const std::wstring coin = PutPrefab(folder, L"coin.prefab", {Coin()});
    for (int32_t game = 0; game < 2; ++game) {
        StartSpawning(folder, {Spawner(coin)});
        for (int32_t i = 0; i < 10; ++i) {
            PlayFrame();
            REQUIRE(ObjectCount() == i + 2);
            CHECK(editorState.scene.back().position.x == doctest::Approx(spots[i][0]));
            CHECK(editorState.scene.back().position.y == doctest::Approx(2.02 + 0.04));
            CHECK(editorState.scene.back().position.z == doctest::Approx(spots[i][1]));
            CHECK(editorState.statusMessage == L"PlanePrefabSpawner: spawned coin.prefab");
            editorState.scene.back().active = false;
        }
    }
}

TEST_CASE("another game continues the random sequence where it was") {
    const ScratchFolder folder;
    StartSpawning(folder, {Spawner(PutPrefab(folder, L"coin.prefab", {Coin()}))});
    PlayFrame();
    const uint32_t state = editorState.randomState;
    CHECK(state == (0x9E3779B9u * 1664525u + 1013904223u) * 1664525u + 1013904223u);
    StopPlayMode();
    CHECK(ObjectCount() == 1);
    StartPlayMode();
    CHECK(editorState.randomState == state);
}

TEST_CASE("while an instance stands on the spawner, or just above or beside it, nothing is spawned") {
    const ScratchFolder folder;
    const std::wstring coin = PutPrefab(folder, L"coin.prefab", {Coin()});
    struct {
        Vec3 place;
        bool stands;
    } cases[] = {
        {{10, 2.31f, -3}, true}, {{10, 2.33f, -3}, false}, {{14.29f, 2, -3}, true}, {{14.31f, 2, -3}, false}};
    for (const auto& [place, stands] : cases) {
        GameObject instance = Coin();
        instance.prefabSource = coin;
        instance.position = place;
        StartSpawning(folder, {Spawner(coin), instance});
        PlayFrame();
        CHECK(ObjectCount() == (stands ? 2 : 3));
    }
    GameObject other = Coin();
    other.prefabSource = folder / L"other.prefab";
    other.position = {10, 2, -3};
    StartSpawning(folder, {Spawner(coin), other});
    PlayFrame();
    CHECK(ObjectCount() == 3);
}

TEST_CASE("a collected instance makes room for the next one, at another spot") {
    const ScratchFolder folder;
    const std::wstring coin = PutPrefab(folder, L"coin.prefab", {Coin()});
    GameObject collector{.position{10, 2, -3},
                         .scale{9, 9, 9},
                         .meshIndex = kCubeMesh,
                         .scripts = {L"CollectOnTouch"},
                         .collectPrefab = coin};
    StartSpawning(folder, {Spawner(coin), collector});
    for (int32_t frame = 1; frame <= 3; ++frame) {
        PlayFrame();
        REQUIRE(ObjectCount() == 2 + frame);
        CHECK(editorState.score == frame);
        CHECK_FALSE(editorState.scene.back().active);
    }
    CHECK(Object(2).position != Object(3).position);
}

TEST_CASE("a spawned object is a copy of the prefab; it is not selected and makes no undo step") {
    const ScratchFolder folder;
    const std::wstring coin =
        PutPrefab(folder, L"coin.prefab", {Coin(), {.name = L"Rim", .parentIndex = 0, .velocityY = -4}});
    StartSpawning(folder, {Spawner(coin)});
    PlayFrame();
    REQUIRE(ObjectCount() == 3);
    CHECK(Object(1).name == L"coin");
    CHECK(Object(1).parentIndex == -1);
    CHECK(Object(2).parentIndex == 1);
    CHECK(Object(2).prefabSource == coin);
    CHECK(Object(2).velocityY == 0);
    CHECK(editorState.selectedIndex == 0);
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("inactive spawners, and those without Shape, spawn nothing and say nothing") {
    const ScratchFolder folder;
    GameObject inactive = Spawner(PutPrefab(folder, L"coin.prefab", {Coin()})), shapeless = inactive;
    inactive.active = shapeless.hasShape = false;
    StartSpawning(folder, {inactive, shapeless});
    PlayFrame();
    CHECK(ObjectCount() == 2);
    CHECK(editorState.statusMessage == L"before");
}

TEST_CASE("a spawner whose prefab is missing takes the first one that exists in the project") {
    const ScratchFolder folder;
    const std::wstring coin = PutPrefab(folder, L"coin.prefab", {Coin()});
    const std::wstring gem = PutPrefab(folder, L"gem.prefab", {Coin()});
    for (const std::wstring& own : {std::wstring{}, folder / L"deleted.prefab", folder.path}) {
        StartSpawning(folder, {Spawner(own)});
        editorState.fileEntries = {{.path = folder / L"x.cpp", .kind = AssetKind::Script},
                                   {.path = folder / L"gone.prefab", .kind = AssetKind::Prefab},
                                   {.path = gem, .kind = AssetKind::Prefab},
                                   {.path = coin, .kind = AssetKind::Prefab}};
        PlayFrame();
        CHECK(Object(0).spawnerPrefab == gem);
        CHECK(editorState.scene.back().prefabSource == gem);
        StopPlayMode();
        CHECK(Object(0).spawnerPrefab == own);
    }
}

TEST_CASE("without any prefab a spawner says so in every frame") {
    const ScratchFolder folder;
    StartSpawning(folder, {Spawner(folder / L"coin.prefab")});
    for (int32_t frame = 0; frame < 2; ++frame) {
        PlayFrame();
        CHECK(ObjectCount() == 1);
        CHECK(editorState.statusMessage == L"PlanePrefabSpawner: v Files neni zadny .prefab.");
    }
    CHECK(editorState.randomState == 0x9E3779B9u);
}

TEST_CASE("a spawner whose prefab is deleted while playing stops and says so") {
    const ScratchFolder folder;
    const std::wstring coin = PutPrefab(folder, L"coin.prefab", {Coin()});
    StartSpawning(folder, {Spawner(coin)});
    PlayFrame();
    REQUIRE(ObjectCount() == 2);
    RemoveTree(coin);
    Object(1).active = false;
    PlayFrame();
    CHECK(ObjectCount() == 2);
    CHECK(editorState.statusMessage == L"PlanePrefabSpawner: v Files neni zadny .prefab.");
}

TEST_CASE("a prefab without objects spawns nothing, one with missing files spawns what it can") {
    const ScratchFolder folder;
    PutFile(folder / L"empty.prefab", "ZELENGINE_PREFAB\t1\r\n");
    StartSpawning(folder, {Spawner(folder / L"empty.prefab")});
    PlayFrame();
    CHECK(ObjectCount() == 1);
    CHECK(editorState.statusMessage == L"PlanePrefabSpawner: spawned empty.prefab");

    const auto tabs = [](size_t count) { return std::string(count, '\t'); };
    PutFile(folder / L"bare.prefab", "O\tx" + tabs(10) + "file:gone.obj" + tabs(29) + "gone.png" + tabs(13));
    StartSpawning(folder, {Spawner(folder / L"bare.prefab")});
    PlayFrame();
    REQUIRE(ObjectCount() == 2);
    CHECK(Object(1).meshIndex == -1);
    CHECK(editorState.statusMessage == L"PlanePrefabSpawner: spawned bare.prefab");
}

TEST_CASE("a spawned object acts in the same frame, because it stands after the spawner") {
    const ScratchFolder folder;
    GameObject falling = Coin();
    falling.hasGravitation = true;
    StartSpawning(folder, {Spawner(PutPrefab(folder, L"coin.prefab", {falling}))});
    PlayFrame();
    CHECK(Object(1).velocityY == doctest::Approx(-0.49));
}

TEST_CASE("a spawner within a prefab spawns in the frame in which it is placed") {
    const ScratchFolder folder;
    const std::wstring coin = PutPrefab(folder, L"coin.prefab", {Coin()});
    GameObject nest = Coin();
    nest.scripts = {L"PlanePrefabSpawner"};
    nest.spawnerPrefab = coin;
    editorState.projectRoot = folder.path;
    const std::wstring nestPath = PutPrefab(folder, L"nest.prefab", {nest});
    StartSpawning(folder, {Spawner(nestPath)});
    PlayFrame();
    REQUIRE(ObjectCount() == 3);
    CHECK(Object(1).prefabSource == nestPath);
    CHECK(Object(2).prefabSource == coin);
}

// A prefab whose spawner, 100 units above its root, places `spawned` where nothing reaches it.
static Scene Tower(const std::wstring& spawned) {
    return {Coin(),
            {.name = L"Top",
             .position{0, 100, 0},
             .scale{0.1f, 0.1f, 0.1f},
             .meshIndex = kCubeMesh,
             .parentIndex = 0,
             .scripts = {L"PlanePrefabSpawner"},
             .spawnerPrefab = spawned}};
}

TEST_CASE("a prefab that spawns itself out of its own reach grows by one instance a frame") {
    const ScratchFolder folder;
    editorState.projectRoot = folder.path;
    const std::wstring tower = PutPrefab(folder, L"tower.prefab", Tower(folder / L"tower.prefab"));
    Scene objects = Tower(tower);
    objects[0].prefabSource = objects[1].prefabSource = tower;
    StartSpawning(folder, objects);
    for (int32_t frame = 1; frame <= 4; ++frame) {
        PlayFrame();
        CHECK(ObjectCount() == 2 + 2 * frame);
    }
}

TEST_CASE("two prefabs that spawn each other grow by one instance of each a frame") {
    const ScratchFolder folder;
    editorState.projectRoot = folder.path;
    const std::wstring left = PutPrefab(folder, L"left.prefab", Tower(folder / L"right.prefab"));
    PutPrefab(folder, L"right.prefab", Tower(left));
    StartSpawning(folder, {Spawner(left)});
    PlayFrame();
    CHECK(ObjectCount() == 1 + 2 + 2);  // the left one and the right one on top of it, which waits
    PlayFrame();
    CHECK(ObjectCount() == 1 + 2 * 4);
}
