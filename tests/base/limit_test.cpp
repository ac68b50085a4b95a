#include "base/limit.h"

#include "doctest/doctest.h"

#include <initializer_list>
#include <limits>

TEST_CASE("a number within its range stays, the ends included, and one beyond becomes the nearer end") {
    struct {
        float value, limited;
    } cases[] = {{2, 2}, {3.5f, 3.5f}, {5, 5}, {1.999f, 2}, {5.001f, 5}, {-1e30f, 2}, {1e30f, 5}};
    for (auto [value, limited] : cases) CHECK(Limit(value, 2.0f, 5.0f) == limited);
    CHECK(Limit(-7, -3, 3) == -3);
    CHECK(Limit(0, -3, 3) == 0);
    CHECK(Limit(7, -3, 3) == 3);
}

TEST_CASE("infinities become the ends of the range, and not a number the lower end") {
    const float inf = std::numeric_limits<float>::infinity();
    CHECK(Limit(inf, -1.0f, 1.0f) == 1);
    CHECK(Limit(-inf, -1.0f, 1.0f) == -1);
    CHECK(Limit(std::numeric_limits<float>::quiet_NaN(), -1.0f, 1.0f) == -1);
    CHECK(Limit(std::numeric_limits<double>::quiet_NaN(), 0.25, 1.0) == 0.25);
}

TEST_CASE("a range of one number gives that number") {
    for (int value : {-1, 4, 9}) CHECK(Limit(value, 4, 4) == 4);
}
