#include "render/raster/placed_mesh.h"

#include "render/raster/camera.h"
#include "scene/transform.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <bit>
#include <cmath>
#include <limits>

// Bit for bit, but one not-a-number is as good as another.
static bool SameNumber(float a, float b) {
    return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b) || (std::isnan(a) && std::isnan(b));
}

static float AnyNumber(RandomSource& random) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kUnusual[] = {0.0f,   -0.0f,     3e38f,      -3e38f,
                                  1e-40f, kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN()};
    return random.OneIn(12) ? kUnusual[random.IntBetween(0, 7)] : random.Between(-4, 4);
}

static void CheckSame(const MeshVertices& a, const MeshVertices& b, size_t i) {
    CAPTURE(i);
    REQUIRE(a.visible[i] == b.visible[i]);
    REQUIRE(a.beyondNearPlane[i] == b.beyondNearPlane[i]);
    REQUIRE(SameNumber(a.PlainCorners()[i].x, b.PlainCorners()[i].x));
    REQUIRE(SameNumber(a.PlainCorners()[i].depth, b.PlainCorners()[i].depth));
    if (a.visible[i] == 0) return;
    REQUIRE(SameNumber(a.corners[i].x, b.corners[i].x));
    REQUIRE(SameNumber(a.corners[i].y, b.corners[i].y));
    REQUIRE(SameNumber(a.corners[i].depth, b.corners[i].depth));
    REQUIRE(SameNumber(a.corners[i].inverseW, b.corners[i].inverseW));
}

static void CheckSameExtent(const MeshVertices& a, const MeshVertices& b) {
    const VertexExtent &p = a.extent, &q = b.extent;
    REQUIRE(p.arePlain == q.arePlain);
    if (!p.arePlain || a.corners.empty()) return;
    REQUIRE((p.left == q.left && p.top == q.top && p.right == q.right && p.bottom == q.bottom));
}

TEST_CASE("every level transforms vertices to the same bits, whatever their number and values") {
    constexpr uint32_t kSeed = 411;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    int32_t seen = 0;
    for (int round = 0; round < 3000; ++round) {
        Mesh mesh;
        for (int32_t i = random.IntBetween(0, 40); i > 0; --i)
            mesh.vertices.push_back({{AnyNumber(random), AnyNumber(random), AnyNumber(random)}, Pixel{}});
        const CameraPose camera{{random.Between(-3, 3), random.Between(-3, 3), random.Between(-6, 1)},
                                random.Between(-0.7f, 0.7f),
                                random.Between(-0.7f, 0.7f)};
        const VertexTransform transform{
            LocalMatrix({random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 4)},
                        {random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 3)},
                        {random.OneIn(9) ? AnyNumber(random) : 1.0f, 1, random.Between(-2, 2)}),
            MultiplyMatrix(ProjectionMatrix(97, 53), ViewMatrix(camera)),
            {random.IntBetween(0, 9), random.IntBetween(0, 9), random.IntBetween(9, 97),
             random.IntBetween(9, 53)}};
        MeshVertices plain, fast;
        TransformVertices(mesh.vertices, transform, SimdLevel::OneLane, plain);
        CAPTURE(round);
        for (SimdLevel level : TestedLevels()) {
            TransformVertices(mesh.vertices, transform, level, fast);
            CheckSameExtent(plain, fast);
            for (size_t i = 0; i < mesh.vertices.size(); ++i) {
                CheckSame(plain, fast, i);
                seen += plain.visible[i];
            }
        }
    }
    CHECK(seen > 10'000);
}

TEST_CASE("a vertex between the eye and the near plane is not plain") {
    const Mesh mesh{{{{0, 0, 0.09995f}, {}}, {{0, 0, 5}, {}}, {{0, 0, -5}, {}}}, {}};
    MeshVertices vertices;
    TransformVertices(mesh.vertices, {{}, ProjectionMatrix(10, 10), {0, 0, 10, 10}}, SimdLevel::OneLane,
                      vertices);
    CHECK(vertices.visible[0] == 1);  // within the slack of the depth range
    CHECK(vertices.beyondNearPlane[0] == 0);
    CHECK(std::isnan(vertices.PlainCorners()[0].x));
    CHECK(vertices.PlainCorners()[1].x == 5);
    CHECK(vertices.visible[2] == 0);
    CHECK(std::isnan(vertices.PlainCorners()[2].x));
}

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

TEST_CASE("coordinates that are not numbers leave nothing that could be filled by accident") {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const ClippedPolygon polygon = ClipTriangle({At(0, nan), At(1, nan), At(2, nan)});
    CHECK(polygon.count == 0);
    CHECK(ClipTriangle({At(0, nan), At(1, 1), At(2, 1)}).count <= 4);
}
