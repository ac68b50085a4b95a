#include "render/raster/camera.h"

#include "doctest/doctest.h"

#include <cmath>
#include <limits>

constexpr Rect kViewport{100, 50, 300, 150};  // 200 x 100

TEST_CASE("yaw 0 looks along z, a quarter turn along x, and a positive pitch looks up") {
    const Vec3 ahead = CameraForward(0, 0);
    CHECK(ahead == Vec3{0, 0, 1});
    const Vec3 right = CameraForward(1.57079633f, 0);
    CHECK(right.x == doctest::Approx(1));
    CHECK(std::abs(right.z) < 1e-6f);
    CHECK(CameraForward(0, 0.5f).y == doctest::Approx(std::sin(0.5)));
}

TEST_CASE("in the view x runs right, y up and z ahead") {
    const Matrix4 view = ViewMatrix({{1, 2, 3}, 0, 0});
    CHECK(TransformPoint(view, {1, 2, 3}) == Vec3{0, 0, 0});
    CHECK(TransformPoint(view, {2, 2, 3}) == Vec3{1, 0, 0});
    CHECK(TransformPoint(view, {1, 3, 3}) == Vec3{0, 1, 0});
    CHECK(TransformPoint(view, {1, 2, 8}) == Vec3{0, 0, 5});
}

TEST_CASE("in a turned view z still runs ahead") {
    const CameraPose camera{{0, 4, -10}, 0.7f, -0.24f};
    const Vec3 ahead = camera.position + CameraForward(camera.yaw, camera.pitch) * 5;
    const Vec3 seen = TransformPoint(ViewMatrix(camera), ahead);
    CHECK(std::abs(seen.x) < 1e-5f);
    CHECK(std::abs(seen.y) < 1e-5f);
    CHECK(seen.z == doctest::Approx(5));
}

TEST_CASE("the projection opens 70 degrees vertically and keeps the aspect") {
    const Matrix4 p = ProjectionMatrix(200, 100);
    CHECK(p.m[1][1] == doctest::Approx(1.428148).epsilon(1e-6));  // 1 / tan 35 degrees
    CHECK(p.m[0][0] == doctest::Approx(0.714074).epsilon(1e-6));
    CHECK(p.m[2][2] == 1.001001f);
    CHECK(p.m[2][3] == -0.1001001f);
    CHECK(p.m[3][2] == 1);
    CHECK(p.m[3][3] == 0);
}

TEST_CASE("a viewport without height or width still has a finite projection") {
    for (auto [width, height] : {std::pair{100, 0}, {0, 100}, {0, 0}, {-5, -7}}) {
        const Matrix4 p = ProjectionMatrix(width, height);
        for (const auto& row : p.m) {
            for (float value : row) CHECK(std::isfinite(value));
        }
    }
    CHECK(ProjectionMatrix(100, 0) == ProjectionMatrix(100, 1));
    CHECK(ProjectionMatrix(0, 100) == ProjectionMatrix(1, 100));
    CHECK(ProjectionMatrix(100, 0).m[0][0] == doctest::Approx(0.01428148).epsilon(1e-6));
    CHECK(ProjectionMatrix(0, 100).m[0][0] == doctest::Approx(142.8148).epsilon(1e-6));
}

TEST_CASE("a point straight ahead lands in the middle of the viewport") {
    const Matrix4 vp = MultiplyMatrix(ProjectionMatrix(200, 100), ViewMatrix({{0, 0, 0}, 0, 0}));
    ScreenCorner corner;
    REQUIRE(ProjectToViewport(TransformToClip(vp, {0, 0, 10}), kViewport, corner));
    CHECK(corner.x == 200);
    CHECK(corner.y == 100);
    CHECK(corner.inverseW == 0.1f);
    // far / (far - near) - near * far / (far - near) / z = 1.001001 - 0.01001001
    CHECK(corner.depth == doctest::Approx(0.990991).epsilon(1e-6));
}

