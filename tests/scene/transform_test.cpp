#include "scene/transform.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <random>

constexpr float kQuarter = 1.57079633f;  // a quarter turn in radians

static void CheckClose(Vec3 actual, Vec3 expected) {
    CHECK(actual.x == doctest::Approx(expected.x).epsilon(1e-5));
    CHECK(actual.y == doctest::Approx(expected.y).epsilon(1e-5));
    CHECK(actual.z == doctest::Approx(expected.z).epsilon(1e-5));
}

TEST_CASE("a point is scaled, then turned about z, x and y, then moved") {
    // (1, 0, 0) * 2 = (2, 0, 0); about z: (0, 2, 0); about x: (0, 0, 2); about y: (2, 0, 0); moved: (12, 20,
    // 30).
    const Matrix4 m = LocalMatrix({10, 20, 30}, {kQuarter, kQuarter, kQuarter}, {2, 3, 4});
    CheckClose(TransformPoint(m, {1, 0, 0}), {12, 20, 30});
}

TEST_CASE("each rotation turns by the right hand: y to z, z to x, x to y") {
    CheckClose(TransformPoint(LocalMatrix({}, {kQuarter, 0, 0}, {1, 1, 1}), {0, 1, 0}), {0, 0, 1});
    CheckClose(TransformPoint(LocalMatrix({}, {0, kQuarter, 0}, {1, 1, 1}), {0, 0, 1}), {1, 0, 0});
    CheckClose(TransformPoint(LocalMatrix({}, {0, 0, kQuarter}, {1, 1, 1}), {1, 0, 0}), {0, 1, 0});
}

TEST_CASE("an object without rotation has its scale on the diagonal and its position in the last column") {
    const Matrix4 expected{{{{2, 0, 0, 5}, {0, 3, 0, 6}, {0, 0, 4, 7}, {0, 0, 0, 1}}}};
    CHECK(LocalMatrix({5, 6, 7}, {}, {2, 3, 4}) == expected);
}

TEST_CASE("a product applies its right factor first") {
    const Matrix4 move = LocalMatrix({1, 2, 3}, {}, {1, 1, 1});
    const Matrix4 grow = LocalMatrix({}, {}, {2, 2, 2});
    CHECK(TransformPoint(MultiplyMatrix(move, grow), {1, 1, 1}) == Vec3{3, 4, 5});
    CHECK(TransformPoint(MultiplyMatrix(grow, move), {1, 1, 1}) == Vec3{4, 6, 8});
}

TEST_CASE("a child moves, turns and grows with its parents") {
    Scene scene(3);
    scene[0].position = {10, 0, 0};
    scene[1].parentIndex = 0;
    scene[1].scale = {2, 2, 2};
    scene[1].rotation = {0, kQuarter, 0};
    scene[2].parentIndex = 1;
    scene[2].position = {0, 0, 1};
    // One unit along z of a parent that is twice as large and turned: two units along the world's x.
    CheckClose(WorldPosition(scene, 2), {12, 0, 0});
}

TEST_CASE("an invalid index has the identity as its world matrix") {
    Scene scene(2);
    scene[0].position = {1, 2, 3};
    CHECK(WorldMatrix(scene, -1) == Matrix4{});
    CHECK(WorldMatrix(scene, 2) == Matrix4{});
    CHECK(WorldMatrix({}, 0) == Matrix4{});
}

TEST_CASE("a parent index past the end of the scene leaves the local matrix") {
    Scene scene(2);
    scene[1].position = {1, 2, 3};
    for (int32_t parent : {2, 1000000, -7, INT32_MAX, INT32_MIN}) {
        scene[1].parentIndex = parent;
        CHECK(WorldMatrix(scene, 1) == LocalMatrix(scene[1]));
    }
}

TEST_CASE("two objects that are each other's parent are followed for as many steps as there are objects") {
    Scene scene(2);
    scene[0] = {.position{1, 0, 0}, .parentIndex = 1};
    scene[1] = {.position{0, 10, 0}, .parentIndex = 0};
    // Its own matrix, then two steps: the other's and its own once more.
    CHECK(WorldPosition(scene, 0) == Vec3{2, 10, 0});
}

TEST_CASE("an object that is its own parent is followed once") {
    Scene scene(1);
    scene[0] = {.position{1, 0, 0}, .parentIndex = 0};
    CHECK(WorldPosition(scene, 0) == Vec3{2, 0, 0});
}

// Every object one to the right of its parent, the first one without a parent.
static Scene ChainOf(int32_t count) {
    Scene scene(static_cast<size_t>(count));
    for (int32_t i = 0; i < count; ++i)
        scene[static_cast<size_t>(i)] = {.position{1, 0, 0}, .parentIndex = i - 1};
    return scene;
}

