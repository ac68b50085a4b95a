#include "render/raster/clip_triangle.h"

#include "doctest/doctest.h"

#include <limits>

static ClipVertex At(float x, float z, Pixel color = Pixel{0}, float u = 0, float v = 0) {
    return {{x, 0, z, z + 1}, u, v, color};
}

TEST_CASE("a triangle beyond the near plane stays as it is, first vertex first") {
    const std::array<ClipVertex, 3> triangle{At(0, 1, Pixel{0x112233}, 0.25f), At(1, 2), At(2, 0)};
    const ClippedPolygon polygon = ClipTriangle(triangle);
    REQUIRE(polygon.count == 3);
    for (size_t i = 0; i < 3; ++i) CHECK(polygon.vertices[i] == triangle[i]);
}

TEST_CASE("a triangle before the near plane is clipped away entirely") {
    CHECK(ClipTriangle({At(0, -1), At(1, -2), At(2, -0.001f)}).count == 0);
}

TEST_CASE("one corner before the near plane leaves a quadrilateral in the order of the edges") {
    // v0 lies before the plane: the polygon begins where the edge v0-v1 crosses.
    const ClippedPolygon polygon = ClipTriangle({At(0, -1), At(4, 1), At(8, 3)});
    REQUIRE(polygon.count == 4);
    CHECK(polygon.vertices[0].position == Vec4{2, 0, 0, 1});
    CHECK(polygon.vertices[1].position == Vec4{4, 0, 1, 2});
    CHECK(polygon.vertices[2].position == Vec4{8, 0, 3, 4});
    CHECK(polygon.vertices[3].position == Vec4{2, 0, 0, 1});  // from v2 at (8, 3) to v0 at (0, -1): t = 3/4
}

TEST_CASE("two corners before the near plane leave a triangle") {
    const ClippedPolygon polygon = ClipTriangle({At(0, 1), At(2, -1), At(8, -3)});
    REQUIRE(polygon.count == 3);
    CHECK(polygon.vertices[0].position == Vec4{0, 0, 1, 2});
    CHECK(polygon.vertices[1].position == Vec4{1, 0, 0, 1});
    CHECK(polygon.vertices[2].position == Vec4{2, 0, 0, 1});
}

TEST_CASE("a corner on the near plane counts as beyond it") {
    CHECK(ClipTriangle({At(0, 0), At(1, 0), At(2, 0)}).count == 3);
    CHECK(ClipTriangle({At(0, 0), At(1, -1), At(2, -1)}).count >= 1);
}

TEST_CASE("a crossing takes texture coordinates and each colour channel in proportion, truncated") {
    // Half way: 0xFF and 0x00 give 127.5, truncated; 0x10 and 0x20 give 0x18; 3 and 0 give 1.5, truncated.
    const ClippedPolygon polygon = ClipTriangle(
        {At(0, 1, Pixel{0xFF1003}, 0, 2), At(0, -1, Pixel{0x002000}, 1, 4), At(0, 1, Pixel{0xFF1003}, 0, 2)});
    REQUIRE(polygon.count == 4);
    CHECK(polygon.vertices[1].color == Pixel{0x7F1801});
    CHECK(polygon.vertices[1].u == 0.5f);
    CHECK(polygon.vertices[1].v == 3);
}

TEST_CASE("an edge that barely crosses takes its first end") {
    const ClippedPolygon polygon = ClipTriangle({At(3, 4e-7f), At(5, -4e-7f), At(7, 1)});
    REQUIRE(polygon.count == 4);
    CHECK(polygon.vertices[1].position.x == 3);
}

TEST_CASE("an edge that rises by more than 0.000001 is cut where it meets the plane") {
    const ClippedPolygon polygon = ClipTriangle({At(3, 5.5e-7f), At(5, -5.5e-7f), At(7, 1)});
    REQUIRE(polygon.count == 4);
    CHECK(polygon.vertices[1].position.x == 4);  // half way
}

TEST_CASE("coordinates that are not a number leave nothing that could be filled by accident") {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const ClippedPolygon polygon = ClipTriangle({At(0, nan), At(1, nan), At(2, nan)});
    CHECK(polygon.count == 0);
    CHECK(ClipTriangle({At(0, nan), At(1, 1), At(2, 1)}).count <= 4);
}
