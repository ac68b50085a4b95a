#include "viewport/pick.h"

#include "render/builtin_meshes.h"
#include "render/icons.h"
#include "render/raster/camera.h"
#include "render/raster/draw_mesh.h"
#include "scene/transform.h"
#include "support/picture.h"
#include "support/random_scene.h"

#include "doctest/doctest.h"

static const std::vector<MeshAsset>& Meshes() {
    static const std::vector<MeshAsset> meshes = BuiltinMeshLibrary();
    return meshes;
}

// A camera at the origin that looks along +Z, on 120 x 90 pixels.
static PickView ViewOf(const Scene& scene) {
    return {.scene = scene,
            .meshes = Meshes(),
            .viewport{0, 0, 120, 90},
            .viewProjection = ProjectionMatrix(120, 90)};
}

namespace {
// Every icon is there for the length of a test.
struct KeptIcons {
    Icons before = icons;
    KeptIcons() { icons = {.camera = 0, .entity = 0, .light = 0}; }
    ~KeptIcons() { icons = before; }
};
}  // namespace

static int32_t PickMiddle(const Scene& scene, bool playMode = false) {
    StartPicture(120, 90);
    PickView view = ViewOf(scene);
    view.playMode = playMode;
    return PickObject(view, {60, 45});
}

TEST_CASE("the nearest mesh under a pixel is picked, in whatever order the scene has them") {
    const GameObject nearCube{.position{0, 0, 4}, .meshIndex = 0},
        farCube{.position{0, 0, 9}, .meshIndex = 0};
    CHECK(PickMiddle({nearCube, farCube}) == 0);
    CHECK(PickMiddle({farCube, nearCube}) == 1);
    CHECK(PickMiddle({}) == -1);
}

TEST_CASE("of two meshes at the same depth the one drawn first is picked") {
    const GameObject cube{.position{0, 0, 4}, .meshIndex = 0};
    CHECK(PickMiddle({cube, cube}) == 0);
}

TEST_CASE("only what is drawn can be picked") {
    GameObject cube{.position{0, 0, 4}, .meshIndex = 0};
    CHECK(PickMiddle({cube}) == 0);
    GameObject other = cube;
    other.active = false;
    CHECK(PickMiddle({other}) == -1);
    other = cube;
    other.hasShape = false;
    CHECK(PickMiddle({other}) == -1);
    for (int32_t index : {-1, 7, 1000}) {
        other = cube;
        other.meshIndex = index;
        CHECK(PickMiddle({other}) == -1);
    }
    other = cube;
    other.isCamera = true;
    CHECK(PickMiddle({other}) == 0);
    CHECK(PickMiddle({other}, true) == -1);  // Play mode shows no camera
    CHECK(PickMiddle({{.position{0, 0, 4}}}) == -1);
}

TEST_CASE("an object under 1,099 parents is picked where the sum of them puts it") {
    const KeptIcons withIcons;
    StartPicture(120, 90);
    Scene scene(1100);
    for (int32_t i = 0; i < 1100; ++i)
        scene[static_cast<size_t>(i)] = {.position{1, 0, 0}, .parentIndex = i - 1};
    scene.back().meshIndex = 0;
    PickView view = ViewOf(scene);
    view.eye = {1100, 0, -4};
    view.viewProjection = MultiplyMatrix(ProjectionMatrix(120, 90), ViewMatrix({view.eye, 0, 0}));
    CHECK(PickObject(view, {60, 45}) == 1099);
    scene.back() = {.position{1, 0, 0}, .parentIndex = 1098, .isEntity = true};
    view.scene = scene;
    CHECK(PickObject(view, {60, 45}) == 1099);
}

TEST_CASE("a face that turns its back is not picked") {
    // The Ground faces down: from above it is not drawn.
    StartPicture(120, 90);
    const Scene scene{{.meshIndex = kGroundMesh}};
    const CameraPose above{{0, 4, -10}, 0, -0.5f};
    PickView view = ViewOf(scene);
    view.viewProjection = MultiplyMatrix(ProjectionMatrix(120, 90), ViewMatrix(above));
    view.eye = above.position;
    CHECK(PickObject(view, {60, 45}) == -1);
    const CameraPose below{{0, -6, -10}, 0, 0.4f};
    view.viewProjection = MultiplyMatrix(ProjectionMatrix(120, 90), ViewMatrix(below));
    view.eye = below.position;
    CHECK(PickObject(view, {60, 45}) == 0);
}

TEST_CASE("icons and texts win over meshes, the later one over the earlier") {
    const KeptIcons kept;
    const GameObject cube{.position{0, 0, 3}, .meshIndex = 0};
    const GameObject entity{.position{0, 0, 8}, .isEntity = true};
    const GameObject text{.position{0, 0, 8}, .isText = true, .text = L"Ahoj"};
    CHECK(PickMiddle({cube, entity}) == 1);
    CHECK(PickMiddle({entity, cube}) == 0);
    CHECK(PickMiddle({entity, text, cube}) == 1);
    CHECK(PickMiddle({text, entity, cube}) == 1);
    CHECK(PickMiddle({entity, cube}, true) == 1);
    CHECK(PickMiddle({text, cube}, true) == 0);
}

