#include "render/raster/mesh_bounds.h"

#include "render/builtin_meshes.h"
#include "render/raster/camera.h"
#include "render/raster/mesh_measures.h"
#include "scene/transform.h"
#include "support/picture.h"
#include "support/plain_renderer.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>
#include <limits>

constexpr int32_t kWidth = 64, kHeight = 40;

static Matrix4 RandomWorld(RandomSource& random) {
    const float reach = random.OneIn(4) ? 4000.0f : random.OneIn(2) ? 30.0f : 4.0f;
    const float size = random.OneIn(4) ? 50.0f : 1.0f;
    return LocalMatrix(
        {random.Between(-reach, reach), random.Between(-reach, reach), random.Between(-reach, reach)},
        {random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 3)},
        {random.Between(-size, size), random.Between(0, size), random.Between(0, size)});
}

TEST_CASE("a mesh that lies beside the view shows no pixel") {
    constexpr uint32_t kSeed = 5150;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    StartPicture(kWidth, kHeight);
    frameBuffer.viewport = {5, 3, 60, 39};
    int32_t beside = 0, outside = 0, shown = 0;
    for (int round = 0; round < 6000; ++round) {
        const CameraPose camera{{random.Between(-3, 3), random.Between(-3, 3), random.Between(-6, 1)},
                                random.Between(-3, 3),
                                random.Between(-1, 1)};
        MeshDraw draw{.eye = camera.position, .light{0, 1, 0}};
        draw.viewProjection = MultiplyMatrix(ProjectionMatrix(55, 36), ViewMatrix(camera));
        draw.world = RandomWorld(random);
        const Mesh& mesh = meshes[static_cast<size_t>(random.IntBetween(0, kBuiltinMeshCount - 1))];
        DrawMeshPlainly(mesh, draw);
        const bool isShown = std::ranges::any_of(frameBuffer.depth, [](float depth) { return depth < 1; });
        const MeshPlace place = PlaceMesh(mesh, {draw.world, draw.viewProjection, frameBuffer.viewport});
        const Frustum frustum = FrustumOf(draw.viewProjection, frameBuffer.viewport);
        const bool isOutside = IsInvisible(mesh, draw.world, frustum);
        CAPTURE(round);
        REQUIRE(!(isShown && (place.isBeside || isOutside)));
        beside += place.isBeside;
        outside += isOutside;
        shown += isShown;
        if (isShown) std::fill(frameBuffer.depth.begin(), frameBuffer.depth.end(), kFarDepth);
    }
    CHECK(beside > 2'000);
    CHECK(outside > 1'500);
    CHECK(shown > 500);
}

TEST_CASE("a mesh behind the eye or far to a side is beside the view, one ahead is not") {
    const Mesh cube = BuildBuiltinMeshes()[kCubeMesh];
    const Matrix4 projection = ProjectionMatrix(100, 100);
    constexpr Rect kViewport{0, 0, 100, 100};
    const Frustum frustum = FrustumOf(projection, kViewport);
    constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
    struct {
        Vec3 place;
        bool isBeside;
    } const cases[] = {{{0, 0, 5}, false}, {{4, 0, 5}, false},  // reaches into the viewport
                       {{0, 0, -5}, true}, {{9, 0, 5}, true},  {{-9, 0, 5}, true},
                       {{0, 9, 5}, true},  {{0, -9, 5}, true}, {{kNotANumber, 9, 5}, false}};
    for (const auto& entry : cases) {
        const auto& [place, isBeside] = entry;
        CAPTURE(entry.place);
        const Matrix4 world = LocalMatrix(place, {}, {1, 1, 1});
        CHECK(PlaceMesh(cube, {world, projection, kViewport}).isBeside == isBeside);
        CHECK(IsInvisible(cube, world, frustum) == isBeside);
    }
    CHECK_FALSE(PlaceMesh({}, {{}, projection, kViewport}).isBeside);
}

// A corner of the cube lies sqrt(3) from its centre. How far a matrix stretches is told from the root of the
// sum of its squares, sqrt(3) here, so the sphere has a radius of 3. At a distance of 10 the view with its
// margin ends at 1.25 * tan(35 degrees) * 10 = 8.753; its side leans, so the sphere leaves it farther out by
// 3 * sqrt(1 + 0.8753 * 0.8753) = 3.987: at 12.74.
TEST_CASE("a cube is told to be invisible from the place on where a sphere around it leaves the view") {
    const Mesh cube = BuildBuiltinMeshes()[kCubeMesh];
    const Frustum frustum = FrustumOf(ProjectionMatrix(100, 100), {0, 0, 100, 100});
    const auto isInvisible = [&](Vec3 place) {
        return IsInvisible(cube, LocalMatrix(place, {}, {1, 1, 1}), frustum);
    };
    for (float sign : {-1.0f, 1.0f}) {
        CAPTURE(sign);
        CHECK_FALSE(isInvisible({sign * 12.7f, 0, 10}));
        CHECK(isInvisible({sign * 12.8f, 0, 10}));
        CHECK_FALSE(isInvisible({0, sign * 12.7f, 10}));
        CHECK(isInvisible({0, sign * 12.8f, 10}));
    }
    CHECK_FALSE(isInvisible({0, 0, -2.98f}));
    CHECK(isInvisible({0, 0, -3.02f}));
}

// The centre lies behind the eye, and the far side of the mesh has a w of 90.
TEST_CASE("a huge mesh that reaches before the eye is not invisible where the squares of a plane vanish") {
    Mesh mesh;
    for (const float x : {-1e8f, 0.0f, 1e8f}) mesh.vertices.push_back({{x, x * x * 1e-8f, 1e8f}, Pixel{0}});
    mesh.triangles = {{0, 1, 2}};
    MeasureMesh(mesh);
    const Matrix4 world{{{{1e18f, 0, 0, 0}, {0, 1e18f, 0, 0}, {0, 0, 1e18f, -1e25f}, {0, 0, 0, 1}}}};
    const Matrix4 projection{{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1e-24f, 0}, {0, 0, 1e-24f, 0}}}};
    CHECK_FALSE(IsInvisible(mesh, world, FrustumOf(projection, {0, 0, 100, 100})));
}

