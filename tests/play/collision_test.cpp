#include "play/collision.h"

#include "support/game.h"

#include "doctest/doctest.h"

#include <cmath>
#include <limits>

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();

static GameObject Solid(Vec3 position, Vec3 scale = {0.5f, 0.5f, 0.5f}) {
    return {.position = position, .scale = scale, .meshIndex = kCubeMesh, .hasCollision = true};
}

static void Move(int32_t index, Vec3 way) {
    WorldBoxes boxes;
    MoveWithCollision(index, way, boxes);
}

TEST_CASE("a mover stops 0.001 before what it meets, from each side, and loses its speed along that axis") {
    for (float Vec3::*axis : {&Vec3::x, &Vec3::y, &Vec3::z}) {
        for (const float side : {1.0f, -1.0f}) {
            Vec3 way;
            way.*axis = 3 * side;
            Vec3 wall;
            wall.*axis = 2 * side;
            StartGame({Solid({}), Solid(wall)});
            Object(0).velocity = {7, 8, 9};
            Object(0).velocityY = 8;
            Move(0, way);
            CHECK(Object(0).position.*axis == doctest::Approx(0.999 * side));
            CHECK(Object(0).velocity.*axis == 0);
            CHECK((Object(0).velocity.x == 0) == (axis == &Vec3::x));
            CHECK((Object(0).velocity.y == 0) == (axis == &Vec3::y));
            CHECK((Object(0).velocity.z == 0) == (axis == &Vec3::z));
            CHECK((Object(0).velocityY == 0) == (axis == &Vec3::y));
            CHECK(Object(1).position == wall);
        }
    }
}

TEST_CASE("a mover slides along a wall for the rest of its way") {
    StartGame({Solid({}), Solid({2, 0, 0}, {0.5f, 0.5f, 50})});
    Move(0, {3, 0, 3});
    CHECK(Object(0).position.x == doctest::Approx(0.999));
    CHECK(Object(0).position.z == doctest::Approx(3));
}

TEST_CASE("a mover stops before what stands at the end of a chain of 1,100 parents") {
    Scene chain(1100);
    for (int32_t i = 0; i < 1100; ++i)
        chain[static_cast<size_t>(i)] = {.position{1, 0, 0}, .parentIndex = i - 1};
    GameObject wall = Solid({2, 0, 0});
    wall.parentIndex = 1099;  // it stands at 1102
    chain.push_back(wall);
    chain.push_back(Solid({1100, 0, 0}));
    StartGame(chain);
    Move(1101, {3, 0, 0});
    CHECK(Object(1101).position.x == doctest::Approx(1100.999));
}

TEST_CASE("a way of 13 units takes 64 steps, and one of 64 units takes no more") {
    // Both boxes are 0.04 thick, so a wall is met only where a step ends. 64 steps of 0.203125 units end at
    // 6.5 and not at 6.4; 65 steps of 0.2 would end at 6.4 and not at 6.5.
    struct {
        float way, wall;
        bool isMet;
    } cases[] = {{13, 6.5f, true}, {13, 6.4f, false}, {64, 30, true}, {64, 30.5f, false}};
    for (const auto [way, wall, isMet] : cases) {
        StartGame({Solid({}, {0, 0.5f, 0.5f}), Solid({wall, 0, 0}, {0, 0.5f, 0.5f})});
        Object(0).velocity.x = 1;
        Move(0, {way, 0, 0});
        CHECK((Object(0).velocity.x == 0) == isMet);
    }
}

TEST_CASE("a way of 0.2 units is one step, a longer one is two") {
    // The wall stands where only a step in the middle of the way meets it.
    for (const auto& [way, isMet] : {std::pair{0.2f, false}, std::pair{0.21f, true}}) {
        StartGame({Solid({}, {0, 0.5f, 0.5f}), Solid({way / 2, 0, 0}, {0, 0.5f, 0.5f})});
        Move(0, {way, 0, 0});
        CHECK((Object(0).position.x < way - 0.01f) == isMet);
    }
}

TEST_CASE("an object without Collision, an entity, a camera and a light pass through everything") {
    GameObject plain = Solid({}), entity = plain, camera = plain, light = plain;
    plain.hasCollision = false;
    entity.isEntity = camera.isCamera = light.isLight = true;
    for (const GameObject& mover : {plain, entity, camera, light}) {
        StartGame({mover, Solid({2, 0, 0})});
        Move(0, {3, -1, 0});
        CHECK(Object(0).position == Vec3{3, -1, 0});
    }
}

TEST_CASE("only active objects with Collision, Shape and a mesh are solid") {
    GameObject inactive = Solid({2, 0, 0}), passable = inactive, shapeless = inactive, meshless = inactive;
    inactive.active = passable.hasCollision = shapeless.hasShape = false;
    meshless.meshIndex = -1;
    for (const GameObject& other : {inactive, passable, shapeless, meshless}) {
        StartGame({Solid({}), other});
        Move(0, {3, 0, 0});
        CHECK(Object(0).position.x == doctest::Approx(3));
    }
    // Cameras, lights and entities block the way like others.
    GameObject camera = Solid({2, 0, 0});
    camera.isCamera = true;
    StartGame({Solid({}), camera});
    Move(0, {3, 0, 0});
    CHECK(Object(0).position.x == doctest::Approx(0.999));
}