TEST_CASE("a marker whose image is missing is not picked, unless another of its images is there") {
    const GameObject cube{.position{0, 0, 9}, .meshIndex = 0};
    struct {
        bool GameObject::*role;
        CanvasImage Icons::*icon;
    } cases[] = {{&GameObject::isEntity, &Icons::entity},
                 {&GameObject::isCamera, &Icons::camera},
                 {&GameObject::isLight, &Icons::light}};
    for (const auto& [role, icon] : cases) {
        GameObject marker{.position{0, 0, 8}};
        marker.*role = true;
        const KeptIcons kept;
        CHECK(PickMiddle({marker, cube}) == 0);
        icons.*icon = -1;
        CHECK(PickMiddle({marker, cube}) == 1);
        marker.isEntity = marker.isLight = true;
        CHECK(PickMiddle({marker, cube}) == 0);
        icons = {};
        CHECK(PickMiddle({marker, cube}) == 1);
        CHECK(PickMiddle({marker}) == -1);
        marker.meshIndex = 0;  // its mesh is drawn all the same
        CHECK(PickMiddle({marker}) == 0);
    }
}

TEST_CASE("an icon is picked on its 24 pixels, a text on its letters") {
    const KeptIcons kept;
    StartPicture(120, 90);
    const Scene entity{{.position{0, 0, 8}, .isEntity = true}};
    CHECK(PickObject(ViewOf(entity), {48, 33}) == 0);
    CHECK(PickObject(ViewOf(entity), {47, 33}) == -1);
    CHECK(PickObject(ViewOf(entity), {71, 56}) == 0);
    CHECK(PickObject(ViewOf(entity), {72, 56}) == -1);
    const Scene text{{.position{0, 0, 8}, .isText = true, .text = L"Ahoj", .textSize = 20}};
    CHECK(PickObject(ViewOf(text), {60, 45}) == 0);
    CHECK(PickObject(ViewOf(text), {99, 64}) == 0);  // four letters of 10 by 20 pixels
    CHECK(PickObject(ViewOf(text), {100, 64}) == -1);
    CHECK(PickObject(ViewOf(text), {99, 65}) == -1);
    CHECK(PickObject(ViewOf(text), {59, 45}) == -1);
}

TEST_CASE("nothing is picked outside the viewport, and what the frame buffer shows does not count") {
    StartPicture(120, 90);
    frameBuffer.viewport = {};
    const Scene scene{{.position{0, 0, 1.5f}, .scale{9, 9, 0.1f}, .meshIndex = 0}};
    PickView view = ViewOf(scene);
    view.viewport = {40, 30, 80, 60};
    for (Point p : {Point{39, 45}, {80, 45}, {60, 29}, {60, 60}, {-5, -5}, {100000, 100000}}) {
        CHECK(PickObject(view, p) == -1);
    }
    CHECK(PickObject(view, {60, 45}) == 0);
    const KeptIcons kept;
    const Scene entity{{.position{0, 0, 8}, .isEntity = true}};
    view.scene = entity;
    view.viewport = {60, 0, 180, 90};
    CHECK(PickObject(view, {120, 45}) == 0);
    CHECK(PickObject(view, {61, 45}) == -1);
}

TEST_CASE("what is picked at a pixel is what was drawn there") {
    RandomSource random(31);
    for (int round = 0; round < 60; ++round) {
        Scene scene;
        for (int i = 0; i < 6; ++i) {
            scene.push_back({.position{random.Between(-3, 3), random.Between(-2, 2), random.Between(-1, 9)},
                             .rotation{random.Between(-3, 3), random.Between(-3, 3), random.Between(-3, 3)},
                             .meshIndex = random.IntBetween(0, 6)});
        }
        // Each object is drawn alone in its own colour: untextured faces of the same colour tell who was
        // nearest.
        StartPicture(60, 45);
        std::vector<int32_t> shown(60 * 45, -1);
        const Matrix4 vp = ProjectionMatrix(60, 45);
        for (int32_t i = 0; i < 6; ++i) {
            const PixelValues<float> before = frameBuffer.depth;
            MeshDraw draw{.viewProjection = vp};
            draw.world = WorldMatrix(scene, i);
            DrawMesh(Meshes()[static_cast<size_t>(scene[static_cast<size_t>(i)].meshIndex)].mesh, draw,
                     frameBuffer);
            for (size_t p = 0; p < shown.size(); ++p) {
                if (frameBuffer.depth[p] != before[p]) shown[p] = i;
            }
        }
        const PickView view{
            .scene = scene, .meshes = Meshes(), .viewport{0, 0, 60, 45}, .viewProjection = vp};
        for (int32_t y = 0; y < 45; y += 4) {
            for (int32_t x = 0; x < 60; x += 3) {
                CHECK(PickObject(view, {x, y}) == shown[static_cast<size_t>(y * 60 + x)]);
            }
        }
    }
}
