#include "render/builtin_meshes.h"

#include "render/raster/mesh_measures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

constexpr float kPi = 3.14159265358979f;
constexpr int32_t kRoundSegments = 20;     // around Sphere and Capsule
constexpr int32_t kCylinderSegments = 24;  // around the Cylinder
constexpr int32_t kSphereBands = 12;       // pole to pole
constexpr int32_t kCapRings = 4;           // per hemisphere of the Capsule
constexpr float kCapsuleRadius = 0.65f;
constexpr float kCapsuleHalf = 0.45f;  // half of the straight part

static Mesh Cube() {
    return {
        {
            {{-1, -1, -1}, Pixel{0x5053EF}},
            {{1, -1, -1}, Pixel{0x4DB7FF}},
            {{1, 1, -1}, Pixel{0x58EEFF}},
            {{-1, 1, -1}, Pixel{0x6ABB66}},
            {{-1, -1, 1}, Pixel{0xF5A542}},
            {{1, -1, 1}, Pixel{0xC2577E}},
            {{1, 1, 1}, Pixel{0xDAC626}},
            {{-1, 1, 1}, Pixel{0x7A40EC}},
        },
        {
            {0, 2, 1},
            {0, 3, 2},  // back, -Z
            {4, 5, 6},
            {4, 6, 7},  // front, +Z
            {0, 1, 5},
            {0, 5, 4},  // bottom
            {2, 3, 7},
            {2, 7, 6},  // top
            {1, 2, 6},
            {1, 6, 5},  // right, +X
            {0, 4, 7},
            {0, 7, 3},  // left, -X
        },
    };
}

static Mesh Pyramid() {
    return {
        {
            {{-1, -1, -1}, Pixel{0x5372F4}},
            {{1, -1, -1}, Pixel{0x4CB8F7}},
            {{1, -1, 1}, Pixel{0x75BE6C}},
            {{-1, -1, 1}, Pixel{0xDC9C40}},
            {{0, 1.2f, 0}, Pixel{0x6BE7F6}},
        },
        {
            {0, 1, 2},
            {0, 2, 3},  // base
            {0, 4, 1},
            {1, 4, 2},
            {2, 4, 3},
            {3, 4, 0},  // sides
        },
    };
}

// Its front faces down: from above only the grid is visible.
static Mesh Ground() {
    return {
        {
            {{-9, -1.05f, -9}, Pixel{0x456037}},
            {{9, -1.05f, -9}, Pixel{0x4C744A}},
            {{9, -1.05f, 11}, Pixel{0x466946}},
            {{-9, -1.05f, 11}, Pixel{0x40542D}},
        },
        {{0, 1, 2}, {0, 2, 3}},
    };
}

// Two triangles for each side, so that it is visible from above and from below.
static Mesh Plane() {
    return {
        {
            {{-1, 0, -1}, Pixel{0xCDC694}},
            {{1, 0, -1}, Pixel{0xD8D2A0}},
            {{1, 0, 1}, Pixel{0xC4BA78}},
            {{-1, 0, 1}, Pixel{0xCAC280}},
        },
        {{0, 2, 1}, {0, 3, 2}, {0, 1, 2}, {0, 2, 3}},
    };
}

// One vertex a segment, on a circle about the y axis. Rings have no closing vertex; the last segment goes
// back to the first one.
static void AppendRing(Mesh& mesh, float y, float radius, int32_t segments) {
    for (int32_t i = 0; i < segments; ++i) {
        const float turn = static_cast<float>(i) / static_cast<float>(segments);
        const float a = 2 * kPi * turn;
        mesh.vertices.push_back(
            {{std::cos(a) * radius, y, std::sin(a) * radius}, MeshGradientColor(y, turn)});
    }
}

// Two triangles a segment between two rings, wound so that their fronts point outward.
static void AppendBand(Mesh& mesh, int32_t lowerRing, int32_t upperRing, int32_t segments) {
    for (int32_t i = 0; i < segments; ++i) {
        const int32_t j = (i + 1) % segments;
        mesh.triangles.push_back({lowerRing + i, upperRing + i, upperRing + j});
        mesh.triangles.push_back({lowerRing + i, upperRing + j, lowerRing + j});
    }
}

static void AppendTopFan(Mesh& mesh, int32_t pole, int32_t ring, int32_t segments) {
    for (int32_t i = 0; i < segments; ++i) {
        mesh.triangles.push_back({pole, ring + (i + 1) % segments, ring + i});
    }
}

static void AppendBottomFan(Mesh& mesh, int32_t pole, int32_t ring, int32_t segments) {
    for (int32_t i = 0; i < segments; ++i) {
        mesh.triangles.push_back({pole, ring + i, ring + (i + 1) % segments});
    }
}

