#include "render/raster/visible_faces.h"

#include "render/builtin_meshes.h"
#include "render/raster/camera.h"
#include "render/raster/mesh_measures.h"
#include "scene/transform.h"
#include "support/picture.h"
#include "support/plain_renderer.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>
#include <cstring>

constexpr int32_t kWidth = 96, kHeight = 72;
constexpr Rect kViewport{4, 3, 94, 70};

static const std::vector<Mesh>& Meshes() {
    static const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    return meshes;
}

static MeshDraw ViewOf(const CameraPose& camera) {
    return {.eye = camera.position,
            .light{0, 1, 0},
            .viewProjection =
                MultiplyMatrix(ProjectionMatrix(Width(kViewport), Height(kViewport)), ViewMatrix(camera))};
}

static void StartAt(float depth) {
    StartPicture(kWidth, kHeight);
    frameBuffer.viewport = kViewport;
    std::ranges::fill(frameBuffer.depth, depth);
    DepthChanged(kViewport, frameBuffer);
}

// A mesh of thin and small faces among ordinary ones.
static Mesh AnyMesh(RandomSource& random) {
    if (random.OneIn(2)) return Meshes()[static_cast<size_t>(random.IntBetween(kSphereMesh, kCylinderMesh))];
    Mesh mesh;
    for (int32_t i = random.IntBetween(40, 70); i > 0; --i) {
        const auto first = static_cast<int32_t>(mesh.vertices.size());
        const Vec3 at{random.Between(-1, 1), random.Between(-1, 1), random.Between(-1, 1)};
        const float size = random.OneIn(3) ? 0.02f : 0.4f, thin = random.OneIn(2) ? 1e-4f : 1.0f;
        for (int corner = 0; corner < 3; ++corner) {
            const Vec3 off{random.Between(-size, size), random.Between(-size, size) * thin,
                           random.Between(-size, size)};
            mesh.vertices.push_back({at + off, Pixel{random.Bits() & 0xFFFFFF}});
        }
        mesh.triangles.push_back({first, first + 1, first + 2});
    }
    MeasureMesh(mesh);
    return mesh;
}

static MeshDraw AnyView(RandomSource& random) {
    const CameraPose camera{{random.Between(-3, 3), random.Between(-3, 3), random.Between(-6, 1)},
                            random.Between(-0.3f, 0.3f),
                            random.Between(-0.3f, 0.3f)};
    MeshDraw draw = ViewOf(camera);
    const float size = random.OneIn(3) ? random.Between(0.05f, 0.3f) : random.Between(0.3f, 3);
    draw.world = LocalMatrix({random.Between(-4, 4), random.Between(-4, 4), random.Between(3, 40)},
                             {random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 3)},
                             {size, size * random.Between(0.5f, 1.5f), random.OneIn(5) ? -size : size});
    return draw;
}

// The least depth that the plain renderer draws of a mesh over an empty picture.
static float LeastDepthDrawn(const Mesh& mesh, const MeshDraw& draw) {
    StartAt(kFarDepth);
    DrawMeshPlainly(mesh, draw);
    return *std::ranges::min_element(frameBuffer.depth);
}

TEST_CASE("a mesh behind what was drawn gives the plain renderer's picture, however close behind it is") {
    constexpr uint32_t kSeed = 271;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    int32_t shown = 0;
    for (int round = 0; round < 1500; ++round) {
        CAPTURE(round);
        const Mesh mesh = AnyMesh(random);
        const MeshDraw draw = AnyView(random);
        const float least = LeastDepthDrawn(mesh, draw);
        if (least >= kFarDepth) continue;
        ++shown;
        // Before all of it, and between its nearest pixels.
        const float before = least * (1 - std::pow(10.0f, random.Between(-7, -2)));
        for (float depth :
             {before, least, std::nextafter(least, 2.0f), least * (1 + random.Between(0, 1e-4f))}) {
            StartAt(depth);
            DrawMeshPlainly(mesh, draw);
            const std::vector<Pixel> pixels = headless.pixels;
            const PixelValues<float> depths = frameBuffer.depth;
            for (SimdLevel level : TestedLevels()) {
                CAPTURE(NameOf(level));
                StartAt(depth);
                frameBuffer.simd = level;
                DrawMesh(mesh, draw, frameBuffer);
                REQUIRE(headless.pixels == pixels);
                REQUIRE(std::memcmp(frameBuffer.depth.data(), depths.data(), depths.size() * sizeof(float)) ==
                        0);
            }
        }
    }
    CHECK(shown > 800);
}

