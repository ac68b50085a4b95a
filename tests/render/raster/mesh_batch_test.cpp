#include "render/raster/mesh_batch.h"

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
#include <cstring>
#include <limits>

namespace {

struct Snapshot {
    std::vector<Pixel> pixels{};
    PixelValues<float> depth{};
};

}  // namespace

constexpr Rect kViewport{3, 2, 93, 67};
constexpr Pixel kBack{0x2D2219};

static const std::vector<Mesh>& Meshes() {
    static const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    return meshes;
}

static void StartFrame(SimdLevel level) {
    StartPicture(97, 71, kBack);
    frameBuffer.viewport = kViewport;
    frameBuffer.simd = level;
}

static Snapshot TakePicture() { return {headless.pixels, frameBuffer.depth}; }

static bool SameBits(const Snapshot& a, const Snapshot& b) {
    return a.pixels == b.pixels &&
           std::memcmp(a.depth.data(), b.depth.data(), a.depth.size() * sizeof(float)) == 0;
}

static MeshDraw FrameAt(Vec3 eye) {
    const CameraPose camera{eye, 0.1f, -0.1f};
    return {.eye = eye,
            .light = Normalise({0.4f, 0.8f, -0.4f}),
            .viewProjection =
                MultiplyMatrix(ProjectionMatrix(Width(kViewport), Height(kViewport)), ViewMatrix(camera))};
}

// Meshes in front of and inside one another, among them copies in the same place and faces in the same
// plane.
static std::vector<MeshInstance> RandomInstances(RandomSource& random, const TextureImage& image) {
    const MeshDraw frame = FrameAt({random.Between(-1, 1), random.Between(-1, 1), random.Between(-9, -2)});
    std::vector<MeshInstance> instances;
    const auto count = static_cast<size_t>(random.IntBetween(1, 60));
    while (instances.size() < count) {
        if (!instances.empty() && random.OneIn(3)) {
            instances.push_back(instances[static_cast<size_t>(
                random.IntBetween(0, static_cast<int32_t>(instances.size()) - 1))]);
            instances.back().draw.tint = random.Bits() & 0xFFFFFF;
            continue;
        }
        MeshInstance instance{&Meshes()[static_cast<size_t>(random.IntBetween(0, kBuiltinMeshCount - 1))],
                              frame};
        instance.draw.tint = random.Bits() & 0xFFFFFF;
        if (random.OneIn(4)) instance.draw.texture = &image;
        const auto cell = [&random] { return static_cast<float>(random.IntBetween(-3, 3)); };
        const bool isTurned = random.OneIn(3);
        const Vec3 turn = isTurned ? Vec3{random.Between(-3, 3), random.Between(-3, 3), 0} : Vec3{};
        const float size = random.OneIn(2) ? 1.0f : random.Between(0.1f, 3);
        instance.draw.world = LocalMatrix({cell(), cell(), cell() + 4}, turn, {size, size, size});
        instances.push_back(instance);
    }
    return instances;
}

TEST_CASE("meshes that are drawn nearest first give the picture of the scene's order, bit for bit") {
    constexpr uint32_t kSeed = 141421;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    const TextureImage image{.width = 2, .height = 1, .texels{Pixel{0xFF0000}, Pixel{0xFF}}};
    for (int round = 0; round < 250; ++round) {
        const std::vector<MeshInstance> instances = RandomInstances(random, image);
        StartFrame(SimdLevel::OneLane);
        for (const MeshInstance& instance : instances) DrawMeshPlainly(*instance.mesh, instance.draw);
        const Snapshot expected = TakePicture();
        for (SimdLevel level : TestedLevels()) {
            StartFrame(level);
            DrawMeshes(instances, frameBuffer);
            CAPTURE(round);
            REQUIRE(SameBits(TakePicture(), expected));
        }
    }
}

// From the farthest to the nearest, so that they are drawn in another order. The last stands in the middle.
static std::vector<MeshInstance> FarToNear(const Mesh& mesh, uint32_t tint) {
    std::vector<MeshInstance> instances;
    for (int32_t distance = 19; distance >= 0; --distance) {
        MeshInstance instance{&mesh, FrameAt({0, 0, -5})};
        instance.draw.world = LocalMatrix({0, 0, static_cast<float>(distance)}, {}, {1, 1, 1});
        instance.draw.tint = tint;
        instances.push_back(instance);
    }
    return instances;
}