TEST_CASE("known points land at known pixels") {
    const Matrix4 vp = MultiplyMatrix(ProjectionMatrix(200, 100), ViewMatrix({{0, 0, 0}, 0, 0}));
    const float edge = 10 * std::tan(0.6108653f);  // half of what is seen vertically at distance 10
    struct {
        Vec3 world;
        float x, y;
    } cases[] = {
        {{0, edge, 10}, 200, 50},       // top edge
        {{0, -edge, 10}, 200, 150},     // bottom edge
        {{2 * edge, 0, 10}, 300, 100},  // right edge, the viewport being twice as wide
        {{-2 * edge, 0, 10}, 100, 100}, {{edge, edge / 2, 10}, 250, 75},
    };
    for (const auto& [world, x, y] : cases) {
        ScreenCorner corner;
        REQUIRE(ProjectToViewport(TransformToClip(vp, world), kViewport, corner));
        CHECK(corner.x == doctest::Approx(x).epsilon(1e-5));
        CHECK(corner.y == doctest::Approx(y).epsilon(1e-5));
    }
}

TEST_CASE("a vertex exactly at w = 0.05 is rejected, one slightly beyond it is kept") {
    ScreenCorner corner;
    CHECK_FALSE(ProjectToViewport({0, 0, 0, 0.05f}, kViewport, corner));
    CHECK(ProjectToViewport({0, 0, 0, std::nextafter(0.05f, 1.0f)}, kViewport, corner));
    CHECK_FALSE(ProjectToViewport({0, 0, 0, -1}, kViewport, corner));
}

TEST_CASE("depths are kept up to 0.001 beyond their range and limited to it") {
    ScreenCorner corner;
    CHECK(ProjectToViewport({0, 0, -0.0009f, 1}, kViewport, corner));
    CHECK(corner.depth == 0);
    CHECK(ProjectToViewport({0, 0, 1.0009f, 1}, kViewport, corner));
    CHECK(corner.depth == 1);
    CHECK_FALSE(ProjectToViewport({0, 0, -0.0011f, 1}, kViewport, corner));
    CHECK_FALSE(ProjectToViewport({0, 0, 1.0011f, 1}, kViewport, corner));
}

TEST_CASE("screen positions are limited to 100000 pixels on each side") {
    ScreenCorner corner;
    REQUIRE(ProjectToViewport({1e30f, -1e30f, 0.5f, 1}, kViewport, corner));
    CHECK(corner.x == 100000);
    CHECK(corner.y == 100000);
    REQUIRE(ProjectToViewport({-1e30f, 1e30f, 0.5f, 1}, kViewport, corner));
    CHECK(corner.x == -100000);
    CHECK(corner.y == -100000);
}

TEST_CASE("a point with a coordinate that is not a number is not visible") {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    ScreenCorner corner{1, 2, 3, 4};
    for (const Vec4& clip : {Vec4{nan, 0, 0.5f, 1}, Vec4{0, nan, 0.5f, 1}, Vec4{0, 0, nan, 1},
                             Vec4{0, 0, 0.5f, nan}, Vec4{inf, 0, 0.5f, inf}, Vec4{0, 0, inf, inf}}) {
        CHECK_FALSE(ProjectToViewport(clip, kViewport, corner));
    }
    CHECK(corner.x == 1);
    CHECK(corner.inverseW == 4);
    Point pixel{7, 8};
    CHECK_FALSE(ProjectToPixel({}, {nan, 0, 0}, kViewport, pixel));
    CHECK(pixel == Point{7, 8});
}

TEST_CASE("an infinite coordinate is limited like a very large one") {
    ScreenCorner corner;
    REQUIRE(ProjectToViewport({std::numeric_limits<float>::infinity(), 0, 0.5f, 1}, kViewport, corner));
    CHECK(corner.x == 100000);
}
