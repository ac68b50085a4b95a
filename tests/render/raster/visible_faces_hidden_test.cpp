#include "render/raster/visible_faces.h"

#include "render/builtin_meshes.h"
#include "render/raster/camera.h"
#include "render/raster/kernels.h"
#include "render/raster/mesh_measures.h"
#include "render/raster/placed_mesh.h"
#include "scene/transform.h"
#include "support/capture.h"
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

// Where a mesh would be whose clip x, y and w are 2, 3 and 5 times x, y and z, with edges of 10 pixels.
static MeshPlace PlaceAt(float nearest) {
    MeshPlace place{.isBounded = true, .nearest = nearest, .leastW = 1, .mostW = 2, .edge = 10};
    place.toClip.m = {{{2, 0, 0, 0}, {0, 3, 0, 0}, {0, 0, 1, 0}, {0, 0, 5, 0}}};
    return place;
}

TEST_CASE(
    "a face counts as hidden from the area on at which no pixel of it can be nearer than what is there") {
    constexpr double kEdge = 10, kUnit = 0x1p-24;
    const struct {
        float nearest, farthest;
    } cases[] = {{0.5f, 0.25f},  {0.75f, 0.375f}, {0.99f, 0.98f},
                 {0.3f, 0.001f}, {0.2f, 0.1999f}, {1, 0.9998f}};
    for (const auto& [nearest, farthest] : cases) {
        CAPTURE(nearest);
        CAPTURE(farthest);
        const auto height = static_cast<double>(
            HiddenHeight({}, PlaceAt(nearest), {.isUsable = true}, {0, 0, 200, 100}, farthest));
        // The determinant of x, y and w is 30; a unit of clip space is 100 by 50 pixels; w is at most 2.
        const double area = 30 * height * (100 * 50) / (2 * 2 * 2) - 8 * kUnit * kEdge * kEdge;
        const auto leastDepth = [n = nearest](double ofArea) {
            const double share = kDepthRounding * (kEdge + kBoxMargin) * kEdge / ofArea + kSumRounding;
            return n * (1 - share);
        };
        CHECK(leastDepth(area) > farthest);
        CHECK(leastDepth(area * 0.98) < farthest);
    }
    CHECK(HiddenHeight({}, PlaceAt(0.5f), {.isUsable = true}, kViewport, 0.5f) > 1e30f);
}

TEST_CASE(
    "a face must be hidden by more where the matrix sees from beside the eye, or may do so by rounding") {
    Mesh mesh;
    mesh.measures.longestEdge = 2;  // so that normals may be 4 long
    const auto heightFrom = [&mesh](const Matrix4& toClip, const Vec4& sizes, Vec3 eye) {
        MeshPlace place = PlaceAt(0.5f);
        place.toClip = toClip;
        place.sizes = sizes;
        return HiddenHeight(mesh, place, {.position = eye, .isUsable = true}, {0, 0, 200, 100}, 0.25f);
    };
    const Matrix4 plain = PlaceAt(0.5f).toClip;
    CHECK(heightFrom(plain, {}, {}) < 1e-6f);

    constexpr float kLarge = 0x1p19f;  // of which rounding may take 32 * 2^-24: 1
    const struct {
        const char* what;
        Vec4 added;  // to clip x, y, z and w
        Vec4 sizes;
        Vec3 eye;
        float away;  // in world units, as 2, 3 and 5 clip units are one
    } cases[] = {
        {"x beside the eye", {1, 0, 0, 0}, {}, {}, 0.5f},
        {"y beside the eye", {0, -3, 0, 0}, {}, {}, 1},
        {"w beside the eye", {0, 0, 0, 10}, {}, {}, 2},
        {"z says nothing of the eye", {0, 0, 9, 0}, {0, 0, kLarge, 0}, {}, 0},
        {"x of large sums", {}, {2 * kLarge, 0, 0, 0}, {}, 1},
        {"y of large sums", {}, {0, 3 * kLarge, 0, 0}, {}, 1},
        {"w of large sums", {}, {0, 0, 0, 5 * kLarge}, {}, 1},
        {"an eye far along x", {-2 * kLarge, 0, 0, 0}, {}, {kLarge, 0, 0}, 3},
        {"an eye far along y", {0, 3 * kLarge, 0, 0}, {}, {0, -kLarge, 0}, 3},
        {"an eye far along z", {0, 0, 0, -5 * kLarge}, {}, {0, 0, kLarge}, 3},
    };
    for (const auto& [what, added, sizes, eye, away] : cases) {
        CAPTURE(what);
        Matrix4 toClip = plain;
        toClip.m[0][3] = added.x;
        toClip.m[1][3] = added.y;
        toClip.m[2][3] = added.z;
        toClip.m[3][3] = added.w;
        const float height = heightFrom(toClip, sizes, eye);
        CHECK(height >= 4 * away);
        CHECK(height < 4 * away * 1.002f + 1e-6f);
    }
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
