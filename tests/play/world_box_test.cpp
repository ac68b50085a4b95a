#include "play/world_boxes.h"

#include "support/game.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <limits>

static void CheckBox(const Box& box, Vec3 min, Vec3 max) {
    CHECK(box.min.x == doctest::Approx(min.x));
    CHECK(box.min.y == doctest::Approx(min.y));
    CHECK(box.min.z == doctest::Approx(min.z));
    CHECK(box.max.x == doctest::Approx(max.x));
    CHECK(box.max.y == doctest::Approx(max.y));
    CHECK(box.max.z == doctest::Approx(max.z));
}

TEST_CASE("a world box encloses the mesh under the object's world matrix") {
    StartGame({{.position{10, 0, 0}, .scale{2, 2, 2}, .meshIndex = kCubeMesh},
               {.position{1, 2, 3}, .scale{1, 0.5f, 1}, .meshIndex = kCubeMesh, .parentIndex = 0},
               {.meshIndex = kGroundMesh}});
    CheckBox(WorldBox(0), {8, -2, -2}, {12, 2, 2});
    CheckBox(WorldBox(1), {10, 3, 4}, {14, 5, 8});
    CheckBox(WorldBox(2), {-9, -1.07f, -9}, {9, -1.03f, 11});
}

TEST_CASE("the box of a turned cube grows to hold its edges") {
    StartGame({{.rotation{0, 0.7853982f, 0}, .meshIndex = kCubeMesh}});
    CheckBox(WorldBox(0), {-1.4142136f, -1, -1.4142136f}, {1.4142136f, 1, 1.4142136f});
}

TEST_CASE("without a Shape or a mesh the box is that of a cube of edge 2") {
    StartGame({{.position{5, 0, 0}, .meshIndex = kGroundMesh, .hasShape = false},
               {.position{5, 0, 0}},
               {.position{5, 0, 0}, .meshIndex = 99},
               {.position{5, 0, 0}, .meshIndex = kBuiltinMeshCount}});
    editorState.meshes.emplace_back();
    for (int32_t i = 0; i < 4; ++i) CheckBox(WorldBox(i), {4, -1, -1}, {6, 1, 1});
}

TEST_CASE("a flat box is 0.04 thick around its centre, a thicker one stays") {
    StartGame({{.position{0, 3, 0}, .meshIndex = kPlaneMesh},
               {.scale{0, 0, 0}, .meshIndex = kCubeMesh},
               {.scale{0.019f, 0.021f, -1}, .meshIndex = kCubeMesh}});
    CheckBox(WorldBox(0), {-1, 2.98f, -1}, {1, 3.02f, 1});
    CheckBox(WorldBox(1), {-0.02f, -0.02f, -0.02f}, {0.02f, 0.02f, 0.02f});
    CheckBox(WorldBox(2), {-0.02f, -0.021f, -1}, {0.02f, 0.021f, 1});
}

TEST_CASE("boxes touch when they share a point, and never when a coordinate is not a number") {
    const Box box{{0, 0, 0}, {1, 1, 1}};
    CHECK(BoxesTouch(box, {{1, 1, 1}, {2, 2, 2}}));
    CHECK(BoxesTouch(box, {{0.4f, 0.4f, 0.4f}, {0.6f, 0.6f, 0.6f}}));
    for (float Vec3::*axis : {&Vec3::x, &Vec3::y, &Vec3::z}) {
        Box beside = box;
        beside.min.*axis = 1.001f;
        beside.max.*axis = 2;
        CHECK_FALSE(BoxesTouch(box, beside));
        CHECK_FALSE(BoxesTouch(beside, box));
        CHECK(BoxesTouch(Grown(box, 0.001f), beside));
        Box nowhere = box;
        nowhere.max.*axis = std::numeric_limits<float>::quiet_NaN();
        CHECK_FALSE(BoxesTouch(box, nowhere));
        CHECK_FALSE(BoxesTouch(nowhere, box));
    }
}

