#include "scene/local_position.h"

#include "scene/transform.h"

#include "doctest/doctest.h"

TEST_CASE("a position under a turned and scaled chain of parents gives the place in the world") {
    Scene scene(3);
    scene[0] = {.position{1, 2, 3}, .rotation{0.3f, 0.5f, -0.2f}, .scale{2, 2, 2}};
    scene[1] = {.position{-4, 0, 1}, .rotation{0, 1, 0}, .scale{0.5f, 1, 3}, .parentIndex = 0};
    scene[2].parentIndex = 1;
    const Vec3 place{7, -5, 2.5f};
    scene[2].position = LocalPositionUnder(scene, 1, place);
    CHECK(Length(WorldPosition(scene, 2) - place) < 1e-4f);
}

TEST_CASE("a parent that is flat gives the distance from it") {
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