TEST_CASE("nothing is told of a mesh that was not measured, nor in a viewport of a few pixels") {
    Mesh cube = BuildBuiltinMeshes()[kCubeMesh];
    const Matrix4 behind = LocalMatrix({0, 0, -9}, {}, {1, 1, 1});
    CHECK(IsInvisible(cube, behind, FrustumOf(ProjectionMatrix(32, 32), {0, 0, 32, 32})));
    CHECK_FALSE(IsInvisible(cube, behind, FrustumOf(ProjectionMatrix(31, 32), {0, 0, 31, 32})));
    CHECK_FALSE(IsInvisible(cube, behind, FrustumOf(ProjectionMatrix(32, 31), {0, 0, 32, 31})));
    cube.measures = {};
    CHECK_FALSE(IsInvisible(cube, behind, FrustumOf(ProjectionMatrix(32, 32), {0, 0, 32, 32})));
}

TEST_CASE(
    "the sizes of clip coordinates are sums without signs, up to the corner of the box farthest from zero") {
    // From (-3, 0, -1) to (1, 4, 5): nowhere farther than 3, 4 and 5 along x, y and z.
    const Mesh mesh{{{{-3, 0, 5}, {}}, {{1, 4, -1}, {}}, {{0, 0, 0}, {}}}, {{0, 1, 2}}};
    Matrix4 viewProjection;
    viewProjection.m = {{{-1, 0.5f, 0, 0}, {0, 2, 0, -1}, {0, 0, 1, -1}, {0, 0, 1, 0}}};
    Matrix4 world = LocalMatrix({}, {}, {1, 1, 1});
    world.m[0][3] = -2;
    world.m[2][3] = 10;
    const MeshPlace place = PlaceMesh(mesh, {world, viewProjection, {0, 0, 100, 100}});
    REQUIRE(!place.isBeside);
    CHECK(place.sizes == Vec4{1 * (3 + 2) + 0.5f * 4, 2 * 4 + 1, (5 + 10) + 1, 5 + 10});
}

