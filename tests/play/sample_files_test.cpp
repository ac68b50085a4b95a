#include "formats/prefab.h"
#include "formats/scene_file.h"
#include "platform/files.h"
#include "scene/object_fields.h"
#include "support/sample_project.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <string>
#include <vector>

namespace {

struct SampleFiles {
    std::wstring project{};
    std::vector<std::wstring> scenes{};  // the one that opens first
    std::vector<std::wstring> prefabs{};
};

}  // namespace

static const SampleFiles kSamples[] = {
    {L"Project", {L"Main.scene", L"Level2.scene"}, {L"Coin.prefab", L"Tree.prefab", L"Lamp.prefab"}},
    {L"Dive",
     {L"Main.scene", L"Reef.scene"},
     {L"Pearl.prefab", L"Star.prefab", L"Jellyfish.prefab", L"Shoal.prefab", L"Bubbles.prefab"}},
    {L"Harvest", {L"Main.scene"}, {L"Apple.prefab", L"Snail.prefab", L"Mushroom.prefab"}},
};

TEST_CASE("everything that the samples' scenes refer to exists") {
    for (const SampleFiles& sample : kSamples) {
        OpenSample(sample.project);
        for (const std::wstring& scene : sample.scenes) {
            REQUIRE(LoadScene(InSample(L"Files\\Scenes\\" + scene)));
            for (const GameObject& object : editorState.scene) {
                CHECK(object.hasTexture == !object.texturePath.empty());
                CHECK((object.meshIndex >= 0) != object.isText);
                for (const std::wstring* prefab :
                     {&object.collectPrefab, &object.prefabSource, &object.spawnerPrefab}) {
                    if (!prefab->empty()) CHECK(KindOfPath(*prefab) == PathKind::File);
                }
            }
        }
    }
}

TEST_CASE("the prefabs placed in the samples match their files, except for name, place and rotation") {
    for (const SampleFiles& sample : kSamples) {
        OpenSample(sample.project);
        for (const std::wstring& scene : sample.scenes) {
            REQUIRE(LoadScene(InSample(L"Files\\Scenes\\" + scene)));
            const Scene objects = editorState.scene;
            for (size_t i = 0; i < objects.size(); ++i) {
                if (objects[i].prefabSource.empty() || objects[i].parentIndex >= 0) continue;
                Scene tree;
                REQUIRE(LoadPrefab(objects[i].prefabSource, tree));
                REQUIRE(i + tree.size() <= objects.size());
                for (size_t part = 0; part < tree.size(); ++part) {
                    GameObject expected = tree[part];
                    const GameObject& placed = objects[i + part];
                    expected.prefabSource = objects[i].prefabSource;
                    if (part == 0) {
                        expected.name = placed.name;
                        expected.position = placed.position;
                        expected.rotation = placed.rotation;
                    } else {
                        expected.parentIndex += static_cast<int32_t>(i);
                    }
                    CHECK(SameBits(expected, placed));
                }
            }
        }
    }
}

// A failed check of two long files then shows only false.
static bool HoldTheSame(const std::wstring& path, const std::wstring& other) {
    return FileBytes(path) == FileBytes(other);
}

// The bytes after the given beginning.
static std::string Behind(const std::string& bytes, const std::string& beginning) {
    REQUIRE(bytes.starts_with(beginning));
    return bytes.substr(beginning.size());
}

TEST_CASE("scenes, prefabs and project files of the samples are what the program would save, byte for byte") {
    for (const SampleFiles& sample : kSamples) {
        const ScratchFolder saved;
        OpenSample(sample.project);
        for (const std::wstring& name : sample.scenes) {
            const std::wstring scene = InSample(L"Files\\Scenes\\" + name);
            REQUIRE(LoadScene(scene));
            REQUIRE(SaveScene(saved / name));
            CHECK(HoldTheSame(saved / name, scene));
        }
        for (const std::wstring& name : sample.prefabs) {
            const std::wstring prefab = InSample(L"Files\\Prefabs\\" + name);
            Scene objects;
            REQUIRE(LoadPrefab(prefab, objects));
            REQUIRE(WritePrefab(saved / name, objects));
            CHECK(HoldTheSame(saved / name, prefab));
        }
        const std::string project = FileBytes(InSample(L"project.zel"));
        const std::string scene = FileBytes(InSample(L"Files\\Scenes\\Main.scene"));
        CHECK(Behind(project,
                     "\xEF\xBB\xBFZELENGINE_PROJECT\t1\r\nFILES\tFiles\r\n"
                     "CURRENT_SCENE\tFiles\\Scenes\\Main.scene\r\n") ==
              Behind(scene, "\xEF\xBB\xBFZELENGINE_SCENE\t1\r\n"));
    }
}
