// Pictures of scenes. Sines and cosines differ between builds in the last bit, so matrices are written as
// numbers and the vertices of the round meshes are rounded. Highlights go through pow, which differs as
// well: a picture stays the same as long as no channel of a shining face comes that close to a whole number.
#include "render/builtin_meshes.h"
#include "render/raster/draw_mesh.h"
#include "support/golden.h"
#include "support/picture.h"
#include "support/plain_renderer.h"

#include "doctest/doctest.h"

#include <cmath>

namespace {

struct DrawnMesh {
    BuiltinMesh mesh = kCubeMesh;
    MeshDraw draw{};
};

}  // namespace

// The view of a new editor, 4 units up and 10 back, 0.24 radians down, on 200 x 150 pixels.
constexpr Matrix4 kEditorView{{{{1.07111086f, 0, 0, 0},
                                {0, 1.38721421f, 0.339474487f, -2.15411197f},
                                {0, -0.237940567f, 0.972310284f, 10.574765f},
                                {0, -0.237702626f, 0.971337975f, 10.6641903f}}}};
constexpr Vec3 kEditorEye{0, 4, -10};
// From "Directional Light": -0.7 about x, 0.4 about y.
constexpr Vec3 kSun{0.275360351f, 0.707106781f, 0.651288475f};
constexpr Vec3 kSunFromBehind{-0.275360351f, 0.707106781f, -0.651288475f};

// A camera at the origin that looks along +Z, on 200 x 150 pixels.
constexpr Matrix4 kOriginView{
    {{{1.07111086f, 0, 0, 0}, {0, 1.42814782f, 0, 0}, {0, 0, 1.001001f, -0.1001001f}, {0, 0, 1, 0}}}};

// Turned by angles with sine and cosine of 0.6 and 0.8: about y, then about x.
static Matrix4 TurnedAt(float x, float y) {
    return {{{{0.8f, 0, 0.6f, x}, {0.36f, 0.8f, -0.48f, y}, {-0.48f, 0.6f, 0.64f, 7}, {0, 0, 0, 1}}}};
}

static const TextureImage& Checkers() {
    static const TextureImage image = [] {
        TextureImage checkers{.width = 8, .height = 8};
        for (uint32_t i = 0; i < 64; ++i) {
            const bool light = (i % 8 + i / 8) % 2 == 0;
            checkers.texels.push_back(Pixel{light ? 0xE0E0E0 : 0x2040A0 + i * 0x020100});
        }
        return checkers;
    }();
    return image;
}

// The built-in meshes, those made of sines and cosines with their positions in 4096ths.
static std::vector<Mesh> RoundedMeshes() {
    std::vector<Mesh> meshes = BuildBuiltinMeshes();
    const auto rounded = [](float value) { return std::round(value * 4096) / 4096; };
    for (size_t mesh : {kSphereMesh, kCapsuleMesh, kCylinderMesh}) {
        for (MeshVertex& vertex : meshes[mesh].vertices) {
            const Vec3 p = vertex.position;
            vertex.position = {rounded(p.x), rounded(p.y), rounded(p.z)};
        }
    }
    return meshes;
}

// Draws twice: plainly, then as the program does. The golden picture and the depths must come out of both.
static bool DrawsTheGoldenPicture(const std::string& name, const std::vector<DrawnMesh>& scene) {
    static const std::vector<Mesh> meshes = RoundedMeshes();
    StartPicture(200, 150, Pixel{0x2D2219});
    for (const DrawnMesh& object : scene)
        DrawMeshPlainly(meshes[static_cast<size_t>(object.mesh)], object.draw);
    const std::vector<Pixel> plainPixels = headless.pixels;
    const PixelValues<float> plainDepth = frameBuffer.depth;

    StartPicture(200, 150, Pixel{0x2D2219});
    for (const DrawnMesh& object : scene)
        DrawMesh(meshes[static_cast<size_t>(object.mesh)], object.draw, frameBuffer);
    CHECK(headless.pixels == plainPixels);
    CHECK(frameBuffer.depth == plainDepth);
    return MatchesGolden(name);
}

