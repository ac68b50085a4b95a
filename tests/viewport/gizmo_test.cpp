#include "viewport/gizmo.h"

#include "render/raster/camera.h"
#include "support/gestures.h"
#include "support/picture.h"

#include "doctest/doctest.h"

#include <cmath>
#include <vector>

constexpr Pixel kOrigin{0x78E2FF};

// X points right, Y up, Z nowhere: an axis that is seen from its end.
static GizmoOnScreen Flat() {
    return {.visible = true,
            .origin{100, 100},
            .tipVisible{true, true, false},
            .tip{ScreenCorner{150, 100}, ScreenCorner{100, 50}, ScreenCorner{}}};
}

TEST_CASE("the gizmo lies on world axes of 1.25 units, seen through the camera") {
    StartPicture(200, 100);
    const Matrix4 vp = MultiplyMatrix(ProjectionMatrix(200, 100), ViewMatrix({{0, 0, 0}, 0, 0}));
    const GizmoOnScreen gizmo = ProjectGizmo({0, 0, 5}, vp, frameBuffer.viewport);
    REQUIRE(gizmo.visible);
    // 1.25 / (5 tan 35 degrees) * 50 = 17.8518 pixels.
    const float places[][2] = {{100, 50}, {117.8518f, 50}, {100, 32.1482f}, {100, 50}};
    const ScreenCorner corners[] = {gizmo.origin, gizmo.tip[0], gizmo.tip[1], gizmo.tip[2]};
    for (size_t i = 0; i < 4; ++i) {
        CHECK(std::abs(corners[i].x - places[i][0]) < 0.001f);
        CHECK(std::abs(corners[i].y - places[i][1]) < 0.001f);
    }
}

TEST_CASE("an object behind the camera shows no gizmo, and a tip behind it no axis") {
    StartPicture(200, 100);
    const Matrix4 vp = MultiplyMatrix(ProjectionMatrix(200, 100), ViewMatrix({{0, 0, 0}, 0, 0}));
    CHECK_FALSE(ProjectGizmo({0, 0, -5}, vp, frameBuffer.viewport).visible);
    const Matrix4 back = MultiplyMatrix(ProjectionMatrix(200, 100), ViewMatrix({{0, 0, 1}, 3.14159265f, 0}));
    const GizmoOnScreen gizmo = ProjectGizmo({0, 0, 0.5f}, back, frameBuffer.viewport);
    CHECK(gizmo.visible);
    CHECK_FALSE(gizmo.tipVisible[2]);
    StartPicture(200, 100);
    DrawGizmo({}, GizmoAxis::X);
    CHECK(CountOf(Pixel{0}) == 200 * 100);
}

TEST_CASE("each axis has its colour, and a brighter one while it is dragged") {
    const Pixel idle[] = {Pixel{0x4A4BEB}, Pixel{0x76D25F}, Pixel{0xF59152}};
    const Pixel active[] = {Pixel{0x808AFF}, Pixel{0x7EECA0}, Pixel{0xFFB47E}};
    GizmoOnScreen gizmo = Flat();
    gizmo.tipVisible[2] = true;
    gizmo.tip[2] = {60, 140};
    using enum GizmoAxis;
    for (const std::optional<GizmoAxis> dragged : {std::optional<GizmoAxis>(), {X}, {Y}, {Z}}) {
        StartPicture(200, 200);
        DrawGizmo(gizmo, dragged);
        for (size_t i = 0; i < 3; ++i) {
            const Pixel expected = dragged == static_cast<GizmoAxis>(i) ? active[i] : idle[i];
            const Point tip{static_cast<int32_t>(gizmo.tip[i].x), static_cast<int32_t>(gizmo.tip[i].y)};
            CHECK(PixelAt(tip.x - 4, tip.y - 4) == expected);
            CHECK(PixelAt(tip.x + 4, tip.y + 4) == expected);
            CHECK(PixelAt(tip.x + 5, tip.y + 5) == Pixel{0});
            CHECK(PixelAt((tip.x + 100) / 2, (tip.y + 100) / 2) == expected);
        }
        CHECK(PixelAt(95, 95) == kOrigin);
        CHECK(PixelAt(105, 105) == kOrigin);
        CHECK(CountOf(kOrigin) == 121);
    }
}

static int32_t AxisAt(const GizmoOnScreen& gizmo, Point pointer) {
    return NumberOf(GizmoAxisAt(gizmo, pointer));
}

TEST_CASE("a press exactly 8 pixels beside a tip grabs the axis, 9 pixels do not") {
    CHECK(AxisAt(Flat(), {158, 100}) == 1);
    CHECK(AxisAt(Flat(), {158, 108}) == 1);
    CHECK(AxisAt(Flat(), {142, 92}) == 1);
    CHECK(AxisAt(Flat(), {159, 108}) == 0);  // 12 pixels from the line too
    CHECK(AxisAt(Flat(), {161, 100}) == 0);
}

