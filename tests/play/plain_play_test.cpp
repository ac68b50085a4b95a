// The play pass against its plain twin.
#include "support/frame_update.h"

#include "formats/obj_file.h"
#include "formats/prefab.h"
#include "play/play_mode.h"
#include "render/builtin_meshes.h"
#include "scene/object_fields.h"
#include "support/edited_scene.h"
#include "support/plain_play.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <utility>

constexpr int32_t kGemMesh = kBuiltinMeshCount;  // there once a coin was placed
constexpr float kHuge = 3e38f;
constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();

static Vec3 RandomVec3(RandomSource& random, float low, float high) {
    return {random.Between(low, high), random.Between(low, high), random.Between(low, high)};
}

static float RandomOddNumber(RandomSource& random) {
    const float odd[] = {
        0, -0.0f, kHuge, -kHuge, kNotANumber, 1e-30f, 1e9f, -1e9f, std::numeric_limits<float>::infinity()};
    return odd[random.IntBetween(0, 8)];
}

static void GiveScripts(RandomSource& random, const ScratchFolder& folder, GameObject& object) {
    const std::wstring prefabs[] = {L"", folder / L"coin.prefab", folder / L"nest.prefab",
                                    folder / L"gone.prefab", folder / L"empty.prefab"};
    if (random.OneIn(6)) object.scripts.emplace_back(L"PlayerController");
    if (random.OneIn(5)) {
        object.scripts.emplace_back(L"CollectOnTouch");
        object.collectPrefab = prefabs[random.IntBetween(0, 4)];
        object.collectTarget = L"o" + std::to_wstring(random.IntBetween(0, 30));
    }
    if (random.OneIn(9)) {
        object.scripts.emplace_back(L"PlanePrefabSpawner");
        object.spawnerPrefab = prefabs[random.IntBetween(0, 4)];
        // A moving one leaves its instances behind, and the plain twin is slow.
        object.hasGravitation = object.hasRigidbody = object.hasAnimation = false;
        object.parentIndex = -1;
    }
}

namespace {
struct GameSize {
    int32_t objects = 0, spawners = 0, frames = 0;
    float reach = 4;             // world units around the origin
    bool parentsFollow = false;  // their children in the scene, or are not there at all
};
}  // namespace

static GameObject RandomPlayObject(RandomSource& random, const ScratchFolder& folder, int32_t index,
                                   const GameSize& size) {
    const int32_t meshes[] = {kCubeMesh, kCubeMesh, kPlaneMesh, kPyramidMesh, kGroundMesh, -1, kGemMesh};
    GameObject object;
    object.name = L"o" + std::to_wstring(random.IntBetween(0, index));
    object.position = RandomVec3(random, -size.reach, size.reach);
    object.position.y += size.reach;
    if (random.OneIn(3)) object.rotation = RandomVec3(random, -3, 3);
    object.scale = random.OneIn(3) ? RandomVec3(random, -1, 1.5f) : Vec3{0.5f, 0.5f, 0.5f};
    if (random.OneIn(8)) object.scale.y = 0;
    object.meshIndex = meshes[random.IntBetween(0, 6)];
    object.parentIndex =
        random.OneIn(4) ? random.IntBetween(-2, size.parentsFollow ? 2 * index : index - 1) : -1;
    object.isEntity = random.OneIn(20);
    object.isCamera = random.OneIn(20);
    object.isLight = random.OneIn(20);
    object.isText = random.OneIn(10);
    object.hasShape = !random.OneIn(12);
    object.active = !random.OneIn(12);
    object.hasCollision = !random.OneIn(4);
    object.hasGravitation = random.OneIn(3);
    object.hasRigidbody = random.OneIn(4);
    object.gravityStrength = random.OneIn(16) ? random.Between(-60, 120) : random.Between(-1, 12);
    object.mass = random.Between(0, 3);
    object.drag = random.Between(-1, 7);
    object.hasAnimation = random.OneIn(5);
    object.animationType = random.IntBetween(0, 3);
    object.animationSpeed = random.Between(-1, 4);
    GiveScripts(random, folder, object);
    if (random.OneIn(60)) object.position.x = RandomOddNumber(random);
    if (random.OneIn(60)) object.scale.z = RandomOddNumber(random);
    return object;
}

// A solid floor under everything, so that not everything falls for ever.
static GameObject Floor() {
    return {.name = L"Floor",
            .position{0, -1, 0},
            .scale{30, 1, 30},
            .meshIndex = kPlaneMesh,
            .hasCollision = true};
}

// One of many that stand in rows of eight.
static GameObject Spawner(const ScratchFolder& folder, int32_t number) {
    const Vec3 place{static_cast<float>(number % 8) - 4, 0, static_cast<float>(number / 8) - 3};
    return {.name = L"Spawner",
            .position = place,
            .scale{0.3f, 0.3f, 0.3f},
            .meshIndex = kCubeMesh,
            .scripts = {L"PlanePrefabSpawner"},
            .hasCollision = true,
            .spawnerPrefab = folder / L"nest.prefab"};
}

