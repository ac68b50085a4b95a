#include "bench_scenes.h"

#include "render/builtin_meshes.h"
#include "render/raster/camera.h"
#include "render/raster/mesh_measures.h"
#include "scene/default_scenes.h"
#include "scene/editor_camera.h"
#include "scene/transform.h"
#include "state/editor_state.h"
#include "viewport/scene_view.h"

static const Mesh& Builtin(int32_t index) {
    static const std::vector<Mesh> meshes = BuildBuiltinMeshes();
    return meshes[static_cast<size_t>(index)];
}

static MeshDraw FrameOf(const CameraPose& camera) {
    return {
        .eye = camera.position,
        .light = Normalise({0.46f, 0.77f, -0.61f}),
        .viewProjection = MultiplyMatrix(ProjectionMatrix(kBenchWidth, kBenchHeight), ViewMatrix(camera))};
}

static BenchScene DefaultScene() {
    editorState = EditorState{};
    resetScene(true);
    MeshDraw frame = FrameOf(editorState.camera);
    frame.light = LightDirection(editorState.scene);
    BenchScene scene{"default scene"};
    for (int32_t i = 0; i < static_cast<int32_t>(editorState.scene.size()); ++i) {
        const GameObject& object = editorState.scene[static_cast<size_t>(i)];
        if (object.meshIndex < 0) continue;
        frame.world = WorldMatrix(editorState.scene, i);
        scene.objects.push_back({&Builtin(object.meshIndex), frame});
    }
    return scene;
}

// `side` cubed objects, all of them in view.
static BenchScene Grid(std::string name, int32_t mesh, int32_t side, float size,
                       const TextureImage* texture) {
    MeshDraw frame = FrameOf({{0, 12, -26}, 0, -0.35f});
    frame.texture = texture;
    BenchScene scene{std::move(name)};
    const float pitch = 22.0f / static_cast<float>(side);
    const auto place = [pitch, side](int32_t i) {
        return (static_cast<float>(i) - static_cast<float>(side - 1) / 2) * pitch;
    };
    for (int32_t z = 0; z < side; ++z) {
        for (int32_t y = 0; y < side; ++y) {
            for (int32_t x = 0; x < side; ++x) {
                frame.world =
                    LocalMatrix({place(x), place(y), place(z) + 8}, {0.3f, 0.5f, 0}, {size, size, size});
                scene.objects.push_back({&Builtin(mesh), frame});
            }
        }
    }
    return scene;
}

static const Mesh& Quad() {
    static const Mesh quad = [] {
        Mesh made{{{{-1, -1, 0}, Pixel{0x808080}},
                   {{1, -1, 0}, Pixel{0x80FF80}},
                   {{1, 1, 0}, Pixel{0x8080FF}},
                   {{-1, 1, 0}, Pixel{0xFF8080}}},
                  {{0, 2, 1}, {0, 3, 2}}};
        MeasureMesh(made);
        return made;
    }();
    return quad;
}

// Twenty quads that each cover the whole viewport.
static BenchScene Quads(std::string name, bool backToFront) {
    BenchScene scene{std::move(name)};
    MeshDraw frame = FrameOf({{0, 0, 0}, 0, 0});
    for (int32_t i = 0; i < 20; ++i) {
        const auto distance = static_cast<float>(backToFront ? 24 - i : 5 + i);
        frame.world = LocalMatrix({0, 0, distance}, {}, {distance, distance, 1});
        scene.objects.push_back({&Quad(), frame});
    }
    return scene;
}

static const TextureImage& Texture() {
    static const TextureImage image = [] {
        TextureImage made{.width = 256, .height = 256};
        for (uint32_t i = 0; i < 256 * 256; ++i) made.texels.push_back(Pixel{(i * 2654435761u) >> 8});
        return made;
    }();
    return image;
}

BenchScene SpheresInView(int32_t count) {
    int32_t side = 1;
    while (side * side * side < count) ++side;
    const std::string name = std::to_string(count) + " spheres in view";
    BenchScene scene = Grid(name, kSphereMesh, side, 7.0f / static_cast<float>(side), nullptr);
    scene.objects.resize(static_cast<size_t>(count));
    return scene;
}

BenchScene SpheresBehindWall(WallPlace place) {
    BenchScene scene = SpheresInView(10'000);
    if (place == WallPlace::None) return scene;
    BenchObject wall{&Builtin(kCubeMesh), scene.objects[0].draw};
    // Six units before the camera of the grid, turned to it.
    wall.draw.world = LocalMatrix({0, 9.94f, -20.36f}, {0.35f, 0, 0}, {8, 8, 0.05f});
    scene.objects.insert(place == WallPlace::First ? scene.objects.begin() : scene.objects.end(), wall);
    return scene;
}

static BenchScene ManySpheres() {
    BenchScene scene = Grid("10,000 spheres", kSphereMesh, 22, 0.3f, nullptr);
    scene.objects.resize(10'000);
    return scene;
}

const std::vector<BenchScene>& BenchScenes() {
    static const std::vector<BenchScene> scenes = {
        DefaultScene(),
        Grid("1,000 cubes", kCubeMesh, 10, 0.6f, nullptr),
        Grid("1,000 cubes, textured", kCubeMesh, 10, 0.6f, &Texture()),
        Grid("1,000 spheres", kSphereMesh, 10, 0.7f, nullptr),
        ManySpheres(),
        Quads("20 quads, back to front", true),
        Quads("20 quads, front to back", false),
    };
    return scenes;
}
