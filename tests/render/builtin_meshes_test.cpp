#include "render/builtin_meshes.h"

#include "doctest/doctest.h"

#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

constexpr double kPi = 3.14159265358979323846;

static const std::vector<Mesh>& Meshes() {
    static const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    return meshes;
}

static Pixel Rgb(uint32_t red, uint32_t green, uint32_t blue) { return Pixel{red << 16 | green << 8 | blue}; }

// The gradient worked out in double, rounding aside.
static Pixel ExpectedGradient(double height, double turn) {
    const double t = std::min(std::max((height + 1.1) / 2.2, 0.0), 1.0);
    const double s = std::sin(2 * kPi * turn) * 0.5 + 0.5;
    return Rgb(static_cast<uint32_t>((1 - t) * 44 + 178), static_cast<uint32_t>(s * 46 + 136),
               static_cast<uint32_t>(t * 70 + 92 + s * 22));
}

static bool IsClose(Vec3 a, double x, double y, double z) {
    return std::abs(a.x - x) < 1e-6 && std::abs(a.y - y) < 1e-6 && std::abs(a.z - z) < 1e-6;
}

// Every channel equal up to the rounding of a value that lies next to a whole number.
static bool IsCloseColor(Pixel a, Pixel b) {
    for (int shift = 0; shift < 24; shift += 8) {
        const int difference = static_cast<int>(static_cast<uint32_t>(a) >> shift & 0xFF) -
                               static_cast<int>(static_cast<uint32_t>(b) >> shift & 0xFF);
        if (std::abs(difference) > 1) return false;
    }
    return true;
}

static Vec3 FaceNormal(const Mesh& mesh, const MeshTriangle& t) {
    const Vec3 a = mesh.vertices[static_cast<size_t>(t[0])].position;
    const Vec3 b = mesh.vertices[static_cast<size_t>(t[1])].position;
    const Vec3 c = mesh.vertices[static_cast<size_t>(t[2])].position;
    return Cross(b - a, c - a);
}

static Vec3 FaceCentre(const Mesh& mesh, const MeshTriangle& t) {
    return (mesh.vertices[static_cast<size_t>(t[0])].position +
            mesh.vertices[static_cast<size_t>(t[1])].position +
            mesh.vertices[static_cast<size_t>(t[2])].position) *
           (1.0f / 3);
}

TEST_CASE("there are seven meshes, named in their order") {
    CHECK(Meshes().size() == 7);
    const std::wstring names[] = {L"Cube",   L"Pyramid", L"Ground",  L"Plane",
                                  L"Sphere", L"Capsule", L"Cylinder"};
    for (size_t i = 0; i < 7; ++i) CHECK(kBuiltinMeshNames[i] == names[i]);
}

TEST_CASE("the cube has the eight corners and twelve triangles of its table") {
    const Mesh& cube = Meshes()[0];
    const std::vector<MeshVertex> vertices = {
        {{-1, -1, -1}, Pixel{0x5053EF}}, {{1, -1, -1}, Pixel{0x4DB7FF}}, {{1, 1, -1}, Pixel{0x58EEFF}},
        {{-1, 1, -1}, Pixel{0x6ABB66}},  {{-1, -1, 1}, Pixel{0xF5A542}}, {{1, -1, 1}, Pixel{0xC2577E}},
        {{1, 1, 1}, Pixel{0xDAC626}},    {{-1, 1, 1}, Pixel{0x7A40EC}},
    };
    const std::vector<MeshTriangle> triangles = {{0, 2, 1}, {0, 3, 2}, {4, 5, 6}, {4, 6, 7},
                                                 {0, 1, 5}, {0, 5, 4}, {2, 3, 7}, {2, 7, 6},
                                                 {1, 2, 6}, {1, 6, 5}, {0, 4, 7}, {0, 7, 3}};
    CHECK(cube.vertices == vertices);
    CHECK(cube.triangles == triangles);
}

