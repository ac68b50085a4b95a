#include "render/raster/draw_mesh.h"

#include "render/builtin_meshes.h"
#include "render/raster/camera.h"
#include "scene/transform.h"
#include "support/picture.h"
#include "support/plain_renderer.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <cstring>
#include <limits>

static const Mesh& Builtin(BuiltinMesh index) {
    static const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    return meshes[static_cast<size_t>(index)];
}

// A camera at the origin that looks along +Z.
static MeshDraw LookingAhead() {
    MeshDraw draw;
    draw.viewProjection = ProjectionMatrix(frameBuffer.width, frameBuffer.height);
    draw.light = {0, 0, -1};
    draw.gloss = 0;
    return draw;
}

static Matrix4 At(float x, float y, float z, float scale = 1) {
    return LocalMatrix({x, y, z}, {}, {scale, scale, scale});
}

// One triangle that faces a camera on the -Z side.
static Mesh FrontTriangle(Vec3 a, Vec3 b, Vec3 c, Pixel color = Pixel{0x646464}) {
    Mesh mesh{{{a, color}, {b, color}, {c, color}}, {{0, 1, 2}}};
    if (Cross(b - a, c - a).z > 0) mesh.triangles[0] = {0, 2, 1};
    return mesh;
}

static void CheckAgainstPlain(const Mesh& mesh, const MeshDraw& draw, int32_t width, int32_t height) {
    StartPicture(width, height, Pixel{0x2D2219});
    DrawMeshPlainly(mesh, draw);
    const std::vector<Pixel> pixels = headless.pixels;
    const PixelValues<float> depth = frameBuffer.depth;
    for (SimdLevel level : TestedLevels()) {
        CAPTURE(NameOf(level));
        StartPicture(width, height, Pixel{0x2D2219});
        frameBuffer.simd = level;
        DrawMesh(mesh, draw, frameBuffer);
        REQUIRE(headless.pixels == pixels);
        REQUIRE(std::memcmp(frameBuffer.depth.data(), depth.data(), depth.size() * sizeof(float)) == 0);
    }
}

TEST_CASE("a mesh is drawn as the plain renderer draws it, bit for bit, in random views") {
    constexpr uint32_t kSeed = 77;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    const TextureImage image{
        .width = 3,
        .height = 2,
        .texels{Pixel{0xFF0000}, Pixel{0xFF00}, Pixel{0xFF}, Pixel{0xFFFFFF}, Pixel{0x808080}, Pixel{0}}};
    for (int round = 0; round < 700; ++round) {
        const int32_t width = random.IntBetween(1, 70), height = random.IntBetween(1, 50);
        const CameraPose camera{{random.Between(-3, 3), random.Between(-3, 3), random.Between(-6, 1)},
                                random.Between(-0.7f, 0.7f),
                                random.Between(-0.7f, 0.7f)};
        MeshDraw draw{
            .eye = camera.position,
            .light = Normalise({random.Between(-1, 1), random.Between(-1, 1), random.Between(-1, 1)}),
            .viewProjection = MultiplyMatrix(ProjectionMatrix(width, height), ViewMatrix(camera)),
            .selected = random.OneIn(4),
            .tint = random.OneIn(2) ? 0 : random.Bits() & 0xFFFFFF,
            .roughness = random.Between(0, 1),
            .gloss = random.Between(0, 1),
            .texture = random.OneIn(2) ? &image : nullptr,
            .repeat = random.OneIn(2)};
        draw.world = LocalMatrix({random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 4)},
                                 {random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 3)},
                                 {random.Between(-2, 2), random.Between(0.1f, 3), random.Between(0.1f, 3)});
        const Mesh& mesh = Builtin(static_cast<BuiltinMesh>(random.IntBetween(0, 6)));

        CAPTURE(round);
        CheckAgainstPlain(mesh, draw, width, height);
    }
}

// From half a pixel to some twelve pixels, at places that fall anywhere between pixel centres.
TEST_CASE("meshes of a few pixels are drawn as the plain renderer draws them, bit for bit") {
    constexpr uint32_t kSeed = 78;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    constexpr int32_t kWidth = 40, kHeight = 30;
    int32_t drawn = 0;
    for (int round = 0; round < 3000; ++round) {
        MeshDraw draw{.light{0.6f, 0.8f, 0}, .viewProjection = ProjectionMatrix(kWidth, kHeight)};
        const float distance = random.Between(0.5f, 90), pixel = 2 * 0.7002f * distance / kHeight;
        const float size = pixel * random.Between(0.3f, random.OneIn(2) ? 1.0f : 6.0f);
        draw.world = LocalMatrix({random.Between(-9, 9) * pixel, random.Between(-9, 9) * pixel, distance},
                                 {random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 3)},
                                 {size, random.OneIn(3) ? 0.01f * size : size, size});
        CAPTURE(round);
        CheckAgainstPlain(Builtin(static_cast<BuiltinMesh>(random.IntBetween(0, 6))), draw, kWidth, kHeight);
        for (const float depth : frameBuffer.depth) drawn += depth < kFarDepth;
    }
    CHECK(drawn > 20'000);
}