// From the top pole down, ring by ring. Files refer to meshes by name only, but pictures depend on the order
// of the triangles: of two at the same depth the first one is seen.
static Mesh Sphere() {
    Mesh mesh;
    mesh.vertices.push_back({{0, 1, 0}, MeshGradientColor(1, 0)});
    for (int32_t k = 1; k < kSphereBands; ++k) {
        const float phi = static_cast<float>(k) * kPi / kSphereBands;
        AppendRing(mesh, std::cos(phi), std::sin(phi), kRoundSegments);
    }
    const auto bottomPole = static_cast<int32_t>(mesh.vertices.size());
    mesh.vertices.push_back({{0, -1, 0}, MeshGradientColor(-1, 0.5f)});

    AppendTopFan(mesh, 0, 1, kRoundSegments);
    for (int32_t k = 1; k < kSphereBands - 1; ++k) {
        const int32_t upperRing = 1 + (k - 1) * kRoundSegments;
        AppendBand(mesh, upperRing + kRoundSegments, upperRing, kRoundSegments);
    }
    AppendBottomFan(mesh, bottomPole, bottomPole - kRoundSegments, kRoundSegments);
    return mesh;
}

// From the bottom pole up: the rings of the lower cap, the two ends of the straight part, the rings of the
// upper cap.
static Mesh Capsule() {
    constexpr float kPole = 1.1f;                       // the tops of the two hemispheres
    constexpr float kStep = kPi / 2 / (kCapRings + 1);  // angle between the rings of a cap
    Mesh mesh;
    mesh.vertices.push_back({{0, -kPole, 0}, MeshGradientColor(-1, 0)});
    for (int32_t k = 1; k <= kCapRings; ++k) {
        const float theta = static_cast<float>(k) * kStep - kPi / 2;
        AppendRing(mesh, std::sin(theta) * kCapsuleRadius - kCapsuleHalf, std::cos(theta) * kCapsuleRadius,
                   kRoundSegments);
    }
    AppendRing(mesh, -kCapsuleHalf, kCapsuleRadius, kRoundSegments);
    AppendRing(mesh, kCapsuleHalf, kCapsuleRadius, kRoundSegments);
    for (int32_t k = 1; k <= kCapRings; ++k) {
        const float theta = static_cast<float>(k) * kStep;
        AppendRing(mesh, std::sin(theta) * kCapsuleRadius + kCapsuleHalf, std::cos(theta) * kCapsuleRadius,
                   kRoundSegments);
    }
    const auto topPole = static_cast<int32_t>(mesh.vertices.size());
    mesh.vertices.push_back({{0, kPole, 0}, MeshGradientColor(1, 0.5f)});

    AppendBottomFan(mesh, 0, 1, kRoundSegments);
    for (int32_t ring = 1; ring + kRoundSegments < topPole; ring += kRoundSegments) {
        AppendBand(mesh, ring, ring + kRoundSegments, kRoundSegments);
    }
    AppendTopFan(mesh, topPole, topPole - kRoundSegments, kRoundSegments);
    return mesh;
}

// Its ring vertices alternate bottom and top.
static Mesh Cylinder() {
    Mesh mesh;
    for (int32_t i = 0; i < kCylinderSegments; ++i) {
        const float turn = static_cast<float>(i) / kCylinderSegments;
        const float x = std::cos(2 * kPi * turn), z = std::sin(2 * kPi * turn);
        mesh.vertices.push_back({{x, -1, z}, MeshGradientColor(-1, turn)});
        mesh.vertices.push_back({{x, 1, z}, MeshGradientColor(1, turn)});
    }
    constexpr int32_t kBottomCentre = 2 * kCylinderSegments, kTopCentre = kBottomCentre + 1;
    mesh.vertices.push_back({{0, -1, 0}, MeshGradientColor(-1, 0)});
    mesh.vertices.push_back({{0, 1, 0}, MeshGradientColor(1, 0.5f)});

    for (int32_t i = 0; i < kCylinderSegments; ++i) {
        const int32_t j = (i + 1) % kCylinderSegments;
        const int32_t bottomI = 2 * i, topI = 2 * i + 1, bottomJ = 2 * j, topJ = 2 * j + 1;
        mesh.triangles.push_back({bottomI, topI, topJ});
        mesh.triangles.push_back({bottomI, topJ, bottomJ});
        mesh.triangles.push_back({kBottomCentre, bottomI, bottomJ});
        mesh.triangles.push_back({kTopCentre, topJ, topI});
    }
    return mesh;
}

Pixel MeshGradientColor(float height, float turn) {
    const float t = std::clamp((height + 1.1f) / 2.2f, 0.0f, 1.0f);
    const float s = std::sin(2 * kPi * turn) * 0.5f + 0.5f;
    const auto blue = static_cast<uint32_t>(t * 70 + 92 + s * 22) & 0xFF;
    const auto green = static_cast<uint32_t>(s * 46 + 136) & 0xFF;
    const auto red = static_cast<uint32_t>((1 - t) * 44 + 178) & 0xFF;
    return Pixel{red << 16 | green << 8 | blue};
}

std::vector<Mesh> BuildBuiltinMeshes() {
    std::vector<Mesh> meshes{Cube(), Pyramid(), Ground(), Plane(), Sphere(), Capsule(), Cylinder()};
    for (Mesh& mesh : meshes) MeasureMesh(mesh);
    return meshes;
}

std::vector<MeshAsset> BuiltinMeshLibrary() {
    std::vector<MeshAsset> library;
    for (Mesh& mesh : BuildBuiltinMeshes()) {
        library.push_back({.mesh = std::move(mesh), .name = kBuiltinMeshNames[library.size()]});
    }
    return library;
}
