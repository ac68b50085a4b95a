#include "render/raster/visible_faces.h"

#include "render/builtin_meshes.h"
#include "render/raster/mesh_measures.h"
#include "scene/transform.h"
#include "support/random_scene.h"
#include "support/simd_levels.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <array>
#include <cmath>

static std::vector<uint32_t> FrontFaces(const Mesh& mesh, const Matrix4& world, Vec3 eye, SimdLevel level) {
    std::vector<uint32_t> faces;
    faces.resize(FindFrontFaces(mesh, FindEye(mesh, world, eye), level, faces));
    return faces;
}

// As drawing decides: in world space, with the way from the first vertex to the eye.
static bool IsDrawn(const Mesh& mesh, size_t face, const Matrix4& world, Vec3 eye) {
    Vec3 p[3];
    for (size_t c = 0; c < 3; ++c)
        p[c] = TransformPoint(world, mesh.vertices[static_cast<size_t>(mesh.triangles[face][c])].position);
    return Dot(Normalise(eye - p[0]), Normalise(Cross(p[1] - p[0], p[2] - p[0]))) > 0;
}

// A size of any order of magnitude, of either sign.
static float AnySize(RandomSource& random) {
    const float size = std::pow(10.0f, random.Between(-3, 3));
    return random.OneIn(4) ? -size : size;
}

static Matrix4 AnyMatrix(RandomSource& random) {
    const float far = random.OneIn(3) ? 2000.0f : 5.0f;
    const Vec3 turn{random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 3)};
    const float size = AnySize(random);
    const Vec3 scale =
        random.OneIn(2) ? Vec3{size, size, size} : Vec3{AnySize(random), AnySize(random), AnySize(random)};
    const Vec3 place{random.Between(-far, far), random.Between(-far, far), random.Between(-far, far)};
    const Matrix4 local = LocalMatrix(place, turn, scale);
    return random.OneIn(3)
               ? MultiplyMatrix(LocalMatrix({1, 2, 3}, {turn.y, turn.z, turn.x}, {1, 3, 0.5f}), local)
               : local;
}

static Mesh RandomMesh(RandomSource& random) {
    Mesh mesh;
    for (int32_t i = random.IntBetween(3, 30); i > 0; --i)
        mesh.vertices.push_back(
            {{random.Between(-1, 1), random.Between(-1, 1), random.Between(-1, 1)}, Pixel{}});
    const auto last = static_cast<int32_t>(mesh.vertices.size()) - 1;
    for (int32_t i = random.IntBetween(1, 30); i > 0; --i)
        mesh.triangles.push_back(
            {random.IntBetween(0, last), random.IntBetween(0, last), random.IntBetween(0, last)});
    MeasureMesh(mesh);
    return mesh;
}

// An eye that lies next to the plane of a face, where rounding decides.
static Vec3 EyeNearFace(RandomSource& random, const Mesh& mesh, const Matrix4& world) {
    const MeshTriangle& face = mesh.triangles[0];
    const auto at = [&](size_t c) {
        return TransformPoint(world, mesh.vertices[static_cast<size_t>(face[c])].position);
    };
    const Vec3 a = at(0), along = (at(1) - a) * random.Between(-9, 9) + (at(2) - a) * random.Between(-9, 9);
    return a + along * (1 + random.Between(-1e-6f, 1e-6f));
}

