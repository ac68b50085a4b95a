#include "scene/object_fields.h"

#include "support/capture.h"
#include "support/changed_field.h"

#include "doctest/doctest.h"

#include <limits>

TEST_CASE("objects differ to the bit when any field differs") {
    const GameObject plain;
    CHECK(SameBits(plain, plain));
    for (size_t field = 0; field < kFieldCount; ++field) {
        const std::string name = FieldName(field);
        CAPTURE(name);
        const GameObject other = WithFieldChanged(plain, field);
        CHECK_FALSE(SameBits(plain, other));
        CHECK(SameBitsButParent(plain, other) == (name == "parentIndex"));
    }
}

TEST_CASE("every field of an object is listed by its name") {
    CHECK(FieldName(0) == "name");
    CHECK(FieldName(6) == "parentIndex");
    CHECK(FieldName(kFieldCount - 1) == "textSize");
    GameObject object;
    CHECK(&std::get<0>(FieldsOf(object)) == &object.name);
    CHECK(&std::get<6>(FieldsOf(object)) == &object.parentIndex);
    CHECK(&std::get<kFieldCount - 1>(FieldsOf(object)) == &object.textSize);
}

TEST_CASE("objects that differ only in their parents are equal apart from them") {
    const GameObject plain, under{.parentIndex = 3}, other{.meshIndex = 3};
    CHECK(SameBitsButParent(plain, under));
    CHECK_FALSE(SameBitsButParent(plain, other));
    CHECK_FALSE(SameBitsButParent(under, other));
}

TEST_CASE("zero differs from minus zero, and not-a-number equals itself") {
    const GameObject zero, minusZero{.position{0, -0.0f, 0}}, minusSpeed{.velocityY = -0.0f};
    CHECK(zero == minusZero);
    CHECK_FALSE(SameBits(zero, minusZero));
    CHECK_FALSE(SameBits(zero, minusSpeed));

    const GameObject notANumber{.mass = std::numeric_limits<float>::quiet_NaN()};
    CHECK_FALSE(notANumber == notANumber);
    CHECK(SameBits(notANumber, notANumber));
}
