#include "support/game.h"

#include "doctest/doctest.h"

#include <cmath>

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

TEST_CASE("a bounce adds the same to the height in a short frame as in a long one") {
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
