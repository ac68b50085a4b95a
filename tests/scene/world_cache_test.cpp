#include "scene/world_cache.h"

#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <cstring>
#include <limits>

static GameObject RandomPlacedObject(RandomSource& random, int32_t count) {
    GameObject object{.position{random.Between(-9, 9), random.Between(-9, 9), random.Between(-9, 9)},
                      .rotation{random.Between(-3, 3), random.Between(-3, 3), 0},
                      .scale{random.Between(-2, 2), 1, random.Between(0, 2)},
                      .parentIndex = random.OneIn(3) ? -1 : random.IntBetween(-2, count + 1)};
    if (random.OneIn(20)) object.position.x = std::numeric_limits<float>::quiet_NaN();
    if (random.OneIn(20)) object.position.x = random.OneIn(2) ? 0.0f : -0.0f;
    return object;
}

TEST_CASE("cached world matrices equal new ones bit for bit, whatever has changed between two frames") {
    constexpr uint32_t kSeed = 1606;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    CachedWorlds cached;
    std::vector<GameObject> scene;
    int64_t compared = 0;
    for (int round = 0; round < 3000; ++round) {
        CAPTURE(round);
        const auto count = static_cast<int32_t>(scene.size());
        if (random.OneIn(400)) scene.clear();
        if (random.OneIn(5) && count < 40) scene.push_back(RandomPlacedObject(random, count));
        if (random.OneIn(20) && !scene.empty()) scene.pop_back();
        for (int32_t moved = random.IntBetween(0, 2); moved > 0 && !scene.empty(); --moved) {
            const int32_t last = static_cast<int32_t>(scene.size()) - 1;
            GameObject& object = scene[static_cast<size_t>(random.IntBetween(0, last))];
            const GameObject other = RandomPlacedObject(random, count);
            if (random.OneIn(2)) object.position = other.position;
            if (random.OneIn(3)) object.rotation.z = -object.rotation.z;
            if (random.OneIn(3)) object.scale = other.scale;
            if (random.OneIn(3)) object.parentIndex = other.parentIndex;
        }
        FrameWorlds worlds(scene, cached);
        for (int32_t i = 0; i < static_cast<int32_t>(scene.size()); ++i) {
            if (random.OneIn(3)) continue;  // some are asked for again only many frames later
            const Matrix4 anew = WorldMatrix(scene, i), found = worlds.Of(i);
            REQUIRE(std::memcmp(&anew, &found, sizeof anew) == 0);
            ++compared;
        }
    }
    CHECK(compared > 10'000);
}

TEST_CASE("the matrix of an object below a moved one is made anew, that of its sibling is not") {
    std::vector<GameObject> scene(3);
    scene[1].parentIndex = 0;
    CachedWorlds cached;
    for (int32_t i = 0; i < 3; ++i) FrameWorlds(scene, cached).Of(i);
    cached.objects[2].world.m[0][3] = 77;  // shows who is asked
    scene[0].position.x = 5;
    FrameWorlds worlds(scene, cached);
    CHECK(worlds.Of(0).m[0][3] == 5);
    CHECK(worlds.Of(1).m[0][3] == 5);
    CHECK(worlds.Of(2).m[0][3] == 77);
}
