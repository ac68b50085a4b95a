#include "viewport/scene_view.h"

#include "support/capture.h"

#include "doctest/doctest.h"

#include <cmath>

constexpr float kQuarter = 1.57079633f;

TEST_CASE("in edit mode the editor's camera provides the view") {
    const Scene scene{{.name = L"Camera", .position{1, 2, 3}, .isCamera = true}};
    const CameraPose editor{{7, 8, 9}, 0.5f, 0.25f};
    CHECK(ActiveCamera(scene, editor, false) == editor);
}

TEST_CASE("in Play mode the first camera object provides the view, active or not") {
    const Scene scene{{.name = L"Cube"},
                      {.name = L"First",
                       .position{1, 2, 3},
                       .rotation{0.1f, 0.2f, 0.3f},
                       .isCamera = true,
                       .active = false},
                      {.name = L"Second", .position{4, 5, 6}, .isCamera = true}};
    CHECK(ActiveCamera(scene, {}, true) == CameraPose{{1, 2, 3}, 0.2f, 0.1f});
}

TEST_CASE("a camera below a parent stands in the world but keeps its own direction") {
    Scene scene{
        {.name = L"Arm", .position{10, 0, 0}, .rotation{0, kQuarter, 0}},
        {.name = L"Camera", .position{0, 0, 2}, .rotation{0, 0.5f, 0}, .parentIndex = 0, .isCamera = true}};
    const CameraPose camera = ActiveCamera(scene, {}, true);
    CHECK(camera.position.x == doctest::Approx(12));
    CHECK(camera.yaw == 0.5f);
}

TEST_CASE("without a camera object the editor's camera is used in Play mode too") {
    const CameraPose editor{{7, 8, 9}, 0.5f, 0.25f};
    CHECK(ActiveCamera({}, editor, true) == editor);
}

TEST_CASE("a light without rotation points half way up") {
    const Scene scene{{.isLight = true}};
    const Vec3 light = LightDirection(scene);
    CHECK(light.x == 0);
    CHECK(light.y == doctest::Approx(std::sqrt(0.5)));
    CHECK(light.z == doctest::Approx(std::sqrt(0.5)));
}

TEST_CASE("a turned light follows its own rotation about x and y") {
    const Scene scene{{.position{5, 5, 5}, .rotation{0.6f, 0.8f, 2}, .scale{3, 3, 3}, .isLight = true},
                      {.rotation{0, 0, 0}, .isLight = true}};
    const double x = std::sin(0.8) * std::cos(0.6), y = std::cos(0.6), z = std::cos(0.8) * std::cos(0.6);
    const double length = std::sqrt(x * x + y * y + z * z);
    const Vec3 light = LightDirection(scene);
    CHECK(light.x == doctest::Approx(x / length));
    CHECK(light.y == doctest::Approx(y / length));
    CHECK(light.z == doctest::Approx(z / length));
}

TEST_CASE("a light turned by a quarter about x shines from nowhere") {
    const Scene scene{{.rotation{kQuarter, 0.4f, 0}, .isLight = true}};
    CHECK(LightDirection(scene) == Vec3{});
}

TEST_CASE("without a light object the light comes from behind the left shoulder") {
    const double length = std::sqrt(0.45 * 0.45 + 0.85 * 0.85 + 0.28 * 0.28);
    const Vec3 light = LightDirection({});
    CHECK(light.x == doctest::Approx(-0.45 / length));
    CHECK(light.y == doctest::Approx(0.85 / length));
    CHECK(light.z == doctest::Approx(-0.28 / length));
}

TEST_CASE("the background comes from the selected camera, else the first one, else it is brown") {
    Scene scene{{.name = L"Cube"},
                {.name = L"First", .isCamera = true, .active = false, .cameraBackground = 0x112233},
                {.name = L"Second", .isCamera = true, .cameraBackground = 0x445566}};
    CHECK(ViewportBackground({}, 0, false) == Pixel{0x2D2219});
    CHECK(ViewportBackground(scene, 0, false) == Pixel{0x112233});
    CHECK(ViewportBackground(scene, 2, false) == Pixel{0x445566});
    CHECK(ViewportBackground(scene, -1, false) == Pixel{0x112233});
    CHECK(ViewportBackground(scene, 3, false) == Pixel{0x112233});
    CHECK(ViewportBackground(scene, 99, false) == Pixel{0x112233});
}

TEST_CASE("in Play mode the background comes from the first active camera") {
    Scene scene{{.isCamera = true, .active = false, .cameraBackground = 0x112233},
                {.isCamera = true, .cameraBackground = 0x445566},
                {.isCamera = true, .cameraBackground = 0x778899}};
    CHECK(ViewportBackground(scene, 2, true) == Pixel{0x445566});
    scene[1].active = scene[2].active = false;
    CHECK(ViewportBackground(scene, 2, true) == Pixel{0x778899});
    CHECK(ViewportBackground(scene, -1, true) == Pixel{0x112233});
}

TEST_CASE("a camera's brightness darkens each channel, truncated, and is limited to 0 .. 1") {
    Scene scene{{.isCamera = true,
                 .cameraBackgroundSet = false,
                 .cameraBackground = 0xFF6503,
                 .cameraBrightness = 0.5f}};
    CHECK(ViewportBackground(scene, 0, false) == Pixel{0x7F3201});
    scene[0].cameraBrightness = 7;
    CHECK(ViewportBackground(scene, 0, false) == Pixel{0xFF6503});
    scene[0].cameraBrightness = -1;
    CHECK(ViewportBackground(scene, 0, false) == Pixel{0});
    scene[0].cameraBrightness = std::nanf("");
    CHECK(ViewportBackground(scene, 0, false) == Pixel{0});
}

TEST_CASE("a mesh is shown that the library has, of an object with Shape that is no text") {
    const struct {
        int32_t mesh;
        bool isShown;
    } cases[] = {{-1, false}, {0, true}, {6, true}, {7, false}};
    for (const auto& [mesh, isShown] : cases) {
        CAPTURE(mesh);
        CHECK(ShowsMesh({.meshIndex = mesh, .hasShape = true}, 7) == isShown);
        CHECK_FALSE(ShowsMesh({.meshIndex = mesh, .hasShape = false}, 7));
        CHECK_FALSE(ShowsMesh({.meshIndex = mesh, .hasShape = true, .isText = true}, 7));
    }
}