constexpr Point kMiddle{48, 34};

static Pixel DrawCubeBefore(uint32_t tint) {
    MeshDraw draw = FrameAt({0, 0, -5});
    draw.tint = tint;
    DrawMesh(Meshes()[kCubeMesh], draw, frameBuffer);
    return PixelAt(kMiddle.x, kMiddle.y);
}

TEST_CASE("what was drawn before a batch keeps its pixels from meshes at the same depth") {
    for (SimdLevel level : TestedLevels()) {
        StartFrame(level);
        const Pixel before = DrawCubeBefore(0x0000FF);
        DrawMeshes(FarToNear(Meshes()[kCubeMesh], 0xFF0000), frameBuffer);
        REQUIRE(!frameBuffer.owners.numbers.empty());
        CHECK(PixelAt(kMiddle.x, kMiddle.y) == before);
    }
}

TEST_CASE("of two faces of one mesh at the same depth the first is visible in a batch too") {
    Mesh mesh{{{{-1, -1, 0}, Pixel{0xFF0000}}, {{0, 1, 0}, {}}, {{1, -1, 0}, {}}, {{-1, -1, 0}, Pixel{0xFF}}},
              {{0, 1, 2}, {3, 1, 2}}};
    MeasureMesh(mesh);
    for (SimdLevel level : TestedLevels()) {
        StartFrame(level);
        DrawMeshes(FarToNear(mesh, 0), frameBuffer);
        REQUIRE(!frameBuffer.owners.numbers.empty());
        const auto seen = static_cast<uint32_t>(PixelAt(kMiddle.x, kMiddle.y));
        CHECK((seen & 0xFF0000) != 0);
        CHECK((seen & 0x0000FF) == 0);
    }
}

TEST_CASE("a frame starts without the owners of the frame before, also at another size") {
    for (SimdLevel level : TestedLevels()) {
        StartFrame(level);
        std::vector<MeshInstance> batch = FarToNear(Meshes()[kCubeMesh], 0xFF0000);
        DrawMeshes(batch, frameBuffer);
        Clear(kBack);
        const Pixel before = DrawCubeBefore(0x0000FF);
        std::rotate(batch.begin(), batch.end() - 1, batch.end());  // the nearest gets another number
        DrawMeshes(batch, frameBuffer);
        CHECK(PixelAt(kMiddle.x, kMiddle.y) == before);
        EnsureSize(160, 120);
        DrawMeshes(batch, frameBuffer);
        CHECK(frameBuffer.owners.numbers.size() == frameBuffer.depth.size());
    }
}

TEST_CASE("when all numbers of owners are given, they begin anew and pixels keep none") {
    constexpr int32_t kLast = std::numeric_limits<int32_t>::max();
    const std::vector<MeshInstance> batch = FarToNear(Meshes()[kCubeMesh], 0xFF0000);
    const auto count = static_cast<int32_t>(batch.size());
    for (int32_t left : {count, count - 1}) {
        CAPTURE(left);
        StartFrame(BestSimdLevel());
        DrawMeshes(batch, frameBuffer);
        frameBuffer.owners.next = kLast - left;
        Clear(kBack);
        const Pixel before = DrawCubeBefore(0x0000FF);
        DrawMeshes(batch, frameBuffer);
        CHECK(frameBuffer.owners.first == (left == count ? kLast - count : 1));
        Clear(kBack);
        DrawCubeBefore(0x0000FF);
        DrawMeshes(batch, frameBuffer);
        CHECK(frameBuffer.owners.first < 2 * count);
        CHECK(PixelAt(kMiddle.x, kMiddle.y) == before);
    }
}

TEST_CASE("what was drawn bounds the depths that can still be seen") {
    StartFrame(BestSimdLevel());
    MeshDraw wall = FrameAt({0, 0, -5});
    wall.world = LocalMatrix({0, 0, 2}, {}, {90, 90, 0.1f});
    DrawMesh(Meshes()[kCubeMesh], wall, frameBuffer);
    CHECK(FarthestDepth({20, 20, 60, 50}, frameBuffer) < kFarDepth);
}

