#include "play/motion.h"

#include "play/collision.h"
#include "support/game.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>

static GameObject Player(float yaw = 0) { return {.rotation{0, yaw, 0}, .scripts = {L"PlayerController"}}; }

static GameObject Body(float mass, float drag = 0) {
    GameObject body = Player();
    body.hasRigidbody = true;
    body.gravityStrength = 0;
    body.mass = mass;
    body.drag = drag;
    return body;
}

static float Speed() { return std::hypot(Object(0).velocity.x, Object(0).velocity.z); }

static void CheckPosition(float x, float z) {
    CHECK(Object(0).position.x == doctest::Approx(x));
    CHECK(Object(0).position.y == 0);
    CHECK(Object(0).position.z == doctest::Approx(z));
}

TEST_CASE("W, S, D and A move a player by 4 units a second, ahead, back, right and left") {
    struct {
        char key;
        float x, z;
    } cases[] = {{'W', 0, 0.2f}, {'S', 0, -0.2f}, {'D', 0.2f, 0}, {'A', -0.2f, 0}};
    for (const auto [key, x, z] : cases) {
        StartGame({Player()});
        Hold({key});
        UpdateFrame(0.05f);
        CheckPosition(x, z);
    }
}

TEST_CASE("a player walks as it is turned, and diagonally no faster") {
    StartGame({Player(1.5707964f)});
    Hold({'W'});
    UpdateFrame(0.05f);
    CheckPosition(0.2f, 0);
    StartGame({Player(0.5f)});
    Hold({'W', 'D'});
    UpdateFrame(0.05f);
    const float askew = 0.5f + 0.7853982f;
    CheckPosition(0.2f * std::sin(askew), 0.2f * std::cos(askew));
}

TEST_CASE("opposite keys or none leave a player without Rigidbody where it is") {
    for (const auto& keys : {std::initializer_list<char>{'W', 'S'}, {'A', 'D'}, {'W', 'A', 'S', 'D'}, {}}) {
        StartGame({Player(0.3f)});
        Hold(keys);
        PlayFrames(3);
        CHECK(Object(0).position == Vec3{});
    }
}

TEST_CASE("keys accelerate a body by 22 over its mass, and then drag slows it down") {
    StartGame({Body(2, 0.5f)});
    Hold({'D'});
    UpdateFrame(0.05f);
    const float speed = 22.0f / 2 * 0.05f * (1 - 0.05f * 0.5f);
    CHECK(Object(0).velocity.x == doctest::Approx(speed));
    CheckPosition(speed * 0.05f, 0);
    ReleaseKeys();
    UpdateFrame(0.05f);
    CHECK(Object(0).velocity.x == doctest::Approx(speed * (1 - 0.05f * 0.5f)));
}

TEST_CASE("a body lighter than 0.1 is pushed like one of 0.1") {
    for (const float mass : {0.1f, 0.05f, 0.0f, -1.0f}) {
        StartGame({Body(mass)});
        Hold({'W'});
        UpdateFrame(0.01f);
        CHECK(Object(0).velocity.z == doctest::Approx(22 / 0.1 * 0.01));
    }
}

TEST_CASE("no body gets faster than 4 units a second, whatever its mass") {
    for (const float mass : {0.01f, 0.5f, 5.0f}) {
        StartGame({Body(mass)});
        Hold({'W', 'D'});
        for (int32_t frame = 0; frame < 200; ++frame) {
            UpdateFrame(0.05f);
            REQUIRE(Speed() <= 4.00001f);
        }
        CHECK(Speed() == doctest::Approx(4));
    }
}

TEST_CASE("a faster body is slowed to 4 in its direction, even without a key") {
    StartGame({Body(1)});
    Object(0).velocity = {30, 0, -40};
    UpdateFrame(0.05f);
    CHECK(Object(0).velocity.x == doctest::Approx(2.4));
    CHECK(Object(0).velocity.z == doctest::Approx(-3.2));
}

TEST_CASE("a player stops at a wall, slides along it, and walks over the floor it rests on") {
    GameObject player = Player();
    player.meshIndex = kCubeMesh;
    player.hasCollision = player.hasGravitation = true;
    player.position = {0, 1.021f, 0};
    StartGame({player,
               {.scale{50, 1, 50}, .meshIndex = kPlaneMesh, .hasCollision = true},
               {.position{0, 0, 5}, .scale{50, 5, 1}, .meshIndex = kCubeMesh, .hasCollision = true}});
    Hold({'W', 'D'});
    PlayFrames(40);
    CHECK(Object(0).position.z == doctest::Approx(2.999));
    CHECK(Object(0).position.x == doctest::Approx(8 * std::sqrt(0.5)));
    CHECK(Object(0).position.y == doctest::Approx(1.021));
}

