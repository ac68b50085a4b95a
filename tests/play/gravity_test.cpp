#include "support/game.h"

#include "doctest/doctest.h"

#include <algorithm>

TEST_CASE("a falling object gains speed, then moves by it") {
    StartGame({{.hasGravitation = true}, {.hasGravitation = true, .gravityStrength = -2}});
    UpdateFrame(0.05f);
    CHECK(Object(0).velocityY == doctest::Approx(-0.49));
    CHECK(Object(0).position.y == doctest::Approx(-0.0245));
    CHECK(Object(0).velocity == Vec3{});
    CHECK(Object(1).position.y == doctest::Approx(0.005));
    UpdateFrame(0.05f);
    CHECK(Object(0).velocityY == doctest::Approx(-0.98));
    CHECK(Object(0).position.y == doctest::Approx(-0.0735));
}

TEST_CASE("a Rigidbody falls by itself, is damped, and shows its speed as both velocities") {
    StartGame({{.hasRigidbody = true, .drag = 2}});
    UpdateFrame(0.05f);
    CHECK(Object(0).velocity.y == doctest::Approx(-0.49 * 0.9));
    CHECK(Object(0).velocityY == Object(0).velocity.y);
    CHECK(Object(0).position.y == doctest::Approx(-0.49 * 0.9 * 0.05));
}

TEST_CASE("drag counts from 0 to 5 per second, and stops no more than all of a speed") {
    struct {
        float drag, dt, kept;
    } cases[] = {{7, 0.05f, 0.75f}, {5, 0.05f, 0.75f}, {-3, 0.05f, 1}, {0, 0.05f, 1}, {5, 0.5f, 0}};
    for (const auto [drag, dt, kept] : cases) {
        StartGame({{.gravityStrength = 0, .hasRigidbody = true, .drag = drag}});
        Object(0).velocity = {0, -2, 0};
        UpdateFrame(dt);
        CHECK(Object(0).velocity.y == doctest::Approx(-2 * kept));
    }
}

TEST_CASE("a box that falls onto a plane stops 0.001 above its box, at rest") {
    for (const bool isBody : {false, true}) {
        StartGame({{.position{0, 2, 0},
                    .meshIndex = kCubeMesh,
                    .hasCollision = true,
                    .hasGravitation = !isBody,
                    .hasRigidbody = isBody},
                   {.scale{5, 1, 5}, .meshIndex = kPlaneMesh, .hasCollision = true}});
        PlayFrames(60);
        CHECK(Object(0).position.y == doctest::Approx(1 + 0.02 + 0.001));
        CHECK(Object(0).velocityY == 0);
        CHECK(Object(0).velocity == Vec3{});
    }
}

TEST_CASE("over empty space an object falls for ever") {
    StartGame({{.meshIndex = kCubeMesh, .hasCollision = true, .hasGravitation = true}});
    PlayFrames(200);
    CHECK(Object(0).position.y == doctest::Approx(-9.8 * 0.05 * 0.05 * 200 * 201 / 2).epsilon(0.001));
}

TEST_CASE(
    "what is inactive, an entity, a camera or a light does not fall, nor what has no component for it") {
    StartGame({{.hasGravitation = true, .active = false},
               {.isEntity = true, .hasGravitation = true},
               {.isCamera = true, .hasGravitation = true},
               {.isLight = true, .hasGravitation = true, .hasRigidbody = true},
               {.meshIndex = kCubeMesh, .hasCollision = true},
               {.hasGravitation = true, .isText = true}});
    UpdateFrame(0.05f);
    for (int32_t i = 0; i < 5; ++i) CHECK(Object(i).position == Vec3{});
    CHECK(Object(0).velocityY == 0);
    CHECK(Object(5).position.y < 0);
}

TEST_CASE("a stack of boxes comes to rest with 0.001 between each two") {
    Scene scene{{.scale{5, 1, 5}, .meshIndex = kPlaneMesh, .hasCollision = true}};
    for (int32_t i = 0; i < 5; ++i) {
        scene.push_back({.position{0, 2.0f + 2.2f * static_cast<float>(i), 0},
                         .meshIndex = kCubeMesh,
                         .hasCollision = true,
                         .hasGravitation = true});
    }
    StartGame(scene);
    PlayFrames(100);
    for (int32_t i = 0; i < 5; ++i) {
        CHECK(Object(i + 1).position.y == doctest::Approx(1.021 + 2.001 * i));
    }
}

TEST_CASE("whether playing or not, nothing falls in edit mode") {
    StartGame({{.hasGravitation = true}});
    StopPlayMode();
    PlayFrames(5);
    CHECK(Object(0).position == Vec3{});
}

TEST_CASE("an object that fell stands where it was before the game once the game stops") {
    StartGame({{.position{1, 2, 3}, .hasGravitation = true}});
    Hold({'W'});
    PlayFrames(5);
    ReleaseKeys();
    CHECK(Object(0).position.y < 2);
    CHECK(editorState.camera.position != Vec3{0, 4, -10});
    StopPlayMode();
    CHECK(Object(0).position == Vec3{1, 2, 3});
    CHECK(editorState.camera.position == Vec3{0, 4, -10});
}
