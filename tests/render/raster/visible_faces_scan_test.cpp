#include "render/raster/visible_faces.h"

#include "render/builtin_meshes.h"
#include "render/raster/fill_triangle.h"
#include "render/raster/mesh_measures.h"
#include "render/raster/placed_mesh.h"
#include "support/picture.h"
#include "support/plain_renderer.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>

constexpr int32_t kWidth = 24, kHeight = 18;
constexpr Rect kViewport{3, 2, 22, 17};

// Takes x and y as pixels of the viewport's buffer, from straight ahead.
static MeshDraw OntoPixels() {
    const auto width = static_cast<float>(Width(kViewport)), height = static_cast<float>(Height(kViewport));
    const auto left = static_cast<float>(kViewport.left), top = static_cast<float>(kViewport.top);
    MeshDraw draw{.eye{12, 9, -500}, .light{0, 0, -1}};
    draw.viewProjection = {{{{2 / width, 0, 0, -1 - 2 * left / width},
                             {0, -2 / height, 0, 1 + 2 * top / height},
                             {0, 0, 0.001f, 0.5f},
                             {0, 0, 0, 1}}}};
    return draw;
}

static std::vector<ScannedFace> Scanned(const Mesh& mesh, const MeshDraw& draw, SimdLevel level,
                                        float farthest = kFarDepth) {
    MeshVertices vertices;
    MeshScratch lists;
    TransformVertices(mesh.vertices, {draw.world, draw.viewProjection, kViewport}, level, vertices);
    const size_t fronts = FindFrontFaces(mesh, FindEye(mesh, draw.world, draw.eye), level, lists.fronts);
    const std::span<const ScannedFace> faces =
        ScanFaces(mesh.triangles.data(), vertices, kViewport, farthest, level, fronts, lists);
    return {faces.begin(), faces.end()};
}

// Where a corner of a triangle may be: anywhere near the viewport, on pixel centres and borders, or a hair
// off them.
static float Coordinate(RandomSource& random, float from, float size) {
    float at = from + random.Between(-size, size);
    if (random.OneIn(3)) at = std::floor(at * 2) / 2;
    if (random.OneIn(3)) at += random.Between(-1, 1) * (random.OneIn(2) ? 1e-3f : 1e-5f);
    return at;
}

// Three corners next to a line through the centres of pixels, so that centres off its ends are nearly inside.
static void PlaceAlongCentres(RandomSource& random, Vec3 (&p)[3]) {
    const auto x = static_cast<float>(random.IntBetween(3, 21)),
               y = static_cast<float>(random.IntBetween(2, 16));
    const auto acrossX = static_cast<float>(random.IntBetween(-2, 2)),
               acrossY = static_cast<float>(random.IntBetween(-2, 2));
    const float reach = random.OneIn(2) ? 1.5f : 12.0f, noise = random.OneIn(2) ? 1e-4f : 1e-5f;
    for (Vec3& corner : p) {
        const float t = random.Between(-reach, reach);
        corner = {x + 0.5f + t * acrossX + random.Between(-noise, noise),
                  y + 0.5f + t * acrossY + random.Between(-noise, noise), 0};
    }
}

// Small and large triangles, and slivers.
static void AddTriangle(RandomSource& random, Mesh& mesh) {
    const float size = random.OneIn(2) ? 0.4f : random.OneIn(2) ? 2.0f : random.OneIn(2) ? 30.0f : 3000.0f;
    const float x = random.Between(-3, 27), y = random.Between(-3, 21);
    const auto first = static_cast<int32_t>(mesh.vertices.size());
    Vec3 p[3];
    for (Vec3& corner : p)
        corner = {Coordinate(random, x, size), Coordinate(random, y, size), random.Between(-9, 9)};
    if (random.OneIn(2)) PlaceAlongCentres(random, p);
    for (const Vec3& corner : p) mesh.vertices.push_back({corner, Pixel{0xFFFFFF}});
    mesh.triangles.push_back({first, first + 1, first + 2});
}

