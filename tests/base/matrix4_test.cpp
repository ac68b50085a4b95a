#include "base/matrix4.h"

#include "scene/transform.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <cmath>
#include <limits>

TEST_CASE("the inverse of scaling and moving moves back and divides") {
    Matrix4 inverse;
    REQUIRE(InvertMatrix(LocalMatrix({4, -6, 8}, {}, {2, 4, -8}), inverse));
    CHECK(inverse == Matrix4{{{{0.5f, 0, 0, -2}, {0, 0.25f, 0, 1.5f}, {0, 0, -0.125f, 1}, {0, 0, 0, 1}}}});
}

TEST_CASE("a matrix and its inverse bring a point back") {
    constexpr uint32_t kSeed = 5;
    CAPTURE(kSeed);
    RandomSource random(kSeed);
    const auto vector = [&](float reach) {
        return Vec3{random.Between(-reach, reach), random.Between(-reach, reach),
                    random.Between(-reach, reach)};
    };
    for (int round = 0; round < 500; ++round) {
        const Vec3 scale{random.Between(0.2f, 3), random.Between(0.2f, 3), -random.Between(0.2f, 3)};
        const Matrix4 matrix = MultiplyMatrix(LocalMatrix(vector(20), vector(3), scale),
                                              LocalMatrix(vector(2), vector(3), {1, 2, 1}));
        Matrix4 inverse;
        REQUIRE(InvertMatrix(matrix, inverse));
        const Vec3 point = vector(10);
        CHECK(Length(TransformPoint(inverse, TransformPoint(matrix, point)) - point) < 1e-3f);
    }
}

TEST_CASE("small objects have an inverse") {
    Matrix4 inverse;
    REQUIRE(InvertMatrix(LocalMatrix({}, {0.3f, 0.2f, 0.1f}, {1e-4f, 1e-4f, 1e-4f}), inverse));
    REQUIRE(InvertMatrix(LocalMatrix({}, {0.3f, 0.2f, 0.1f}, {1e-4f, 1, 1e4f}), inverse));
}

TEST_CASE("a matrix that flattens space, is not finite or has another last row has no inverse") {
    const float infinity = std::numeric_limits<float>::infinity();
    const Matrix4 flat = LocalMatrix({1, 2, 3}, {0.4f, 0.7f, 1}, {1, 0, 1});
    const Matrix4 flatChain = MultiplyMatrix(flat, LocalMatrix({}, {0.5f, 0.2f, 0.9f}, {1, 1, 1}));
    const Matrix4 tooSmall = LocalMatrix({1, 1, 1}, {}, {1e-39f, 1e-39f, 1e-39f});
    Matrix4 perspective;
    perspective.m[3] = {0, 0, 1, 0};
    const Matrix4 unchanged = LocalMatrix({9, 9, 9}, {}, {1, 1, 1});
    for (const Matrix4& matrix :
         {flat, flatChain, tooSmall, perspective, LocalMatrix({infinity, 0, 0}, {}, {1, 1, 1}),
          LocalMatrix({}, {std::nanf(""), 0, 0}, {1, 1, 1})}) {
        Matrix4 inverse = unchanged;
        CHECK_FALSE(InvertMatrix(matrix, inverse));
        CHECK(inverse == unchanged);
    }
}
