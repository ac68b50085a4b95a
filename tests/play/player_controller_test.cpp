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

TEST_CASE("a player walks as it is turned, and not faster askew") {
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

TEST_CASE("opposite keys, and none, leave a player without Rigidbody where it is") {
    for (const auto& keys : {std::initializer_list<char>{'W', 'S'}, {'A', 'D'}, {'W', 'A', 'S', 'D'}, {}}) {
        StartGame({Player(0.3f)});
        Hold(keys);
        PlayFrames(3);
        CHECK(Object(0).position == Vec3{});
    }
}

TEST_CASE("keys push a body by 22 over its mass, and drag slows it after that") {
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

TEST_CASE("a body lighter than 0.1 is pushed as one of 0.1") {
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

TEST_CASE("a body that was set faster is slowed to 4 in its direction, without a key") {
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

TEST_CASE("every object with the script is a player, markers too, but inactive ones stay") {
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