TEST_CASE("a closed mesh shows its front and not its inside") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    draw.world = At(0, 0, 5);
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    CHECK(PixelAt(30, 30) != Pixel{0});

    StartPicture(60, 60);
    draw.world = At(0, 0, 0, 3);  // the eye is inside
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) == 3600);
}

TEST_CASE("an odd number of negative scales turns a mesh inside out") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    draw.world = LocalMatrix({0, 0, 5}, {}, {-1, 1, 1});
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    // The far face at z = 6 is seen from inside instead of the near one at z = 4.
    CHECK(DepthAt(30, 30) == doctest::Approx(1.001001 - 0.1001001 / 6).epsilon(1e-5));
}

TEST_CASE("the colour of a face is that of its first vertex, lit and truncated") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    draw.world = At(0, 0, 5);
    draw.roughness = 1;
    // The near face is the cube's back: both its triangles begin with vertex 0, 0x5053EF. The light comes
    // from the eye: 0.3 + 0.5 = 0.8.
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    CHECK(PixelAt(30, 30) == Pixel{0x4042BF});  // 80, 83 and 239 times 0.8
    CHECK(PixelAt(25, 34) == Pixel{0x4042BF});
}

TEST_CASE("a tint of 0 leaves the colours, any other is averaged byte by byte") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    draw.world = At(0, 0, 5);
    draw.roughness = 1;
    draw.tint = 0x0000FF;  // red in the object's order, blue in the pixel's
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    CHECK(PixelAt(30, 30) == Pixel{0x2020C5});  // 40, 41 and 247 times 0.8
}

TEST_CASE("a triangle behind the camera is not drawn, one across the near plane is drawn as two") {
    StartPicture(60, 60);
    const MeshDraw draw = LookingAhead();
    DrawMesh(FrontTriangle({-5, -5, -1}, {5, -5, -1}, {0, 5, -1}), draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) == 3600);

    // A floor half a unit below the eye, from behind it to far ahead.
    Mesh floor{{{{-50, -0.5f, -20}, Pixel{0x646464}},
                {{50, -0.5f, -20}, Pixel{0x646464}},
                {{0, -0.5f, 90}, Pixel{0x646464}}},
               {{0, 2, 1}}};
    DrawMesh(floor, draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) < 3600);
    CHECK(PixelAt(30, 59) != Pixel{0});  // right below the eye
    CHECK(PixelAt(30, 20) == Pixel{0});  // above the horizon
}

TEST_CASE("a triangle with a corner beyond the depth range is not drawn at all") {
    StartPicture(60, 60);
    const MeshDraw draw = LookingAhead();
    DrawMesh(FrontTriangle({-5, -5, 50}, {5, -5, 50}, {0, 5, 50}), draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) < 3600);
    StartPicture(60, 60);
    // (far / (far - near)) * (1 - near / 600000) lies above 1.001.
    DrawMesh(FrontTriangle({-5, -5, 50}, {5, -5, 50}, {0, 500, 600000}), draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) == 3600);
}

TEST_CASE("a stretched texture covers the -1 .. 1 extent of a face once") {
    StartPicture(200, 200);
    MeshDraw draw = LookingAhead();
    TextureImage image{.width = 3, .height = 3};
    for (uint32_t i = 1; i <= 9; ++i) image.texels.push_back(Pixel{i * 20 << 16});
    draw.texture = &image;
    draw.light = {0, 0, 0};  // 0.3 ambient only
    draw.world = LocalMatrix({0, 0, 5}, {}, {2, 2, 2});
    DrawMesh(FrontTriangle({-1, -1, 0}, {-1, 3, 0}, {3, -1, 0}), draw, frameBuffer);
    const auto redAt = [](int32_t x, int32_t y) { return static_cast<uint32_t>(PixelAt(x, y)) >> 16; };
    // One object unit is 2 / (5 tan 35 degrees) * 100 = 57 pixels. Half of it off the middle lie u = 0.25 and
    // 0.75, columns 0 and 1, and v = 0.75 and 0.25, rows 0 and 1.
    CHECK(redAt(100 - 28, 100 - 28) == 6);   // texel 0: 20 * 0.3
    CHECK(redAt(100 + 28, 100 - 28) == 12);  // texel 1
    CHECK(redAt(100 - 28, 100 + 28) == 24);  // texel 3
    CHECK(redAt(100 + 28, 100 + 28) == 30);  // texel 4
}