// How many faces of a sphere at this distance are looked at, behind this depth.
static size_t FrontsOfSphere(float distance, float farthest) {
    const Mesh& sphere = Meshes()[kSphereMesh];
    MeshDraw draw = ViewOf({{0, 0, 0}, 0, 0});
    draw.world = LocalMatrix({0.3f, 0.2f, distance}, {0.3f, 0.5f, 0}, {1, 1, 1});
    const MeshPlace place = PlaceMesh(sphere, {draw.world, draw.viewProjection, kViewport});
    REQUIRE(place.isBounded);
    EyeInObject eye = FindEye(sphere, draw.world, draw.eye);
    eye.hiddenFrom = HiddenHeight(sphere, place, eye, kViewport, farthest);
    std::vector<uint32_t> fronts;
    return FindFrontFaces(sphere, eye, BestSimdLevel(), fronts);
}

TEST_CASE("hardly a face of a sphere well behind a wall is looked at, but all front faces of one in front") {
    const auto depthAt = [](float distance) { return 1.001001f - 0.1001001f / distance; };
    CHECK(FrontsOfSphere(20, depthAt(5)) <= 12);
    CHECK(FrontsOfSphere(20, depthAt(15)) <= 40);
    CHECK(FrontsOfSphere(20, depthAt(21)) > 150);
    CHECK(FrontsOfSphere(20, kFarDepth) > 150);
}

TEST_CASE("no corner leaves the place of its mesh: its pixels, its depths and the width of its faces") {
    constexpr uint32_t kSeed = 31;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    int32_t bounded = 0;
    for (int round = 0; round < 3000; ++round) {
        CAPTURE(round);
        const Mesh mesh = AnyMesh(random);
        const MeshDraw draw = AnyView(random);
        const VertexTransform transform{draw.world, draw.viewProjection, kViewport};
        const MeshPlace place = PlaceMesh(mesh, transform);
        if (!place.isBounded) continue;
        ++bounded;
        const Matrix4 toClip = MultiplyMatrix(draw.viewProjection, draw.world);
        MeshVertices vertices;
        TransformVertices(mesh.vertices, transform, BestSimdLevel(), vertices);
        for (size_t i = 0; i < mesh.vertices.size(); ++i) {
            const ScreenCorner& corner = vertices.corners[i];
            REQUIRE(corner.depth >= place.nearest);
            const float w = TransformToClip(toClip, mesh.vertices[i].position).w;
            REQUIRE(w >= place.leastW);
            REQUIRE(w <= place.mostW);
            const auto x = static_cast<int32_t>(std::floor(corner.x)),
                       y = static_cast<int32_t>(std::floor(corner.y));
            if (Contains(kViewport, {x, y})) REQUIRE(Contains(place.pixels, {x, y}));
        }
        for (const MeshTriangle& triangle : mesh.triangles) {
            for (size_t c = 0; c < 3; ++c) {
                const ScreenCorner &a = vertices.corners[triangle[c]],
                                   &b = vertices.corners[triangle[(c + 1) % 3]];
                REQUIRE(std::max(std::abs(a.x - b.x), std::abs(a.y - b.y)) <= place.edge + 2 * place.moved);
            }
        }
    }
    CHECK(bounded > 1500);
}
