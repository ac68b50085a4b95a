#include "render/raster/mesh_vertices.h"

#include "render/camera.h"
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

TEST_CASE("every level transforms vertices to the same bits, whatever their numbers") {
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

TEST_CASE("a vertex between the eye and the near plane has no place") {
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