// How often a colour begins along the middle row.
static int32_t RunsOf(Pixel color) {
    int32_t runs = 0;
    for (int32_t x = 1; x < frameBuffer.width; ++x) {
        const int32_t y = frameBuffer.height / 2;
        runs += PixelAt(x, y) == color && PixelAt(x - 1, y) != color;
    }
    return runs;
}

TEST_CASE("a repeated texture shows one tile per two world units, so twice as often on twice the scale") {
    // Columns 0 and 1 take half a tile each.
    const TextureImage image{
        .width = 3, .height = 1, .texels{Pixel{0x000064}, Pixel{0x006400}, Pixel{0xFFFFFF}}};
    for (auto [scaleX, tiles] : {std::pair{2.0f, 2}, {4.0f, 4}, {1.0f, 1}}) {
        StartPicture(400, 20);
        MeshDraw draw = LookingAhead();
        draw.texture = &image;
        draw.light = {0, 0, 0};
        draw.repeat = true;
        draw.world = LocalMatrix({0, 0, 9}, {}, {scaleX, 4, 1});
        DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
        CHECK(RunsOf(Pixel{0x001E00}) == tiles);  // 100 * 0.3
    }
}

TEST_CASE("a texture of one pixel colours the whole face with it") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    const TextureImage image{.width = 1, .height = 1, .texels{Pixel{0x102030}}};
    draw.texture = &image;
    draw.roughness = 0;
    draw.light = {0, 0, -1};
    draw.world = At(0, 0, 3);
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    CHECK(CountOf(Pixel{0x0E1D2C}) > 100);  // 16, 32 and 48 times 0.92
    CHECK(CountOf(Pixel{0x0E1D2C}) + CountOf(Pixel{0}) == 3600);
}

TEST_CASE("the outline of a selected object shows through what stands before it") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    draw.world = At(0, 0, 3, 0.9f);
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    draw.world = At(0, 0, 9);
    draw.selected = true;
    DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
    CHECK(CountOf(Pixel{0x56D6FF}) > 20);
}

TEST_CASE("an outline edge with one end behind the camera is not drawn at all") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    draw.selected = true;
    Mesh mesh{{{{0, 0, 5}, {}}, {{1, 0, 5}, {}}, {{0, 0, -5}, {}}}, {{0, 1, 2}}};
    DrawMesh(mesh, draw, frameBuffer);
    const int32_t oneEdge = CountOf(Pixel{0x56D6FF});
    CHECK(oneEdge > 0);
    CHECK(oneEdge < 20);  // only the edge between the two visible ends
}

TEST_CASE("a mesh without triangles draws nothing, selected or not") {
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    draw.selected = true;
    DrawMesh({}, draw, frameBuffer);
    DrawMesh({{{{0, 0, 5}, {}}}, {}}, draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) == 3600);
}

TEST_CASE("a face at 45 degrees takes its texture along y before x, and along x before z") {
    TextureImage image{.width = 3, .height = 3};
    for (uint32_t i = 1; i <= 9; ++i) image.texels.push_back(Pixel{i * 20 << 16});
    // Each face has two normal components of the same size. `point` lies on it, in object space.
    struct {
        std::array<Vec3, 3> corners;
        Vec3 place, point;
        uint32_t red;
    } cases[] = {
        // Normal (-1, 1, 0), so (x, z): u = 0.75 and v = 0.25, texel 4.
        {{{{-1, -1, -1}, {1, 1, 1}, {1, 1, -1}}}, {2, -2, 6}, {0.5f, 0.5f, -0.5f}, 30},
        // Normal (0, 1, -1), so (x, z): u = 0.75 and v = 0.125, texel 4.
        {{{{-1, -1, -2}, {1, 1, 0}, {1, -1, -2}}}, {0, -1, 6}, {0.5f, 0.25f, -0.75f}, 30},
        // Normal (-1, 0, -1), so (z, y): u = 0.25 and v = 0.625, texel 0.
        {{{{-1, -1, 1}, {1, 1, -1}, {1, -1, -1}}}, {0, 0, 6}, {0.5f, 0.25f, -0.5f}, 6},
    };
    for (const auto& [corners, place, point, red] : cases) {
        StartPicture(200, 200);
        MeshDraw draw = LookingAhead();
        draw.texture = &image;
        draw.light = {0, 0, 0};  // 0.3 ambient only
        draw.world = At(place.x, place.y, place.z);
        DrawMesh({{{corners[0], {}}, {corners[1], {}}, {corners[2], {}}}, {{0, 1, 2}}}, draw, frameBuffer);
        Point pixel;
        REQUIRE(ProjectToPixel(draw.viewProjection, place + point, frameBuffer.viewport, pixel));
        CHECK(PixelAt(pixel.x, pixel.y) == Pixel{red << 16});
    }
}