TEST_CASE("a mover without a mesh collides as a cube of edge 2") {
    GameObject mover = Solid({}, {1, 1, 1});
    mover.meshIndex = -1;
    StartGame({mover, Solid({3, 0, 0})});
    Move(0, {3, 0, 0});
    CHECK(Object(0).position.x == doctest::Approx(1.499));
}

TEST_CASE("inactive objects and indices outside the scene do not move") {
    GameObject inactive = Solid({});
    inactive.active = false;
    StartGame({inactive});
    Move(0, {1, 1, 1});
    Move(-1, {1, 1, 1});
    Move(1, {1, 1, 1});
    CHECK(Object(0).position == Vec3{});
}

TEST_CASE("sideways, an overlap in height below 0.05 does not block") {
    // Tops at 0.5 and bottoms at 0.5 minus the overlap.
    for (const auto& [overlap, isBlocked] : {std::pair{0.045f, false}, std::pair{0.055f, true}}) {
        for (float Vec3::*axis : {&Vec3::x, &Vec3::z}) {
            Vec3 place, way;
            place.*axis = 2;
            place.y = 1 - overlap;
            way.*axis = 1.5f;
            StartGame({Solid({}), Solid(place)});
            Object(0).velocity = {5, 5, 5};
            Move(0, way);
            CHECK(Object(0).position.*axis == doctest::Approx(isBlocked ? 0.999 : 1.5));
            CHECK((Object(0).velocity.*axis == 0) == isBlocked);
        }
    }
}

TEST_CASE("a mover that starts inside another object is put outside, against its way") {
    StartGame({Solid({0, 0, 0}), Solid({0.3f, 0, 0})});
    Move(0, {0.1f, 0, 0});
    CHECK(Object(0).position.x == doctest::Approx(0.3 - 1 - 0.001));
}

TEST_CASE("pushes follow each other in scene order") {
    // The mover reaches x = 0.2. The first wall, whose near side is at 0.6, pushes it back to 0.099; there it
    // still meets the second one, at 0.55, but would not have met it had that come first and pushed further.
    StartGame({Solid({}), Solid({1.1f, 0, 0}), Solid({1.05f, 0, 0})});
    Move(0, {0.2f, 0, 0});
    CHECK(Object(0).position.x == doctest::Approx(0.049));
    // Two walls behind each other: the push out of the first leads into the second, which pushes on.
    StartGame({Solid({}), Solid({1.1f, 0, 0}), Solid({-0.9f, 0, 0})});
    Move(0, {0.2f, 0, 0});
    CHECK(Object(0).position.x == doctest::Approx(-0.9 - 1 - 0.001));
    // In the other order the second is not met again.
    StartGame({Solid({}), Solid({-0.9f, 0, 0}), Solid({1.1f, 0, 0})});
    Move(0, {0.2f, 0, 0});
    CHECK(Object(0).position.x == doctest::Approx(0.099));
}

TEST_CASE("a way of zero meets nothing, even inside another object") {
    StartGame({Solid({}), Solid({})});
    Object(0).velocity = {1, 1, 1};
    Move(0, {0, -0.0f, 0});
    CHECK(Object(0).position == Vec3{});
    CHECK(Object(0).velocity == Vec3{1, 1, 1});
}

TEST_CASE("a child's way is added to its local position as it stands") {
    StartGame({{.position{10, 0, 0}, .rotation{0, 1.5707964f, 0}, .scale{2, 2, 2}}, {.parentIndex = 0}});
    Move(1, {1, 0, 0});
    CHECK(Object(1).position == Vec3{1, 0, 0});
}

TEST_CASE("a parent bumps into its own solid child, which moves along") {
    GameObject child = Solid({1.5f, 0, 0}, {1, 1, 1});
    child.parentIndex = 0;
    StartGame({Solid({}, {1, 1, 1}), child});
    Move(0, {0.1f, 0, 0});
    // Pushed once: out of where the child stood after the step, at 0.6.
    CHECK(Object(0).position.x == doctest::Approx(0.1 + (0.6 - 1.1 - 0.001)));
}

TEST_CASE("huge ways and places, and those that are not numbers, do no harm") {
    for (const float odd : {kNotANumber, std::numeric_limits<float>::infinity(), 3e38f, -3e38f}) {
        StartGame({Solid({}), Solid({0, 0, 0})});
        Move(0, {odd, 0, odd});
        Move(1, {0, 1, 0});
        CHECK(Object(1).position.y == 1);  // a box without a place stops nothing
        StartGame({Solid({odd, 0, 0}), Solid({odd, 0, 0})});
        Move(0, {1, 1, 1});
        CHECK(Object(1).velocity == Vec3{});
    }
}

TEST_CASE("an object that moved without Collision is met at its new place in the same pass") {
    GameObject child = Solid({2, 0, 0});
    child.parentIndex = 0;
    StartGame({{}, child, Solid({-5, 0, 0})});
    WorldBoxes boxes;
    MoveWithCollision(2, {1, 0, 0}, boxes);   // every box is known by now
    MoveWithCollision(0, {-3, 0, 0}, boxes);  // passes through everything, and its child stands at -1
    MoveWithCollision(2, {6, 0, 0}, boxes);
    CHECK(Object(2).position.x == doctest::Approx(-2.001));
}
