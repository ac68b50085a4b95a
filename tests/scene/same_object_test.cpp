#include "scene/same_object.h"

#include "doctest/doctest.h"

#include <limits>

TEST_CASE("objects differ to the bit when any field differs") {
    const GameObject plain;
    CHECK(SameBits(plain, plain));
    const GameObject different[] = {
        {.name = L"x"},          {.position{0, 0, 1}}, {.rotation{0, 1, 0}},    {.scale{1, 1, 2}},
        {.meshIndex = 0},        {.parentIndex = 0},   {.hasShape = false},     {.animationSpeed = 2},
        {.scriptCount = 1},      {.color = 1},         {.scripts = {L""}},      {.gloss = 0},
        {.velocity{1, 0, 0}},    {.active = false},    {.spawnerPrefab = L"p"}, {.cameraBackground = 1},
        {.cameraBrightness = 0}, {.isText = true},     {.text = L""},           {.textSize = 19},
    };
    for (const GameObject& object : different) CHECK_FALSE(SameBits(plain, object));
}

TEST_CASE("objects that differ in their parents only are alike but for them") {
    const GameObject plain, under{.parentIndex = 3}, other{.meshIndex = 3};
    CHECK(SameBitsButParent(plain, under));
    CHECK_FALSE(SameBitsButParent(plain, other));
    CHECK_FALSE(SameBitsButParent(under, other));
}

TEST_CASE("zero and minus zero differ to the bit, and what is not a number equals itself") {
    const GameObject zero, minusZero{.position{0, -0.0f, 0}}, minusSpeed{.velocityY = -0.0f};
    CHECK(zero == minusZero);
    CHECK_FALSE(SameBits(zero, minusZero));
    CHECK_FALSE(SameBits(zero, minusSpeed));

    const GameObject notANumber{.mass = std::numeric_limits<float>::quiet_NaN()};
    CHECK_FALSE(notANumber == notANumber);
    CHECK(SameBits(notANumber, notANumber));
}