TEST_CASE("a repeated texture counts a world scale as at least 0.001") {
    const TextureImage image{
        .width = 3, .height = 1, .texels{Pixel{0x000064}, Pixel{0x006400}, Pixel{0xFFFFFF}}};
    const Mesh wide{{{{-4000, -1, 0}, {}}, {{4000, -1, 0}, {}}, {{4000, 1, 0}, {}}, {{-4000, 1, 0}, {}}},
                    {{0, 2, 1}, {0, 3, 2}}};
    StartPicture(200, 200);
    MeshDraw draw = LookingAhead();
    draw.texture = &image;
    draw.light = {0, 0, 0};
    draw.repeat = true;
    draw.world = LocalMatrix({0, 0, 5}, {}, {0.0005f, 1, 1});
    DrawMesh(wide, draw, frameBuffer);
    CHECK(RunsOf(Pixel{0x001E00}) == 4);  // 8000 * 0.001 / 2
}

TEST_CASE("a face whose first corner lies at the eye is not drawn") {
    const Mesh mesh = FrontTriangle({-1, -1, 5}, {1, -1, 5}, {0, 1, 5});
    StartPicture(60, 60);
    MeshDraw draw = LookingAhead();
    DrawMesh(mesh, draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) < 3600);
    StartPicture(60, 60);
    draw.eye = {-1, -1, 5};
    DrawMesh(mesh, draw, frameBuffer);
    CHECK(CountOf(Pixel{0}) == 3600);
}

TEST_CASE("a text drawn before a mesh is finished first") {
    StartPicture(60, 60);
    DrawText(0, 0, L"a", TextColor{0}, 13, 400);
    DrawMesh(FrontTriangle({-1, -1, 5}, {1, -1, 5}, {0, 1, 5}), LookingAhead(), frameBuffer);
    CHECK(headless.flushes == 1);
}

// Only the camera object of a playing scene can be turned that far.
TEST_CASE("a camera that looks straight up or down sees no mesh") {
    for (float pitch : {1.57079633f, -1.57079633f}) {
        for (float yaw : {0.0f, 0.3f, -2.0f}) {
            StartPicture(60, 60);
            MeshDraw draw = LookingAhead();
            draw.viewProjection = MultiplyMatrix(draw.viewProjection, ViewMatrix({{0, 0, 0}, yaw, pitch}));
            for (int32_t mesh = 0; mesh < kBuiltinMeshCount; ++mesh) {
                for (float y : {-5.0f, -0.5f, 0.0f, 0.5f, 5.0f}) {
                    draw.world = At(0.3f, y, -0.2f);
                    DrawMesh(Builtin(static_cast<BuiltinMesh>(mesh)), draw, frameBuffer);
                }
            }
            CHECK(CountOf(Pixel{0}) == 3600);
        }
    }
}

TEST_CASE("transforms that overflow or are not numbers neither crash nor draw") {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const TextureImage image{.width = 1, .height = 1, .texels{Pixel{0xFFFFFF}}};
    for (float bad : {nan, inf, -inf, 3e38f, -3e38f}) {
        for (const Matrix4& world : {At(bad, 0, 5), At(0, bad, 5), At(0, 0, bad), At(0, 0, 5, bad)}) {
            StartPicture(60, 60);
            MeshDraw draw = LookingAhead();
            draw.selected = true;
            draw.texture = &image;
            draw.repeat = true;
            draw.world = world;
            DrawMesh(Builtin(kSphereMesh), draw, frameBuffer);
            draw.texture = nullptr;
            DrawMesh(Builtin(kCubeMesh), draw, frameBuffer);
            CAPTURE(bad);
            CHECK(CountOf(Pixel{0}) == 3600);
            CHECK(frameBuffer.depth == PixelValues<float>(3600, 1.0f));
        }
    }
}