// Walls that each hide the ones behind them, numbered from the farthest.
static std::vector<MeshInstance> Walls(size_t count) {
    std::vector<MeshInstance> walls;
    for (size_t i = 0; i < count; ++i) {
        MeshInstance wall{&Meshes()[kCubeMesh], FrameAt({0, 0, -5})};
        wall.draw.world = LocalMatrix({0, 0, static_cast<float>(2 * (count - i))}, {}, {90, 90, 0.1f});
        walls.push_back(wall);
    }
    return walls;
}

TEST_CASE("from sixteen meshes on the nearest is drawn first, so that those behind it are left out") {
    for (size_t count : {kFewestToSort - 1, kFewestToSort}) {
        StartFrame(SimdLevel::OneLane);
        DrawMeshes(Walls(count), frameBuffer);
        CHECK(frameBuffer.owners.areKept == false);
        CHECK(frameBuffer.owners.numbers.empty() == (count < kFewestToSort));
    }
    // Each wall would have left its number where no other hides it; only the nearest one did.
    const int32_t last = frameBuffer.owners.first + static_cast<int32_t>(kFewestToSort) - 1;
    CHECK(frameBuffer.owners.numbers[static_cast<size_t>(35 * 97 + 48)] == last);
}

TEST_CASE("meshes that stand nearly in order are drawn as they stand, without owners") {
    std::vector<MeshInstance> walls = Walls(40);
    std::ranges::reverse(walls);
    std::swap(walls[3], walls[5]);
    StartFrame(SimdLevel::OneLane);
    DrawMeshes(walls, frameBuffer);
    CHECK(frameBuffer.owners.numbers.empty());
}

TEST_CASE("a wall that comes last before many small meshes is drawn first") {
    std::vector<MeshInstance> meshes;
    for (int32_t i = 0; i < 300; ++i) {
        MeshInstance small{&Meshes()[kSphereMesh], FrameAt({0, 0, -5})};
        const auto across = static_cast<float>(i % 10 - 5), distance = static_cast<float>(20 + i / 10);
        small.draw.world = LocalMatrix({across, 0, distance}, {}, {0.3f, 0.3f, 0.3f});
        meshes.push_back(small);
    }
    StartFrame(SimdLevel::OneLane);
    DrawMeshes(meshes, frameBuffer);
    CHECK(frameBuffer.owners.numbers.empty());  // they stand in order, and so they are drawn

    // Large by its scale, and by its own size.
    const Mesh& cube = Meshes()[kCubeMesh];
    Mesh largeCube = cube;
    for (MeshVertex& vertex : largeCube.vertices) vertex.position = vertex.position * 1e4f;
    MeasureMesh(largeCube);
    const struct {
        const Mesh& mesh;
        Vec3 scale;
    } walls[] = {{cube, {90, 90, 0.1f}}, {largeCube, {9e-3f, 9e-3f, 1e-5f}}};
    for (const auto& [mesh, scale] : walls) {
        MeshInstance wall{&mesh, FrameAt({0, 0, -5})};
        wall.draw.world = LocalMatrix({0, 0, 2}, {}, scale);
        meshes.push_back(wall);
        StartFrame(SimdLevel::OneLane);
        DrawMeshes(meshes, frameBuffer);
        REQUIRE(!frameBuffer.owners.numbers.empty());
        const Snapshot drawn = TakePicture();
        StartFrame(SimdLevel::OneLane);
        for (const MeshInstance& instance : meshes) DrawMeshPlainly(*instance.mesh, instance.draw);
        CHECK(SameBits(TakePicture(), drawn));
        meshes.pop_back();
    }
}

TEST_CASE("a mesh without a valid position is drawn last and changes nothing") {
    std::vector<MeshInstance> walls = Walls(20);
    StartFrame(SimdLevel::OneLane);
    DrawMeshes(walls, frameBuffer);
    const Snapshot expected = TakePicture();
    walls[4].draw.world = LocalMatrix({std::nanf(""), 0, 0}, {}, {1, 1, 1});
    StartFrame(SimdLevel::OneLane);
    DrawMeshes(walls, frameBuffer);
    CHECK(SameBits(TakePicture(), expected));
}