TEST_CASE("a cached box follows its object and those above it") {
    StartGame({{.meshIndex = kCubeMesh},
               {.position{2, 0, 0}, .meshIndex = kCubeMesh, .parentIndex = 0},
               {.position{0, 5, 0}, .meshIndex = kCubeMesh, .parentIndex = 1}});
    WorldBoxes boxes;
    CheckBox(WorldBox(2, boxes), {1, 4, -1}, {3, 6, 1});
    Object(0).position.x = 10;
    ObjectMoved(0, boxes);
    CheckBox(WorldBox(2, boxes), {11, 4, -1}, {13, 6, 1});
    Object(1).scale = {2, 2, 2};
    ObjectMoved(1, boxes);
    CheckBox(WorldBox(2, boxes), {10, 8, -2}, {14, 12, 2});
    Object(2).parentIndex = 2;  // a cycle ends
    WorldBoxes damaged;
    ObjectMoved(2, damaged);
    WorldBox(2, damaged);
    ObjectMoved(2, damaged);
    CHECK(SubtreeOf(2, damaged) == std::vector<int32_t>{2});
}

// Every object stands one unit to the right of its parent.
static Scene ChainOf(int32_t count, const GameObject& link) {
    Scene scene(static_cast<size_t>(count), link);
    for (int32_t i = 0; i < count; ++i) {
        scene[static_cast<size_t>(i)].position = {1, 0, 0};
        scene[static_cast<size_t>(i)].parentIndex = i - 1;
    }
    return scene;
}