// The pixels that the plain renderer draws of one triangle. Empty if it draws nothing.
static Rect DrawnBox(const Mesh& mesh, size_t triangle, const MeshDraw& draw) {
    std::fill(frameBuffer.depth.begin(), frameBuffer.depth.end(), kFarDepth);
    DrawMeshPlainly({mesh.vertices, {mesh.triangles[triangle]}}, draw);
    Rect box{kWidth, kHeight, 0, 0};
    for (int32_t y = 0; y < kHeight; ++y) {
        for (int32_t x = 0; x < kWidth; ++x) {
            if (DepthAt(x, y) == kFarDepth) continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    }
    return box;
}

TEST_CASE("a face that the scan leaves out has no visible pixel, and others have none outside their boxes") {
    constexpr uint32_t kSeed = 90210;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    StartPicture(kWidth, kHeight);
    frameBuffer.viewport = kViewport;
    int32_t leftOut = 0, drawn = 0;
    for (int round = 0; round < 1500; ++round) {
        Mesh mesh;
        for (int i = 0; i < 20; ++i) AddTriangle(random, mesh);
        if (random.OneIn(2)) MeasureMesh(mesh);
        MeshDraw draw = OntoPixels();
        if (random.OneIn(2))
            draw.eye = {random.Between(-5, 30), random.Between(-5, 30), random.Between(-9, 9)};
        std::vector<Rect> shown;
        for (size_t i = 0; i < mesh.triangles.size(); ++i) shown.push_back(DrawnBox(mesh, i, draw));
        for (SimdLevel level : TestedLevels()) {
            CAPTURE(round);
            std::vector<Rect> allowed(mesh.triangles.size(), Rect{kWidth, kHeight, 0, 0});
            for (const ScannedFace& face : Scanned(mesh, draw, level)) allowed[face.triangle] = face.box;
            for (size_t i = 0; i < allowed.size(); ++i) {
                CAPTURE(i);
                const Rect& box = shown[i];
                leftOut += Width(allowed[i]) < 0;
                if (Width(box) < 0) continue;
                ++drawn;
                REQUIRE((box.left >= allowed[i].left && box.right <= allowed[i].right));
                REQUIRE((box.top >= allowed[i].top && box.bottom <= allowed[i].bottom));
            }
        }
    }
    CHECK(leftOut > 20'000);
    CHECK(drawn > 3'000);
}

// The least depth that the plain renderer draws of a mesh with one triangle. Far if it draws nothing.
static float LeastDepthDrawn(const Mesh& mesh, const MeshDraw& draw) {
    DrawnBox(mesh, 0, draw);
    return *std::ranges::min_element(frameBuffer.depth);
}

TEST_CASE("a face is left out as hidden only if every pixel that it would draw lies behind") {
    constexpr uint32_t kSeed = 1618;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    StartPicture(kWidth, kHeight);
    frameBuffer.viewport = kViewport;
    int32_t drawn = 0, hidden = 0;
    for (int round = 0; round < 20'000; ++round) {
        Mesh mesh;
        AddTriangle(random, mesh);
        for (MeshVertex& vertex : mesh.vertices) vertex.position.z = random.Between(300, 302);
        const MeshDraw draw = OntoPixels();
        const float least = LeastDepthDrawn(mesh, draw);
        if (least >= kFarDepth) continue;
        ++drawn;
        for (SimdLevel level : TestedLevels()) {
            CAPTURE(round);
            REQUIRE(Scanned(mesh, draw, level, least).size() == 1);
            REQUIRE(Scanned(mesh, draw, level, least * (1 + random.Between(0, 1e-6f))).size() == 1);
            hidden += Scanned(mesh, draw, level, least * 0.99f).empty();
        }
    }
    CHECK(drawn > 1'000);
    CHECK(hidden > 2'000);
}

TEST_CASE("a face that is not thin is left out if it lies a hundred thousandth of its depth behind") {
    const Mesh mesh{{{{-50, -50, 300}, {}}, {{-50, 200, 300}, {}}, {{200, -50, 300}, {}}}, {{0, 1, 2}}};
    const MeshDraw draw = OntoPixels();
    const float depth = TransformToClip(draw.viewProjection, mesh.vertices[0].position).z;
    for (SimdLevel level : TestedLevels()) {
        CHECK(Scanned(mesh, draw, level, depth * (1 - 1e-5f)).empty());
        CHECK(Scanned(mesh, draw, level, depth).size() == 1);
    }
}

TEST_CASE(
    "a face at the least depths that there are may lie before all its corners, and is not left out then") {
    RandomSource random(45);
    StartPicture(kWidth, kHeight);
    frameBuffer.viewport = kViewport;
    MeshDraw draw = OntoPixels();
    draw.viewProjection.m[2] = {0, 0, 0x1p-149f, 0};
    int32_t before = 0;
    for (int round = 0; round < 4000; ++round) {
        Mesh mesh;
        AddTriangle(random, mesh);
        int32_t nearest = 3;
        for (MeshVertex& vertex : mesh.vertices) {
            const int32_t depth = random.IntBetween(1, 3);
            vertex.position.z = static_cast<float>(depth);
            nearest = std::min(nearest, depth);
        }
        const float least = LeastDepthDrawn(mesh, draw);
        before += least < static_cast<float>(nearest) * 0x1p-149f;
        if (least >= kFarDepth) continue;
        for (SimdLevel level : TestedLevels()) {
            CAPTURE(round);
            REQUIRE(Scanned(mesh, draw, level, least).size() == 1);
        }
    }
    CHECK(before > 50);
}

// True when the triangle covers the centre of a pixel of the box.
static bool CoversAnyOf(const Rect& box, const Mesh& mesh, uint32_t triangle, const MeshDraw& draw) {
    std::array<ScreenCorner, 3> corners;
    for (size_t c = 0; c < 3; ++c) {
        const auto vertex = static_cast<size_t>(mesh.triangles[triangle][c]);
        const Vec4 clip = TransformToClip(draw.viewProjection, mesh.vertices[vertex].position);
        if (!ProjectToViewport(clip, kViewport, corners[c])) return false;
    }
    bool covers = false;
    for (int32_t y = box.top; y < box.bottom; ++y) {
        for (int32_t x = box.left; x < box.right; ++x) {
            float depth = kFarDepth;
            covers = CoversPixel(corners, {x, y}, depth) || covers;
        }
    }
    return covers;
}

TEST_CASE(
    "a face of at most two columns and two rows is left in only where it covers the centre of a pixel") {
    RandomSource random(2718);
    int32_t leftIn = 0;
    for (int round = 0; round < 5000; ++round) {
        Mesh mesh;
        for (int i = 0; i < 20; ++i) AddTriangle(random, mesh);
        const MeshDraw draw = OntoPixels();
        for (SimdLevel level : TestedLevels()) {
            for (const ScannedFace& face : Scanned(mesh, draw, level)) {
                if (Width(face.box) > 2 || Height(face.box) > 2) continue;
                ++leftIn;
                CAPTURE(round);
                CAPTURE(face.triangle);
                REQUIRE(CoversAnyOf(face.box, mesh, face.triangle, draw));
            }
        }
    }
    CHECK(leftIn > 5'000);
}

TEST_CASE("every level leaves out the same faces and finds the same boxes") {
    RandomSource random(8);
    for (int round = 0; round < 2000; ++round) {
        Mesh mesh;
        for (int32_t i = random.IntBetween(0, 30); i > 0; --i) AddTriangle(random, mesh);
        for (MeshVertex& vertex : mesh.vertices) {
            if (random.OneIn(30)) vertex.position.z = -600;  // before the near plane
            if (random.OneIn(60)) vertex.position.x = std::nanf("");
        }
        if (random.OneIn(2)) MeasureMesh(mesh);
        const MeshDraw draw = OntoPixels();
        const float farthest = random.OneIn(2) ? kFarDepth : random.Between(0.49f, 0.51f);
        const std::vector<ScannedFace> plain = Scanned(mesh, draw, SimdLevel::OneLane, farthest);
        for (SimdLevel level : TestedLevels()) {
            const std::vector<ScannedFace> fast = Scanned(mesh, draw, level, farthest);
            CAPTURE(round);
            REQUIRE(plain.size() == fast.size());
            for (size_t i = 0; i < plain.size(); ++i) {
                REQUIRE(plain[i].triangle == fast[i].triangle);
                const MeshTriangle& corners = mesh.triangles[plain[i].triangle];
                const bool isWhole = std::ranges::all_of(corners, [&mesh](int32_t corner) {
                    const Vec3& p = mesh.vertices[static_cast<size_t>(corner)].position;
                    return p.z > -600 && !std::isnan(p.x);
                });
                if (!isWhole) continue;
                REQUIRE(plain[i].box == fast[i].box);
                REQUIRE(plain[i].nearest == fast[i].nearest);
            }
        }
    }
}

TEST_CASE("half of a sphere's faces turn away, and few faces of a distant sphere are visible") {
    const Mesh sphere = BuildBuiltinMeshes()[kSphereMesh];
    for (SimdLevel level : TestedLevels()) {
        MeshDraw draw = OntoPixels();
        draw.world = {{{{7, 0, 0, 12}, {0, 7, 0, 9}, {0, 0, 7, 0}, {0, 0, 0, 1}}}};
        const size_t large = Scanned(sphere, draw, level).size();
        CHECK(large < sphere.triangles.size() / 2);
        CHECK(large > sphere.triangles.size() / 8);
        draw.world = {{{{0.6f, 0, 0, 12}, {0, 0.6f, 0, 9}, {0, 0, 0.6f, 0}, {0, 0, 0, 1}}}};
        CHECK(Scanned(sphere, draw, level).size() < large / 4);
    }
}
