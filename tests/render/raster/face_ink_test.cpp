#include "render/raster/face_ink.h"

#include "render/builtin_meshes.h"
#include "render/raster/kernels.h"
#include "scene/transform.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <cstring>

TEST_CASE("the faces of a list have the same cosines to eye and light together as alone, bit for bit") {
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
