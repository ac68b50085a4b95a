#include "render/raster/face_ink.h"

#include "render/builtin_meshes.h"
#include "render/raster/kernels.h"
#include "scene/transform.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <cmath>
#include <cstring>
#include <limits>

constexpr Vec3 kUp{0, 1, 0};

TEST_CASE("a face that looks at the light is 0.3 ambient and 0.62 diffuse, less 0.12 when rough") {
    CHECK(FaceBrightness(kUp, {1, 0, 0}, kUp, 0, 0) == doctest::Approx(0.92));
    CHECK(FaceBrightness(kUp, {1, 0, 0}, kUp, 1, 0) == doctest::Approx(0.80));
    CHECK(FaceBrightness(kUp, {1, 0, 0}, {0, -1, 0}, 0, 0) == doctest::Approx(0.3));
}

TEST_CASE("the highlight has exponent 80 when smooth and 8 when rough") {
    // Light straight above, eye 60 degrees off: halfway is 30 degrees off the normal.
    const Vec3 eye{std::sin(1.0471976f), std::cos(1.0471976f), 0};
    const double c = std::cos(0.5235988);
    CHECK(FaceBrightness(kUp, eye, kUp, 0, 1) ==
          doctest::Approx(0.92 + 1.15 * std::pow(c, 80)).epsilon(1e-5));
    CHECK(FaceBrightness(kUp, eye, kUp, 1, 1) == doctest::Approx(0.80 + 0.60 * std::pow(c, 8)).epsilon(1e-5));
    CHECK(FaceBrightness(kUp, kUp, kUp, 0.5f, 0.5f) == doctest::Approx(0.3 + 0.56 + 0.5 * 0.875));
}

TEST_CASE("a face that is turned away from the light can shine") {
    const Vec3 light = Normalise({1, -0.1f, 0}), eye = Normalise({-1, 0.8f, 0});
    CHECK(Dot(kUp, light) < 0);
    CHECK(FaceBrightness(kUp, eye, light, 1, 1) > 0.3f);
}

TEST_CASE("a tint is averaged byte by byte, rounded down, and 0 means none") {
    CHECK(Tinted(Pixel{0x102030}, 0) == Pixel{0x102030});
    CHECK(Tinted(Pixel{0x000000}, 0xFFFFFF) == Pixel{0x7F7F7F});
    CHECK(Tinted(Pixel{0xFF00FF}, 0x000100) == Pixel{0x7F007F});
    // Low byte with low byte, no exchange of red and blue.
    CHECK(Tinted(Pixel{0x5053EF}, 0xC4CD4E) == Pixel{0x8A909E});
    for (uint32_t a = 0; a < 256; a += 5) {
        for (uint32_t b = 1; b < 256; b += 3) {
            const Pixel tinted = Tinted(Pixel{a << 16 | 0xFF00 | a}, b << 16 | 0xFF00 | b);
            CHECK(tinted == Pixel{(a + b) / 2 << 16 | 0xFF00 | (a + b) / 2});
        }
    }
}

TEST_CASE("brightness is limited to 0.22 .. 1.6, and channels to 255, truncated") {
    CHECK(Lit(Pixel{0x646464}, 1) == Pixel{0x646464});
    CHECK(Lit(Pixel{0x640A01}, 0) == Pixel{0x160200});     // 100, 10 and 1 times 0.22
    CHECK(Lit(Pixel{0x640A01}, 9) == Pixel{0xA01001});     // times 1.6
    CHECK(Lit(Pixel{0xC8FFA0}, 1.6f) == Pixel{0xFFFFFF});  // 320, 408 and 256
    CHECK(Lit(Pixel{0x030303}, 0.5f) == Pixel{0x010101});  // 1.5
}

TEST_CASE("a brightness that is not a number counts as the darkest") {
    CHECK(Lit(Pixel{0x646464}, std::numeric_limits<float>::quiet_NaN()) == Pixel{0x161616});
    CHECK(Lit(Pixel{0x646464}, std::numeric_limits<float>::infinity()) == Pixel{0xA0A0A0});
}

TEST_CASE("faces have the same cosines with eye and light together as alone, bit for bit") {
    constexpr uint32_t kSeed = 5772;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    for (int round = 0; round < 500; ++round) {
        const Mesh& mesh = meshes[static_cast<size_t>(random.IntBetween(0, kBuiltinMeshCount - 1))];
        MeshDraw draw{.eye{random.Between(-9, 9), random.Between(-9, 9), random.Between(-9, 9)}};
        if (!random.OneIn(9)) draw.light = Normalise({random.Between(-1, 1), 1, random.Between(-1, 1)});
        const float size = random.OneIn(9) ? 1e-4f : random.Between(-2, 2);
        draw.world =
            LocalMatrix({random.Between(-3, 3), 0, 1}, {random.Between(-3, 3), 1, 2}, {size, 1, size});
        std::vector<ScannedFace> faces;
        for (size_t i = 0; i < mesh.triangles.size(); ++i) {
            if (!random.OneIn(3)) faces.push_back({static_cast<uint32_t>(i)});
        }
        MeshToDraw list{&draw, mesh.vertices.data(), mesh.triangles.data()};
        list.faces = faces.data();
        list.faceCount = faces.size();
        std::vector<FaceLight> together(faces.size() + kListMargin);
        CAPTURE(round);
        for (SimdLevel level : TestedLevels()) {
            CAPTURE(NameOf(level));
            KernelsOf(level).lightFaces(list, together.data());
            for (size_t i = 0; i < faces.size(); ++i) {
                const FaceLight alone =
                    LightOfFace(mesh.vertices.data(), mesh.triangles[faces[i].triangle], draw);
                REQUIRE(std::memcmp(&together[i], &alone, sizeof alone) == 0);
            }
        }
    }
}

TEST_CASE("a face that looks at the eye and at the light has cosines of 1, one without area has none") {
    const Mesh mesh{{{{0, 0, 0}, {}}, {{0, 1, 0}, {}}, {{1, 0, 0}, {}}}, {{0, 1, 2}, {0, 1, 1}}};
    const MeshDraw draw{.eye{0, 0, -4}, .light{0, 0, -1}};
    const FaceLight front = LightOfFace(mesh.vertices.data(), mesh.triangles[0], draw);
    const FaceLight flat = LightOfFace(mesh.vertices.data(), mesh.triangles[1], draw);
    CHECK(front.eye == 1);
    CHECK(front.light == 1);
    CHECK(front.halfway == 1);
    CHECK(flat.eye == 0);
    CHECK(flat.light == 0);
}