TEST_CASE("the default scene shows an outlined cube before a platform, and no Ground from above") {
    const MeshDraw frame{.eye = kEditorEye, .light = kSun, .viewProjection = kEditorView};
    DrawnMesh player{kCubeMesh, frame}, platform{kCubeMesh, frame}, ground{kGroundMesh, frame};
    player.draw.world = {{{{1, 0, 0, 0}, {0, 1, 0, 0.35f}, {0, 0, 1, 2}, {0, 0, 0, 1}}}};
    player.draw.selected = true;
    platform.draw.world = {{{{1.28948539f, 0, 0.545185679f, 2.7f},
                             {0, 0.35f, 0, -0.25f},
                             {-0.545185679f, 0, 1.28948539f, 5.4f},
                             {0, 0, 0, 1}}}};
    CHECK(DrawsTheGoldenPicture("default_scene", {player, platform, ground}));
}

TEST_CASE("a chequered floor and a wall that begin behind the eye are cut at the near plane") {
    MeshDraw frame{.eye{0, 0, 0}, .light = kSunFromBehind, .viewProjection = kOriginView};
    DrawnMesh floor{kPlaneMesh, frame}, wall{kCubeMesh, frame};
    floor.draw.world = {{{{6, 0, 0, 0}, {0, 1, 0, -0.8f}, {0, 0, 30, 0}, {0, 0, 0, 1}}}};
    floor.draw.texture = &Checkers();
    floor.draw.repeat = true;
    wall.draw.world = {{{{0.3f, 0, 0, 1.2f}, {0, 2, 0, 0}, {0, 0, 9, 3}, {0, 0, 0, 1}}}};
    CHECK(DrawsTheGoldenPicture("near_plane", {floor, wall}));
}

TEST_CASE(
    "pictures lie on faces, stretched and repeated, under a tint, and beside plain and outlined faces") {
    const MeshDraw frame{.eye{0, 0, 0}, .light = kSunFromBehind, .viewProjection = kOriginView};
    DrawnMesh stretched{kCubeMesh, frame}, repeated{kCubeMesh, frame}, tinted{kCubeMesh, frame},
        tintedTexture{kPyramidMesh, frame}, plain{kPyramidMesh, frame}, flat{kPlaneMesh, frame};
    stretched.draw.world = TurnedAt(-3, 1.8f);
    stretched.draw.texture = &Checkers();
    repeated.draw.world = TurnedAt(0, 1.8f);
    repeated.draw.texture = &Checkers();
    repeated.draw.repeat = true;
    tinted.draw.world = TurnedAt(3, 1.8f);
    tinted.draw.tint = 0xC4CD4E;
    tinted.draw.roughness = 1;
    tintedTexture.draw.world = TurnedAt(-3, -1.6f);
    tintedTexture.draw.texture = &Checkers();
    tintedTexture.draw.tint = 0x0000FF;
    plain.draw.world = TurnedAt(0, -1.6f);
    plain.draw.roughness = 0;
    plain.draw.gloss = 1;
    flat.draw.world = TurnedAt(3, -1.6f);
    flat.draw.selected = true;
    CHECK(DrawsTheGoldenPicture("surfaces", {stretched, repeated, tinted, tintedTexture, plain, flat}));
}

TEST_CASE("spheres, capsules and cylinders look round, whether plain, outlined, tinted or textured") {
    // Without gloss there is no pow in it.
    const MeshDraw frame{.eye{0, 0, 0}, .light = kSunFromBehind, .viewProjection = kOriginView, .gloss = 0};
    const BuiltinMesh round[] = {kSphereMesh, kCapsuleMesh, kCylinderMesh};
    std::vector<DrawnMesh> scene;
    for (size_t column = 0; column < 3; ++column) {
        const float x = 3 * static_cast<float>(column) - 3;
        DrawnMesh plain{round[column], frame}, dressed{round[column], frame};
        plain.draw.world = TurnedAt(x, 1.8f);
        dressed.draw.world = TurnedAt(x, -1.6f);
        scene.push_back(plain);
        scene.push_back(dressed);
    }
    scene[1].draw.texture = &Checkers();
    scene[3].draw.tint = 0x0000FF;
    scene[4].draw.selected = true;
    scene[5].draw.texture = &Checkers();
    scene[5].draw.repeat = true;
    scene[5].draw.tint = 0xC4CD4E;
    CHECK(DrawsTheGoldenPicture("round_meshes", scene));
}