TEST_CASE("a mesh of faces too small to be drawn is invisible, one of faces a little larger is not") {
    constexpr uint32_t kSeed = 404;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    StartPicture(kWidth, kHeight);
    int32_t tooSmall = 0, invisible = 0, shown = 0;
    for (int round = 0; round < 4000; ++round) {
        MeshDraw draw{.viewProjection = ProjectionMatrix(kWidth, kHeight)};
        const float distance = random.Between(1, 90);
        const float size = distance * random.Between(1e-6f, random.OneIn(2) ? 2e-4f : 4e-3f);
        // On the centre of a pixel: whatever has an area there is seen.
        const float slope = 2 * std::tan(0.6108653f) / kHeight;
        const Vec3 centre{0.5f * slope * distance, 0.5f * slope * distance, distance};
        draw.world =
            LocalMatrix(centre, {random.Between(-3, 3), random.Between(-3, 3), 0}, {size, size, size});
        const Mesh& mesh = meshes[static_cast<size_t>(random.IntBetween(0, kBuiltinMeshCount - 1))];
        DrawMeshPlainly(mesh, draw);
        const bool isShown = std::ranges::any_of(frameBuffer.depth, [](float depth) { return depth < 1; });
        const MeshPlace place = PlaceMesh(mesh, {draw.world, draw.viewProjection, frameBuffer.viewport});
        const Frustum frustum = FrustumOf(draw.viewProjection, frameBuffer.viewport);
        const bool isInvisible = IsInvisible(mesh, draw.world, frustum);
        CAPTURE(round);
        REQUIRE(!(isShown && (place.isTooSmall || isInvisible)));
        tooSmall += place.isTooSmall;
        invisible += isInvisible;
        shown += isShown;
        if (isShown) std::fill(frameBuffer.depth.begin(), frameBuffer.depth.end(), kFarDepth);
    }
    CHECK(tooSmall > 500);
    CHECK(invisible > 300);
    CHECK(shown > 1000);
}

TEST_CASE("a mesh that is found to miss a pixel does not draw it") {
    constexpr uint32_t kSeed = 8128;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    StartPicture(kWidth, kHeight);
    frameBuffer.viewport = {5, 3, 60, 39};
    int64_t missed = 0, drawn = 0, asked = 0;
    for (int round = 0; round < 1500; ++round) {
        const CameraPose camera{{random.Between(-3, 3), random.Between(-3, 3), random.Between(-6, 1)},
                                random.Between(-1, 1),
                                random.Between(-1, 1)};
        MeshDraw draw{.eye = camera.position, .light{0, 1, 0}};
        draw.viewProjection = MultiplyMatrix(ProjectionMatrix(55, 36), ViewMatrix(camera));
        const float size = random.OneIn(3) ? 4.0f : 0.6f;
        draw.world = LocalMatrix({random.Between(-9, 9), random.Between(-9, 9), random.Between(-9, 20)},
                                 {random.Between(-3, 3), random.Between(-3, 3), 0},
                                 {size, random.Between(-2, 2), size});
        const Mesh& mesh = meshes[static_cast<size_t>(random.IntBetween(0, kBuiltinMeshCount - 1))];
        std::fill(frameBuffer.depth.begin(), frameBuffer.depth.end(), kFarDepth);
        DrawMeshPlainly(mesh, draw);
        for (Point p{5, 3}; p.y < 39; p.y += 3) {
            for (p.x = 5; p.x < 60; p.x += 2) {
                const bool isDrawn = frameBuffer.depth[static_cast<size_t>(p.y * kWidth + p.x)] < kFarDepth;
                const PixelPlanes around = PlanesAround(p, frameBuffer.viewport, draw.viewProjection);
                const bool isMissed = MissesPixel(mesh, draw.world, around);
                CAPTURE(round);
                REQUIRE(!(isDrawn && isMissed));
                ++asked;
                missed += isMissed;
                drawn += isDrawn;
            }
        }
    }
    CHECK(missed > asked / 2);
    CHECK(drawn > 10'000);
}