TEST_CASE("a chain of parents counts in full, however long it is") {
    for (const int32_t count : {1, 2, 1000, 1024, 1025, 1026, 1088, 1089, 1090, 1100, 5000, 100'000}) {
        CAPTURE(count);
        const Scene scene = ChainOf(count);
        CHECK(WorldPosition(scene, count - 1) == Vec3{static_cast<float>(count), 0, 0});
        WorldMatrices worlds(scene);
        CHECK(Translation(worlds.Of(count - 1)) == Vec3{static_cast<float>(count), 0, 0});
    }
}

TEST_CASE("all objects of a chain of 20,000 have their place in the world, at the cost of a few steps each") {
    constexpr int32_t kCount = 20'000;
    const Scene scene = ChainOf(kCount);
    for (const bool fromTheEnd : {false, true}) {
        WorldMatrices worlds(scene);
        for (int32_t i = 0; i < kCount; ++i) {
            const int32_t index = fromTheEnd ? kCount - 1 - i : i;
            REQUIRE(Translation(worlds.Of(index)).x == static_cast<float>(index + 1));
        }
        // The first 1,025 take 1,024 * 1,025 / 2 products; a later one goes up 64 parents at most to look for
        // the end of its stretch, and multiplies as many; every 64th once more for its own stretch.
        CHECK(worlds.Steps() < 525'000 + kCount * (1 + 64 + 64 + 2));
    }
}

TEST_CASE("a cycle of parents is followed for 64 steps, from within and from below") {
    for (const int32_t length : {1, 2, 63, 64, 65, 100, 5000}) {
        CAPTURE(length);
        Scene scene = ChainOf(length);
        scene[0].parentIndex = length - 1;
        const auto steps = static_cast<float>(std::min(length, 64));
        CHECK(WorldPosition(scene, length - 1) == Vec3{1 + steps, 0, 0});
        CHECK(WorldPosition(scene, 0) == Vec3{1 + steps, 0, 0});
        // A chain of 200 that hangs below the cycle: there are more than 64 objects now.
        for (int32_t i = 0; i < 200; ++i)
            scene.push_back({.position{1, 0, 0}, .parentIndex = length - 1 + i});
        CHECK(WorldPosition(scene, 0) == Vec3{65, 0, 0});
        CHECK(WorldPosition(scene, length) == Vec3{65, 0, 0});
        CHECK(WorldPosition(scene, length + 199) == Vec3{65, 0, 0});
    }
}

// Two walkers up the parents of which one is twice as fast meet in a cycle, and nowhere else.
static bool LeadsIntoCycle(const Scene& scene, int32_t index) {
    const auto up = [&scene](int32_t at) {
        const bool isIndex = at >= 0 && at < static_cast<int32_t>(scene.size());
        return isIndex ? scene[static_cast<size_t>(at)].parentIndex : -1;
    };
    int32_t slow = index, fast = index;
    do {
        slow = up(slow);
        fast = up(up(fast));
    } while (slow != fast);
    return slow >= 0 && slow < static_cast<int32_t>(scene.size());
}

// Where an object of a scene without rotations and scales stands.
static Vec3 PlainPlace(const Scene& scene, int32_t index) {
    const auto count = static_cast<int32_t>(scene.size());
    int32_t steps = LeadsIntoCycle(scene, index) ? std::min(64, count) : count;
    Vec3 place = scene[static_cast<size_t>(index)].position;
    int32_t parent = scene[static_cast<size_t>(index)].parentIndex;
    for (; parent >= 0 && parent < count && steps > 0; --steps) {
        place = place + scene[static_cast<size_t>(parent)].position;
        parent = scene[static_cast<size_t>(parent)].parentIndex;
    }
    return place;
}

TEST_CASE("in random forests with cycles every object stands where the sum of its parents puts it") {
    constexpr uint32_t kSeed = 20270411;
    CAPTURE(kSeed);
    std::mt19937 random(kSeed);
    const auto below = [&random](int32_t count) {
        return static_cast<int32_t>(random() % static_cast<uint32_t>(count));
    };
    for (int32_t round = 0; round < 60; ++round) {
        CAPTURE(round);
        const int32_t count = 1 + below(round % 2 == 0 ? 3000 : 40);
        const int32_t breaks = 1 + below(count);  // one parent in so many is any number, else the one before
        Scene scene(static_cast<size_t>(count));
        for (int32_t i = 0; i < count; ++i) {
            const auto whole = [&below] { return static_cast<float>(below(101) - 50); };  // sums are exact
            scene[static_cast<size_t>(i)] = {
                .position{whole(), whole(), whole()},
                .parentIndex = below(breaks) == 0 ? below(count + 4) - 2 : i - 1};
        }
        WorldMatrices worlds(scene);
        for (int32_t i = 0; i < 100; ++i) {
            const int32_t index = below(count);
            REQUIRE(WorldPosition(scene, index) == PlainPlace(scene, index));
            REQUIRE(Translation(worlds.Of(index)) == PlainPlace(scene, index));
        }
    }
}

TEST_CASE("world matrices follow an object that moves once they are told of it and of those below it") {
    Scene scene = ChainOf(3000);
    WorldMatrices worlds(scene);
    CHECK(Translation(worlds.Of(2999)) == Vec3{3000, 0, 0});
    for (const int32_t moved : {0, 1023, 1024, 1088, 1500, 2999}) {
        scene[static_cast<size_t>(moved)].position.x += 10;
        for (int32_t i = moved; i < 3000; ++i) worlds.Forget(i);
        CHECK(worlds.Of(2999) == WorldMatrix(scene, 2999));
        CHECK(worlds.Of(2000) == WorldMatrix(scene, 2000));
    }
    CHECK(Translation(worlds.Of(2999)) == Vec3{3060, 0, 0});
    scene.push_back({.position{5, 0, 0}, .parentIndex = 2999});
    worlds.Follow(scene);
    CHECK(Translation(worlds.Of(3000)) == Vec3{3065, 0, 0});
}

// Also a NaN is the same as itself.
static bool SameBits(const Matrix4& a, const Matrix4& b) {
    return std::bit_cast<std::array<uint32_t, 16>>(a) == std::bit_cast<std::array<uint32_t, 16>>(b);
}

TEST_CASE("world matrices asked for together equal those asked for one by one, bit for bit") {
    constexpr uint32_t kSeed = 20261121;
    CAPTURE(kSeed);
    std::mt19937 random(kSeed);
    const auto below = [&random](int32_t count) {
        return static_cast<int32_t>(random() % static_cast<uint32_t>(count));
    };
    const auto number = [&below] { return static_cast<float>(below(2001) - 1000) * 0.013f; };
    for (int32_t round = 0; round < 60; ++round) {
        CAPTURE(round);
        // Every third scene is mostly one chain, in some a long one, in a few with its end in it.
        const int32_t count = 1 + below(round % 3 == 0 ? 2600 : 60);
        Scene scene(static_cast<size_t>(count));
        for (int32_t i = 0; i < count; ++i) {
            const bool isChain = round % 3 == 0 && below(1300) != 0;
            scene[static_cast<size_t>(i)] = {.position{number(), number(), number()},
                                             .rotation{number(), below(4) == 0 ? 0 : number(), number()},
                                             .scale{number(), number(), 1},
                                             .parentIndex = isChain ? i - 1 : below(count + 4) - 2};
        }
        if (below(10) == 0) scene[0].scale.x = INFINITY;
        WorldMatrices worlds(scene);
        for (int32_t i = 0; i < 200; ++i) {
            const int32_t index = below(count + 2) - 1;
            REQUIRE(SameBits(worlds.Of(index), WorldMatrix(scene, index)));
        }
    }
}

TEST_CASE("without objects every world matrix is the identity") {
    WorldMatrices worlds;
    CHECK(worlds.Of(0) == Matrix4{});
    CHECK(worlds.Of(-1) == Matrix4{});
}

TEST_CASE("a vector of length 1e-5 or less normalises to zero, a longer one to length 1") {
    CHECK(Normalise({1e-5f, 0, 0}) == Vec3{});
    CHECK(Normalise({0, 2e-5f, 0}) == Vec3{0, 1, 0});
    CHECK(Normalise({0, 3, 4}) == Vec3{0, 0.6f, 0.8f});
}

TEST_CASE("a position under a turned and scaled chain of parents gives the place in the world") {
    Scene scene(3);
    scene[0] = {.position{1, 2, 3}, .rotation{0.3f, 0.5f, -0.2f}, .scale{2, 2, 2}};
    scene[1] = {.position{-4, 0, 1}, .rotation{0, 1, 0}, .scale{0.5f, 1, 3}, .parentIndex = 0};
    scene[2].parentIndex = 1;
    const Vec3 place{7, -5, 2.5f};
    scene[2].position = LocalPositionUnder(scene, 1, place);
    CHECK(Length(WorldPosition(scene, 2) - place) < 1e-4f);
}

TEST_CASE("under a flat parent the local position is the distance from it") {
    Scene scene(1);
    scene[0] = {.position{1, 2, 3}, .scale{1, 0, 1}};
    CHECK(LocalPositionUnder(scene, 0, {5, 5, 5}) == Vec3{4, 3, 2});
}

TEST_CASE("without a parent in the scene the local position is the world position") {
    const Scene scene(1, {.position{1, 2, 3}});
    for (const int32_t parent : {-1, -5, 1, 99})
        CHECK(LocalPositionUnder(scene, parent, {5, 6, 7}) == Vec3{5, 6, 7});
}

TEST_CASE("a position under a chain of 1,100 parents counts all of them") {
    Scene scene(1100);
    for (int32_t i = 0; i < 1100; ++i)
        scene[static_cast<size_t>(i)] = {.position{1, 0, 0}, .parentIndex = i - 1};
    CHECK(LocalPositionUnder(scene, 1099, {1103, 2, 0}) == Vec3{3, 2, 0});
}

TEST_CASE("an object with a mesh or a role has a gizmo, any other has none") {
    CHECK_FALSE(HasPlace({}));
    CHECK(HasPlace({.meshIndex = 0}));
    CHECK(HasPlace({.isEntity = true}));
    CHECK(HasPlace({.isCamera = true}));
    CHECK(HasPlace({.isLight = true}));
    CHECK(HasPlace({.isText = true}));
}