TEST_CASE("every object with the script is a player, even a marker, but inactive ones do not move") {
    GameObject camera = Player(), inactive = Player(), other = Player();
    camera.isCamera = true;
    inactive.active = false;
    other.scripts = {L"playercontroller", L"PlayerController2", L""};
    StartGame({camera, inactive, other, Player()});
    Hold({'W'});
    UpdateFrame(0.05f);
    CHECK(Object(0).position.z == doctest::Approx(0.2));
    CHECK(Object(1).position == Vec3{});
    CHECK(Object(2).position == Vec3{});
    CHECK(Object(3).position.z == doctest::Approx(0.2));
}

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

TEST_CASE("drag counts from 0 to 5 per second, and never reverses a speed") {
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

TEST_CASE("nothing falls in edit mode") {
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

static GameObject Animated(int32_t type, float speed) {
    return {.position{0, 1, 0},
            .scale{3, 4, 5},
            .hasAnimation = true,
            .animationType = type,
            .animationSpeed = speed};
}

TEST_CASE("an object turns about y by its animation speed") {
    StartGame({Animated(0, 2)});
    UpdateFrame(0.05f);
    UpdateFrame(0.05f);
    CHECK(Object(0).rotation.y == doctest::Approx(0.2));
    CHECK(Object(0).scale == Vec3{3, 4, 5});
}

TEST_CASE("a pulse overwrites the scale with one around 1") {
    StartGame({Animated(1, 2)});
    UpdateFrame(0.05f);
    UpdateFrame(0.05f);
    const auto scale = doctest::Approx(1 + 0.08 * std::sin(2 * 0.1 * 3));
    CHECK(Object(0).scale.x == scale);
    CHECK(Object(0).scale.y == scale);
    CHECK(Object(0).scale.z == scale);
}

TEST_CASE("a bounce adds the same height in a short frame as in a long one") {
    StartGame({Animated(2, 2)});
    UpdateFrame(0.05f);
    CHECK(Object(0).position.y == doctest::Approx(1 + 0.01 * std::sin(2 * 0.05 * 4)));
    UpdateFrame(0);
    CHECK(Object(0).position.y == doctest::Approx(1 + 0.02 * std::sin(2 * 0.05 * 4)));
}

TEST_CASE("inactive objects animate, and cameras too; other types and objects without Animation do not") {
    GameObject inactive = Animated(0, 1), camera = inactive, other = inactive, plain = inactive;
    inactive.active = plain.hasAnimation = false;
    camera.isCamera = true;
    other.animationType = 3;
    StartGame({inactive, camera, other, plain});
    UpdateFrame(0.05f);
    CHECK(Object(0).rotation.y == doctest::Approx(0.05));
    CHECK(Object(1).rotation.y == doctest::Approx(0.05));
    CHECK(Object(2).rotation.y == 0);
    CHECK(Object(3).rotation.y == 0);
}

TEST_CASE("an object that falls and bounces is moved by both") {
    GameObject object = Animated(2, 1);
    object.hasGravitation = true;
    StartGame({object});
    UpdateFrame(0.05f);
    CHECK(Object(0).position.y == doctest::Approx(1 - 0.0245 + 0.01 * std::sin(0.05 * 4)));
}

TEST_CASE("what is animated is met at its new place in the same pass") {
    // At the time 0 it shrinks from 6 units to 2.
    GameObject pulsing{.position{2, 0, 0}, .scale{3, 3, 3}, .meshIndex = kCubeMesh, .hasCollision = true};
    pulsing.hasAnimation = true;
    pulsing.animationType = 1;
    StartGame(
        {pulsing,
         {.position{-5, 0, 0}, .scale{0.5f, 0.5f, 0.5f}, .meshIndex = kCubeMesh, .hasCollision = true}});
    editorState.animationTime = 0;
    WorldBoxes boxes;
    MoveWithCollision(1, {0.5f, 0, 0}, boxes);  // every box is known by now
    AnimationStep(0, 0.05f, boxes);
    MoveWithCollision(1, {10, 0, 0}, boxes);
    CHECK(Object(1).position.x == doctest::Approx(0.499));
}