TEST_CASE("the pyramid has a base, an apex at 1.2 and six triangles") {
    const Mesh& pyramid = Meshes()[1];
    const std::vector<MeshVertex> vertices = {{{-1, -1, -1}, Pixel{0x5372F4}},
                                              {{1, -1, -1}, Pixel{0x4CB8F7}},
                                              {{1, -1, 1}, Pixel{0x75BE6C}},
                                              {{-1, -1, 1}, Pixel{0xDC9C40}},
                                              {{0, 1.2f, 0}, Pixel{0x6BE7F6}}};
    const std::vector<MeshTriangle> triangles = {{0, 1, 2}, {0, 2, 3}, {0, 4, 1},
                                                 {1, 4, 2}, {2, 4, 3}, {3, 4, 0}};
    CHECK(pyramid.vertices == vertices);
    CHECK(pyramid.triangles == triangles);
}

TEST_CASE("the ground lies at -1.05 from -9 to 11 in z and faces down") {
    const Mesh& ground = Meshes()[2];
    const std::vector<MeshVertex> vertices = {{{-9, -1.05f, -9}, Pixel{0x456037}},
                                              {{9, -1.05f, -9}, Pixel{0x4C744A}},
                                              {{9, -1.05f, 11}, Pixel{0x466946}},
                                              {{-9, -1.05f, 11}, Pixel{0x40542D}}};
    CHECK(ground.vertices == vertices);
    CHECK(ground.triangles == std::vector<MeshTriangle>{{0, 1, 2}, {0, 2, 3}});
    for (const MeshTriangle& t : ground.triangles) CHECK(FaceNormal(ground, t).y < 0);
}

TEST_CASE("the plane is visible from both sides") {
    const Mesh& plane = Meshes()[3];
    const std::vector<MeshVertex> vertices = {{{-1, 0, -1}, Pixel{0xCDC694}},
                                              {{1, 0, -1}, Pixel{0xD8D2A0}},
                                              {{1, 0, 1}, Pixel{0xC4BA78}},
                                              {{-1, 0, 1}, Pixel{0xCAC280}}};
    CHECK(plane.vertices == vertices);
    CHECK(plane.triangles == std::vector<MeshTriangle>{{0, 2, 1}, {0, 3, 2}, {0, 1, 2}, {0, 2, 3}});
    CHECK(FaceNormal(plane, plane.triangles[0]).y > 0);
    CHECK(FaceNormal(plane, plane.triangles[2]).y < 0);
}

TEST_CASE("the gradient runs from warm below to cool above, and is limited beyond the ends") {
    CHECK(MeshGradientColor(-1.1f, 0) == Rgb(222, 159, 103));  // t = 0, s = 1/2
    CHECK(MeshGradientColor(1.1f, 0) == Rgb(178, 159, 173));   // t = 1
    CHECK(MeshGradientColor(0, 0.25f) == Rgb(200, 182, 149));  // t = 1/2, s = 1
    CHECK(MeshGradientColor(-5, 0) == MeshGradientColor(-1.1f, 0));
    CHECK(MeshGradientColor(5, 0) == MeshGradientColor(1.1f, 0));
    CHECK((static_cast<uint32_t>(MeshGradientColor(-1, 0)) >> 16) == 0xDC);  // the Cylinder's bottom
}

TEST_CASE("the cylinder alternates bottom and top ring vertices and ends with its two centres") {
    const Mesh& cylinder = Meshes()[6];
    REQUIRE(cylinder.vertices.size() == 50);
    CHECK(cylinder.triangles.size() == 96);
    for (size_t i = 0; i < 24; ++i) {
        const double a = 2 * kPi * static_cast<double>(i) / 24;
        CAPTURE(i);
        CHECK(IsClose(cylinder.vertices[2 * i].position, std::cos(a), -1, std::sin(a)));
        CHECK(IsClose(cylinder.vertices[2 * i + 1].position, std::cos(a), 1, std::sin(a)));
        CHECK(
            IsCloseColor(cylinder.vertices[2 * i].color, ExpectedGradient(-1, static_cast<double>(i) / 24)));
        CHECK(IsCloseColor(cylinder.vertices[2 * i + 1].color,
                           ExpectedGradient(1, static_cast<double>(i) / 24)));
    }
    CHECK(cylinder.vertices[48] == MeshVertex{{0, -1, 0}, MeshGradientColor(-1, 0)});
    CHECK(cylinder.vertices[49] == MeshVertex{{0, 1, 0}, MeshGradientColor(1, 0.5f)});
}