TEST_CASE("moving each object of a chain of 20,000 in one pass costs a few steps each") {
    constexpr int32_t kCount = 20'000;
    StartGame(ChainOf(kCount, {}));
    for (const bool fromTheEnd : {false, true}) {
        for (const bool isAsked : {false, true}) {
            CAPTURE(fromTheEnd);
            CAPTURE(isAsked);
            WorldBoxes boxes;
            WorldBox(kCount - 1, boxes);  // so that all of them matter to somebody
            for (int32_t i = 0; i < kCount; ++i) {
                const int32_t index = fromTheEnd ? kCount - 1 - i : i;
                Object(index).position.y += 1;
                ObjectMoved(index, boxes);
                if (isAsked) WorldBox(index, boxes);
            }
            CHECK(boxes.steps >= kCount);  // each object was marked at least once
            CHECK(boxes.steps < 4 * kCount);
            CHECK(boxes.worlds.Steps() < 700'000 + kCount * 131);
            const Box plain = WorldBox(kCount - 1), last = WorldBox(kCount - 1, boxes);
            CHECK(last.min == plain.min);
            CHECK(last.max == plain.max);
        }
    }
    CheckBox(WorldBox(kCount - 1), {19'999, 79'999, -1}, {20'001, 80'001, 1});
}

TEST_CASE("in long chains cached boxes follow every object that moves") {
    constexpr uint32_t kSeed = 71;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    StartGame(ChainOf(2500, {.meshIndex = kCubeMesh}));
    for (int32_t i = 0; i < 2500; ++i) {
        if (random.OneIn(200)) Object(i).parentIndex = random.IntBetween(0, 2499);  // branches, and cycles
    }
    WorldBoxes boxes;
    for (int32_t round = 0; round < 300; ++round) {
        const int32_t moved = random.IntBetween(0, 2499), asked = random.IntBetween(0, 2499);
        Object(moved).position.y += 1;
        if (random.OneIn(9)) Object(moved).rotation.z += 0.01f;
        ObjectMoved(moved, boxes);
        const Box plain = WorldBox(asked), kept = WorldBox(asked, boxes);
        REQUIRE(kept.min == plain.min);
        REQUIRE(kept.max == plain.max);
    }
}

// Anything that an editor may do to an object between two frames.
static void ChangeObject(RandomSource& random, int32_t index) {
    GameObject& object = Object(index);
    const auto number = [&random] { return random.Between(-4, 4); };
    switch (random.IntBetween(0, 8)) {
        case 0: object.position = {number(), number(), number()}; break;
        case 1: object.rotation.y = number(); break;
        case 2: object.scale.x = random.OneIn(5) ? 0.0f : number(); break;
        case 3: object.meshIndex = random.IntBetween(-1, kBuiltinMeshCount); break;
        case 4: object.active = !object.active; break;
        case 5: object.hasCollision = !object.hasCollision; break;
        case 6: object.hasShape = !object.hasShape; break;
        case 7: object.parentIndex = random.IntBetween(-1, index - 1); break;
        default: object.position.x = std::numeric_limits<float>::infinity(); break;
    }
}

static void CheckAgainstPlain(WorldBoxes& boxes, const Box& reach) {
    std::vector<int32_t> expected, found;
    for (int32_t i = 0; i < static_cast<int32_t>(editorState.scene.size()); ++i) {
        const Box plain = WorldBox(i), kept = WorldBox(i, boxes);
        REQUIRE(BoxesTouch(plain, reach) == BoxesTouch(kept, reach));
        REQUIRE((plain.min == kept.min || plain.min.x != plain.min.x));
        REQUIRE((plain.max == kept.max || plain.max.x != plain.max.x));
        if (IsSolid(i) && BoxesTouch(plain, reach)) expected.push_back(i);
    }
    REQUIRE(FindSolids(reach, -1, 1000, boxes, found));
    REQUIRE(found == expected);
    REQUIRE(NextSolid(reach, -1, -1, boxes) == (expected.empty() ? -1 : expected.front()));
}

TEST_CASE(
    "boxes cached from frame to frame are those that each frame would compute, whatever changes in between") {
    constexpr uint32_t kSeed = 60221;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    WorldBoxes boxes;
    std::vector<GameObject> objects;
    for (int32_t i = 0; i < 30; ++i) {
        objects.push_back({.position{random.Between(-9, 9), 0, random.Between(-9, 9)},
                           .meshIndex = i % kBuiltinMeshCount,
                           .parentIndex = random.OneIn(4) ? random.IntBetween(-1, i - 1) : -1,
                           .hasCollision = true});
    }
    StartGame(objects);
    for (int32_t frame = 0; frame < 400; ++frame) {
        CAPTURE(frame);
        const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
        for (int32_t i = random.IntBetween(0, 3); i > 0; --i)
            ChangeObject(random, random.IntBetween(0, last));
        if (random.OneIn(40)) std::swap(editorState.meshes[kCubeMesh], editorState.meshes[kCapsuleMesh]);
        if (random.OneIn(40)) editorState.scene.push_back(Object(0));
        if (random.OneIn(60)) editorState.scene.pop_back();
        StartPass(boxes);
        const Vec3 place{random.Between(-9, 9), 0, random.Between(-9, 9)};
        CheckAgainstPlain(boxes, Grown({place, place}, random.Between(0, 6)));
    }
}

TEST_CASE("visits are counted anew in each pass, so that their number never wraps around") {
    StartGame({{.meshIndex = kCubeMesh}, {.meshIndex = kCubeMesh, .parentIndex = 0}});
    WorldBoxes boxes;
    WorldBox(1, boxes);
    boxes.visits = std::numeric_limits<uint32_t>::max();
    StartPass(boxes);
    CHECK(SubtreeOf(0, boxes) == std::vector<int32_t>{0, 1});
}

TEST_CASE("an added object lengthens the way of one that is its own parent, and its box follows") {
    GameObject own{.position{1, 0, 0}, .parentIndex = 0};
    StartGame({own});
    WorldBoxes boxes;
    const Box before = WorldBox(0, boxes);
    editorState.scene.emplace_back();
    CHECK(WorldBox(0, boxes).min.x == WorldBox(0).min.x);
    CHECK(WorldBox(0).min.x == before.min.x + 1);
}