TEST_CASE("no face that is drawn is left out because of its plane, whatever the matrix, and levels agree") {
    constexpr uint32_t kSeed = 31415;
    INFO("seed ", kSeed);
    RandomSource random(kSeed);
    int32_t leftOut = 0, drawn = 0;
    for (int round = 0; round < 20'000; ++round) {
        const Mesh mesh = RandomMesh(random);
        const Matrix4 world = AnyMatrix(random);
        const Vec3 eye = random.OneIn(2) ? EyeNearFace(random, mesh, world)
                                         : Vec3{random.Between(-50, 50), random.Between(-50, 50), -30};
        const std::vector<uint32_t> faces = FrontFaces(mesh, world, eye, SimdLevel::OneLane);
        CAPTURE(round);
        REQUIRE(std::ranges::is_sorted(faces));
        for (size_t i = 0; i < mesh.triangles.size(); ++i) {
            const bool isListed = std::ranges::binary_search(faces, static_cast<uint32_t>(i));
            leftOut += !isListed;
            if (!IsDrawn(mesh, i, world, eye)) continue;
            ++drawn;
            REQUIRE(isListed);
        }
        for (SimdLevel level : TestedLevels()) REQUIRE(FrontFaces(mesh, world, eye, level) == faces);
    }
    CHECK(leftOut > 20'000);
    CHECK(drawn > 20'000);
}

TEST_CASE("a sphere shows less than half of its faces, and a cube at most three sides") {
    const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    for (SimdLevel level : TestedLevels()) {
        const size_t all = meshes[kSphereMesh].triangles.size();
        const size_t shown = FrontFaces(meshes[kSphereMesh], {}, {0, 0, -9}, level).size();
        CHECK(shown < all / 2);
        CHECK(shown > all / 3);
        CHECK(FrontFaces(meshes[kCubeMesh], {}, {3, 4, -9}, level) ==
              std::vector<uint32_t>{0, 1, 6, 7, 8, 9});
        CHECK(FrontFaces(meshes[kCubeMesh], {}, {0, 0, -9}, level) == std::vector<uint32_t>{0, 1});
    }
}

TEST_CASE("a mirrored mesh shows the faces that would otherwise turn away") {
    const Mesh cube = BuildBuiltinMeshes()[kCubeMesh];
    const Matrix4 mirror = LocalMatrix({}, {}, {1, 1, -1});
    // The mirrored front lies at z = -1 and is seen from inside; the back at z = 1 looks at the eye.
    CHECK(FrontFaces(cube, mirror, {0, 0, -9}, SimdLevel::OneLane) ==
          std::vector<uint32_t>{0, 1, 4, 5, 6, 7, 8, 9, 10, 11});
}

TEST_CASE("no face is left out of a mesh that is flat or was not measured") {
    Mesh cube = BuildBuiltinMeshes()[kCubeMesh];
    CHECK(FrontFaces(cube, LocalMatrix({}, {}, {1, 0, 1}), {3, 4, -9}, SimdLevel::OneLane).size() == 12);
    CHECK(
        FrontFaces(cube, LocalMatrix({std::nanf(""), 0, 0}, {}, {1, 1, 1}), {}, SimdLevel::OneLane).size() ==
        12);
    cube.measures = {};
    CHECK(FrontFaces(cube, {}, {3, 4, -9}, SimdLevel::OneLane).size() == 12);
}

// One face of a size, seen from the origin, at (x, y, 5).
static void CheckIsListed(std::array<Vec3, 3> corners, float meshScale, float worldScale, Vec3 place) {
    Mesh mesh;
    for (const Vec3& corner : corners) mesh.vertices.push_back({corner * meshScale, Pixel{}});
    mesh.triangles.push_back({0, 1, 2});
    MeasureMesh(mesh);
    const Matrix4 world = LocalMatrix(place, {}, {worldScale, worldScale, worldScale});
    REQUIRE(IsDrawn(mesh, 0, world, {}));
    for (SimdLevel level : TestedLevels()) CHECK(FrontFaces(mesh, world, {}, level).size() == 1);
}

TEST_CASE("no face is left out if products overflow or vanish") {
    CheckIsListed({{{0, 2, -2}, {0, 0, 2}, {-2, -2, 1}}}, 3e12f, 1 / 3e12f, {-1, -2, 5});
    CheckIsListed({{{-2, 2, -2}, {-2, 1, -1}, {0, -1, -1}}}, 1e-14f, 1e14f, {-2, -1, 5});
}

// The height over a plane is at most 4 times the square of the longest edge times the way, here 4e24 times
// the way; the greatest float is 3.4e38.
TEST_CASE("nothing is known of any face where the height of the eye over a plane may overflow") {
    Mesh mesh;
    for (const Vec3 corner : {Vec3{0, 0, 0}, Vec3{1e12f, 0, 0}, Vec3{0, 5e11f, 0}})
        mesh.vertices.push_back({corner, Pixel{}});
    mesh.triangles.push_back({0, 1, 2});
    MeasureMesh(mesh);
    CHECK(FindEye(mesh, {}, {0, 0, -5e13f}).isUsable);
    CHECK_FALSE(FindEye(mesh, {}, {0, 0, -1e14f}).isUsable);
}

TEST_CASE("a mesh that grew after it was measured is drawn whole") {
    Mesh cube = BuildBuiltinMeshes()[kCubeMesh];
    for (int32_t i = 0; i < 12; ++i) cube.triangles.push_back(cube.triangles[static_cast<size_t>(i)]);
    CHECK(FrontFaces(cube, {}, {3, 4, -9}, BestSimdLevel()).size() == 24);
}

TEST_CASE("the bound on rounding scales with the mesh and its distance, to the last bit") {
    // A power of two changes no digit of a float. The product of a plane with the eye contains three
    // lengths.
    const std::vector<Mesh> library = BuildBuiltinMeshes();
    for (const Mesh& plain : library) {
        const auto eyeOf = [&](float size) {
            Mesh mesh = plain;
            for (MeshVertex& vertex : mesh.vertices) vertex.position = vertex.position * size;
            MeasureMesh(mesh);
            const Matrix4 world = LocalMatrix(Vec3{3, -2, 5} * size, {0.3f, 0.2f, 0.1f}, {1, 1, 1});
            return FindEye(mesh, world, Vec3{1, 4, -6} * size);
        };
        const float certainty = eyeOf(1).certainty;
        REQUIRE(certainty > 0);
        for (const float size : {0x1p-8f, 0x1p8f}) {
            CHECK(eyeOf(size).certainty == certainty * size * size * size);
        }
    }
}
