#include "state/mesh.h"

#include "doctest/doctest.h"
#include "render/raster/mesh_measures.h"

TEST_CASE("a mesh is measured: planes padded to sixteen, reach, longest edge and box") {
    Mesh mesh{{{{0, 0, 2}, {}}, {{0, 3, 2}, {}}, {{4, 0, 2}, {}}}, {{0, 1, 2}}};
    MeasureMesh(mesh);
    const MeshMeasures& m = mesh.measures;
    REQUIRE(m.offset.size() == 16);
    CHECK(m.normalX[0] == 0);
    CHECK(m.normalY[0] == 0);
    CHECK(m.normalZ[0] == -12);  // (0, 3, 0) x (4, 0, 0)
    CHECK(m.offset[0] == -24);
    for (size_t i = 1; i < 16; ++i) CHECK((m.normalZ[i] == 0 && m.offset[i] == 0));
    CHECK(m.longestEdge >= 5);  // from (0, 3) to (4, 0)
    CHECK(m.longestEdge < 5.01f);
    CHECK(m.reach >= doctest::Approx(4.4721f));  // the root of 16 + 4
    CHECK(m.reach < 4.48f);
    CHECK(m.bounds.centre == Vec4{2, 1.5f, 2, 1});
    CHECK(m.bounds.halfSize == Vec4{2, 1.5f, 0, 0});
}

TEST_CASE("every measured mesh has an identity of its own, which its copies share") {
    Mesh a, b;
    CHECK(a.measures.identity == nullptr);
    MeasureMesh(a);
    MeasureMesh(b);
    const Mesh copy = a;
    CHECK(a.measures.identity != nullptr);
    CHECK(a.measures.identity != b.measures.identity);
    CHECK(copy.measures.identity == a.measures.identity);
}

TEST_CASE("a mesh without triangles or vertices has no planes and no reach") {
    Mesh mesh;
    MeasureMesh(mesh);
    CHECK(mesh.measures.offset.empty());
    CHECK(mesh.measures.reach == 0);
}
