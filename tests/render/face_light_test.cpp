#include "render/face_light.h"

#include "render/builtin_meshes.h"
#include "render/transform.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

#include <cstring>

TEST_CASE("the faces of a list have the same cosines to eye and light together as alone, bit for bit") {
    if (BestSimdLevel() != SimdLevel::Avx2) return;
    constexpr uint32_t kSeed = 5772;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    std::vector<FaceLight> together;
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
        FindLightsOfFaces(mesh, draw, faces, together);
        CAPTURE(round);
        for (size_t i = 0; i < faces.size(); ++i) {
            const FaceLight alone = LightOfFace(mesh, draw, faces[i].triangle);
            REQUIRE(std::memcmp(&together[i], &alone, sizeof alone) == 0);
        }
    }
}

TEST_CASE("a face that looks at the eye and at the light has cosines of 1, one without area has none") {
    const Mesh mesh{{{{0, 0, 0}, {}}, {{0, 1, 0}, {}}, {{1, 0, 0}, {}}}, {{0, 1, 2}, {0, 1, 1}}};
    const MeshDraw draw{.eye{0, 0, -4}, .light{0, 0, -1}};
    const FaceLight front = LightOfFace(mesh, draw, 0), flat = LightOfFace(mesh, draw, 1);
    CHECK(front.eye == 1);
    CHECK(front.light == 1);
    CHECK(front.halfway == 1);
    CHECK(flat.eye == 0);
    CHECK(flat.light == 0);
}