TEST_CASE("an axis whose tip is not visible cannot be grabbed") {
    for (size_t hidden = 0; hidden < 2; ++hidden) {
        GizmoOnScreen gizmo = Flat();
        const Point tip{static_cast<int32_t>(gizmo.tip[hidden].x), static_cast<int32_t>(gizmo.tip[hidden].y)};
        CHECK(AxisAt(gizmo, tip) == static_cast<int32_t>(hidden) + 1);
        gizmo.tipVisible[hidden] = false;
        CHECK(AxisAt(gizmo, tip) == 0);
    }
}

TEST_CASE("the distance from an axis is not rounded, the square around its tip is of whole pixels") {
    GizmoOnScreen gizmo = Flat();
    gizmo.origin.y = gizmo.tip[0].y = 100.75f;
    gizmo.tipVisible[1] = false;
    CHECK(AxisAt(gizmo, {125, 110}) == 1);
    CHECK(AxisAt(gizmo, {125, 111}) == 0);
    CHECK(AxisAt(gizmo, {125, 91}) == 1);
    CHECK(AxisAt(gizmo, {125, 90}) == 0);
    CHECK(AxisAt(gizmo, {158, 92}) == 1);  // the square lies around pixel 100
    CHECK(AxisAt(gizmo, {158, 108}) == 1);
    CHECK(AxisAt(gizmo, {158, 91}) == 0);
}

TEST_CASE("a gizmo of parts of pixels is drawn where its points are cut to whole ones") {
    GizmoOnScreen gizmo = Flat();
    StartPicture(200, 200);
    DrawGizmo(gizmo, std::nullopt);
    const std::vector<Pixel> whole = headless.pixels;
    for (ScreenCorner* corner : {&gizmo.origin, &gizmo.tip[0], &gizmo.tip[1]}) {
        corner->x += 0.99f;
        corner->y += 0.5f;
    }
    StartPicture(200, 200);
    DrawGizmo(gizmo, std::nullopt);
    CHECK(headless.pixels == whole);
}

TEST_CASE("a press up to 10 pixels from the line grabs the axis") {
    CHECK(AxisAt(Flat(), {125, 110}) == 1);
    CHECK(AxisAt(Flat(), {125, 111}) == 0);
    CHECK(AxisAt(Flat(), {90, 70}) == 2);
    CHECK(AxisAt(Flat(), {89, 70}) == 0);
}

TEST_CASE("the nearest axis wins, and of equal ones the first") {
    CHECK(AxisAt(Flat(), {106, 98}) == 1);
    CHECK(AxisAt(Flat(), {102, 94}) == 2);
    CHECK(AxisAt(Flat(), {105, 95}) == 1);
    GizmoOnScreen same = Flat();
    same.tipVisible[2] = true;
    same.tip[2] = same.tip[0];
    CHECK(AxisAt(same, {150, 100}) == 1);
    same.tip[0] = {0, 0};
    CHECK(AxisAt(same, {150, 100}) == 3);
}

TEST_CASE("an axis seen from its end counts as the point of the origin") {
    GizmoOnScreen gizmo = Flat();
    gizmo.tipVisible = {false, false, true};
    gizmo.tip[2] = gizmo.origin;
    CHECK(AxisAt(gizmo, {100, 110}) == 3);
    CHECK(AxisAt(gizmo, {100, 111}) == 0);
    CHECK(AxisAt({}, {0, 0}) == 0);
    // From -0.005 to 0.005 it is a segment, whose end is nearer than 10 pixels; anything shorter is its
    // origin.
    gizmo.origin = {-0.005f, 0};
    gizmo.tip[2] = {0.005f, 0};
    CHECK(AxisAt(gizmo, {10, 0}) == 3);
    gizmo.tip[2] = {0.0049f, 0};
    CHECK(AxisAt(gizmo, {10, 0}) == 0);
}

TEST_CASE("a drag travels 1.25 units for the length of the axis, whatever the pointer does across it") {
    float travel = -1;
    CHECK(GizmoTravel({10, 10}, {60, 10}, 50, 0, travel));
    CHECK(travel == 1.25f);
    CHECK(GizmoTravel({10, 10}, {60, 90}, 50, 0, travel));
    CHECK(travel == 1.25f);
    CHECK(GizmoTravel({10, 10}, {10, 35}, 0, -50, travel));
    CHECK(travel == -0.625f);
    CHECK_FALSE(GizmoTravel({10, 10}, {60, 10}, 0.01f, 0, travel));
    CHECK(travel == -0.625f);
}

TEST_CASE("an axis whose tip is not visible is not drawn") {
    StartPicture(200, 200);
    DrawGizmo(Flat(), std::nullopt);
    CHECK(CountOf(Pixel{0xF59152}) == 0);
    CHECK(PixelAt(50, 50) == Pixel{0});  // on the way to the corner, where its tip would be
}
