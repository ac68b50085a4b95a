// The first frames of the sample projects, because they are what users draw.
#include "bench_scenes.h"

#include "formats/project_file.h"
#include "platform/files.h"
#include "project/project_folder.h"
#include "render/raster/camera.h"
#include "scene/editor_camera.h"
#include "scene/transform.h"
#include "state/editor_state.h"
#include "viewport/scene_view.h"

#include <deque>

// Outlives the state that the projects are read into.
struct LoadedSample {
    std::vector<MeshAsset> meshes{};
    std::vector<TextureImage> textures{};
    std::vector<GameObject> objects{};
};

static const LoadedSample& Load(const std::wstring& name) {
    static std::deque<LoadedSample> loaded;
    editorState = EditorState{};
    const std::wstring folder = AbsolutePath(L"" ZEL_SOURCE_DIR "/sample/" + name);
    SetProjectFolder(folder);
    if (!ReadProjectFile(folder)) editorState = EditorState{};
    return loaded.emplace_back(editorState.meshes, editorState.textures, editorState.scene);
}

static const TextureImage* TextureOf(const LoadedSample& sample, const GameObject& object) {
    const bool isKnown = object.hasTexture && object.textureIndex >= 0 &&
                         static_cast<size_t>(object.textureIndex) < sample.textures.size();
    return isKnown ? &sample.textures[static_cast<size_t>(object.textureIndex)] : nullptr;
}

static BenchScene FrameOf(const std::string& name, const LoadedSample& sample, int32_t width,
                          int32_t height) {
    BenchScene scene{name + " at " + std::to_string(width) + " x " + std::to_string(height)};
    scene.width = width;
    scene.height = height;
    scene.background = ViewportBackground(sample.objects, -1, true);
    const CameraPose camera = ActiveCamera(sample.objects, editorState.camera, true);
    MeshDraw frame{.eye = camera.position, .light = LightDirection(sample.objects)};
    frame.viewProjection = MultiplyMatrix(ProjectionMatrix(width, height), ViewMatrix(camera));
    for (size_t i = 0; i < sample.objects.size(); ++i) {
        const GameObject& object = sample.objects[i];
        if (!IsShown(object, true) || !ShowsMesh(object, sample.meshes.size())) continue;
        MeshDraw draw = frame;
        draw.world = WorldMatrix(sample.objects, static_cast<int32_t>(i));
        draw.tint = object.hasColor ? object.color : 0;
        draw.roughness = object.roughness;
        draw.gloss = object.gloss;
        draw.texture = TextureOf(sample, object);
        draw.repeat = object.textureRepeat;
        scene.objects.push_back({&sample.meshes[static_cast<size_t>(object.meshIndex)].mesh, draw});
    }
    return scene;
}

const std::vector<BenchScene>& SampleScenes() {
    static const std::vector<BenchScene> scenes = [] {
        std::vector<BenchScene> made;
        for (const auto& [name, folder] : {std::pair{"Project", L"Project"}, std::pair{"Dive", L"Dive"},
                                           std::pair{"Harvest", L"Harvest"}}) {
            const LoadedSample& sample = Load(folder);
            for (auto [width, height] : {std::pair{1360, 820}, {1920, 1080}, {3840, 2160}})
                made.push_back(FrameOf(name, sample, width, height));
        }
        return made;
    }();
    return scenes;
}