TEST_CASE("the sphere has its top pole, eleven rings of twenty from the top, and its bottom pole") {
    const Mesh& sphere = Meshes()[4];
    REQUIRE(sphere.vertices.size() == 222);
    CHECK(sphere.triangles.size() == 440);
    CHECK(sphere.vertices[0] == MeshVertex{{0, 1, 0}, MeshGradientColor(1, 0)});
    for (size_t k = 1; k <= 11; ++k) {
        const double phi = static_cast<double>(k) * kPi / 12;
        for (size_t i = 0; i < 20; ++i) {
            const double a = 2 * kPi * static_cast<double>(i) / 20, r = std::sin(phi);
            const MeshVertex& vertex = sphere.vertices[1 + (k - 1) * 20 + i];
            CHECK(IsClose(vertex.position, std::cos(a) * r, std::cos(phi), std::sin(a) * r));
            CHECK(IsCloseColor(vertex.color, ExpectedGradient(std::cos(phi), static_cast<double>(i) / 20)));
        }
    }
    CHECK(sphere.vertices[221] == MeshVertex{{0, -1, 0}, MeshGradientColor(-1, 0.5f)});
}

TEST_CASE("the capsule has its bottom pole, ten rings of twenty from the bottom, and its top pole") {
    const Mesh& capsule = Meshes()[5];
    REQUIRE(capsule.vertices.size() == 202);
    CHECK(capsule.triangles.size() == 400);
    std::vector<std::pair<double, double>> profile;  // height, radius
    for (int k = 1; k <= 4; ++k) {
        const double theta = k * (kPi / 2) / 5 - kPi / 2;
        profile.emplace_back(std::sin(theta) * 0.65 - 0.45, std::cos(theta) * 0.65);
    }
    profile.emplace_back(-0.45, 0.65);
    profile.emplace_back(0.45, 0.65);
    for (int k = 1; k <= 4; ++k) {
        const double theta = k * (kPi / 2) / 5;
        profile.emplace_back(std::sin(theta) * 0.65 + 0.45, std::cos(theta) * 0.65);
    }
    CHECK(capsule.vertices[0] == MeshVertex{{0, -1.1f, 0}, MeshGradientColor(-1, 0)});
    for (size_t k = 0; k < 10; ++k) {
        const auto [y, r] = profile[k];
        for (size_t i = 0; i < 20; ++i) {
            const double a = 2 * kPi * static_cast<double>(i) / 20;
            const MeshVertex& vertex = capsule.vertices[1 + k * 20 + i];
            CHECK(IsClose(vertex.position, std::cos(a) * r, y, std::sin(a) * r));
            CHECK(IsCloseColor(vertex.color, ExpectedGradient(y, static_cast<double>(i) / 20)));
        }
    }
    CHECK(capsule.vertices[201] == MeshVertex{{0, 1.1f, 0}, MeshGradientColor(1, 0.5f)});
}

TEST_CASE("every face of a solid looks outward") {
    for (size_t index : {0u, 1u, 4u, 5u, 6u}) {
        const Mesh& mesh = Meshes()[index];
        CAPTURE(index);
        for (const MeshTriangle& t : mesh.triangles) {
            // All solids are convex around a point near the origin.
            CHECK(Dot(FaceNormal(mesh, t), FaceCentre(mesh, t) - Vec3{0, -0.5f, 0}) > 0);
        }
    }
}

TEST_CASE("the generated solids are closed: every edge belongs to two faces that run it both ways") {
    for (size_t index : {0u, 1u, 4u, 5u, 6u}) {
        const Mesh& mesh = Meshes()[index];
        CAPTURE(index);
        std::map<std::pair<int32_t, int32_t>, int> edges;
        for (const MeshTriangle& t : mesh.triangles) {
            for (size_t i = 0; i < 3; ++i) ++edges[{t[i], t[(i + 1) % 3]}];
        }
        for (const auto& [edge, count] : edges) {
            CHECK(count == 1);
            CHECK(edges.contains({edge.second, edge.first}));
        }
    }
}

TEST_CASE("every triangle names vertices of its mesh") {
    for (const Mesh& mesh : Meshes()) {
        for (const MeshTriangle& t : mesh.triangles) {
            for (int32_t i : t) {
                CHECK(i >= 0);
                CHECK(static_cast<size_t>(i) < mesh.vertices.size());
            }
        }
    }
}