static void PutPrefabs(const ScratchFolder& folder) {
    PutFile(folder / L"gem.obj", "v 0 0 0\nv 3 0 0\nv 0 1 0\nf 1 2 3\n");
    REQUIRE(LoadObjIntoLibrary(folder / L"gem.obj") == kGemMesh);
    const Scene coin{
        {.name = L"Coin", .scale{0.3f, 0.3f, 0.3f}, .meshIndex = kCubeMesh, .hasCollision = true},
        {.name = L"Rim",
         .position{0, 0.5f, 0},
         .meshIndex = kGemMesh,
         .hasAnimation = true,
         .parentIndex = 0}};
    const Scene nest{
        {.name = L"Nest", .scale{0.4f, 0.4f, 0.4f}, .meshIndex = kCubeMesh, .hasCollision = true},
        {.name = L"Egg",
         .position{0, 1.2f, 0},
         .meshIndex = kCubeMesh,
         .parentIndex = 0,
         .scripts = {L"PlanePrefabSpawner"},
         .hasCollision = true,
         .hasGravitation = true,
         .spawnerPrefab = folder / L"coin.prefab"}};
    REQUIRE(WritePrefab(folder / L"coin.prefab", coin));
    REQUIRE(WritePrefab(folder / L"nest.prefab", nest));
    REQUIRE(WritePrefab(folder / L"empty.prefab", {}));
    editorState.fileEntries = {{.path = folder / L"gone.prefab", .kind = AssetKind::Prefab},
                               {.path = folder / L"coin.prefab", .kind = AssetKind::Prefab}};
}

static void StartGame(const ScratchFolder& folder, RandomSource& random, const GameSize& size) {
    editorState = EditorState{};
    editorState.projectRoot = folder.path;
    resetScene(false);
    PutPrefabs(folder);
    resetScene(false);
    editorState.scene.push_back(Floor());
    for (int32_t i = 0; i < size.spawners; ++i) editorState.scene.push_back(Spawner(folder, i));
    for (int32_t i = 0; i < size.objects; ++i) {
        const auto index = static_cast<int32_t>(editorState.scene.size());
        editorState.scene.push_back(RandomPlayObject(random, folder, index, size));
    }
    StartPlayMode();
}

static void PressKeys(RandomSource& random, EditorState& first, EditorState& second) {
    for (const char key : {'W', 'S', 'A', 'D'}) {
        const bool isDown = random.OneIn(2);
        first.keyDown[static_cast<size_t>(key)] = second.keyDown[static_cast<size_t>(key)] = isDown;
    }
}

static bool SameScene(const Scene& a, const Scene& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameBits);
}

static bool SameGame(const EditorState& a, const EditorState& b) {
    return SameScene(a.scene, b.scene) && a.score == b.score && a.randomState == b.randomState &&
           a.statusMessage == b.statusMessage && a.animationTime == b.animationTime;
}

static void PlayBoth(uint32_t seed, GameSize size) {
    CAPTURE(seed);
    size.parentsFollow = seed % 2 == 0;
    const ScratchFolder folder;
    RandomSource random(seed);
    StartGame(folder, random, size);
    EditorState plain = editorState;
    for (int32_t frame = 0; frame < size.frames; ++frame) {
        CAPTURE(frame);
        if (frame % 30 == 0) PressKeys(random, editorState, plain);
        const float dt = random.OneIn(9) ? 0.05f : random.Between(0.001f, 0.02f);
        UpdateFrame(dt);
        std::swap(editorState, plain);
        UpdatePlayPlainly(dt);
        std::swap(editorState, plain);
        REQUIRE(SameGame(editorState, plain));
    }
}

TEST_CASE("a game runs as in its plain twin, to the last bit, for 1,000 frames") {
    for (uint32_t seed = 1; seed <= 5; ++seed) PlayBoth(seed, {.objects = 16, .frames = 1000});
}

TEST_CASE("many games run as in their plain twins, to the last bit") {
    for (uint32_t seed = 100; seed < 200; ++seed) PlayBoth(seed, {.objects = 20, .frames = 20});
}

TEST_CASE("a heap of objects falls apart as in its plain twin, to the last bit") {
    for (uint32_t seed = 200; seed < 210; ++seed) {
        PlayBoth(seed, {.objects = 70, .frames = 8, .reach = 1.5f});
    }
}

TEST_CASE("dozens of instances that are placed in one frame act in it as in its plain twin") {
    for (uint32_t seed = 301; seed < 305; ++seed) {
        PlayBoth(seed,
                 {.objects = 15, .spawners = static_cast<int32_t>(seed % 100) * 12, .frames = 5, .reach = 2});
    }
}
