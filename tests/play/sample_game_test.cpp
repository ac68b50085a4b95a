#include "formats/path_text.h"
#include "formats/prefab_file.h"
#include "formats/project_file.h"
#include "formats/scene_file.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "project/project_folder.h"
#include "scene/same_object.h"
#include "support/game.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <string_view>

static void OpenSample() {
    editorState = EditorState{};
    const std::wstring folder = AbsolutePath(L"" ZEL_SOURCE_DIR "/sample/Project");
    SetProjectFolder(folder);
    REQUIRE(ReadProjectFile(folder));
    RefreshAssetList();
}

static std::wstring InSample(std::wstring_view file) { return JoinPath(editorState.projectRoot, file); }

static GameObject& Named(std::wstring_view name) {
    const auto found = std::ranges::find(editorState.scene, name, &GameObject::name);
    REQUIRE(found != editorState.scene.end());
    return *found;
}

static void HoldFor(int32_t frames, std::initializer_list<char> keys) {
    Hold(keys);
    for (int32_t i = 0; i < frames; ++i) UpdatePlay(1.0f / 60);
    ReleaseKeys();
}

// Walks to the left wall, from there up and down to the right one in lanes of 1.2 units, and so back again.
// Nothing here looks where the coins lie.
static void PlaySample() {
    OpenSample();
    StartPlayMode();
    HoldFor(150, {'A'});
    for (int32_t lane = 0; lane < 26; ++lane) {
        HoldFor(240, {lane % 2 == 0 ? 'W' : 'S'});
        HoldFor(18, {lane < 13 ? 'D' : 'A'});
    }
}

TEST_CASE("the sample's walker collects coins, and each of them counts") {
    PlaySample();
    const auto taken = std::ranges::count_if(
        editorState.scene, [](const GameObject& object) { return object.name == L"Coin" && !object.active; });
    CHECK(taken >= 3);
    CHECK(editorState.score == taken);
    CHECK(Named(L"Score").text == L"Score: " + std::to_wstring(taken));
}

TEST_CASE("the sample's walls keep the walker in, and its crates come to rest on each other") {
    PlaySample();
    const Vec3 walker = Named(L"Walker").position;
    CHECK(std::abs(walker.x) < 8);
    CHECK(walker.y == doctest::Approx(0.66f - 0.06f + 0.001f));  // half its height above the lawn
    CHECK(walker.z > -4.3f);
    CHECK(walker.z < 10.3f);
    // Of half sizes 0.7, 0.55 and 0.42, with a gap of 0.001 below each, from the lawn up.
    CHECK(Named(L"Crate 1").position.y == doctest::Approx(-0.06f + 0.7f + 0.001f));
    CHECK(Named(L"Crate 2").position.y == doctest::Approx(-0.06f + 1.4f + 0.55f + 0.002f));
    CHECK(Named(L"Crate 3").position.y == doctest::Approx(-0.06f + 2.5f + 0.42f + 0.003f));
}

TEST_CASE("the same keys play the sample to the same scene, to the last bit") {
    PlaySample();
    const Scene first = editorState.scene;
    PlaySample();
    const Scene& second = editorState.scene;
    REQUIRE(first.size() == second.size());
    for (size_t i = 0; i < first.size(); ++i) {
        CHECK(SameBits(first[i], second[i]));
    }
}

TEST_CASE("behind the hedges of the sample's second scene lies a treasure that counts once") {
    OpenSample();
    REQUIRE(LoadScene(InSample(L"Files\\Scenes\\Level2.scene")));
    StartPlayMode();
    HoldFor(240, {'D'});
    HoldFor(75, {'W'});
    CHECK(editorState.score == 0);
    HoldFor(240, {'A'});
    HoldFor(75, {'W'});
    HoldFor(240, {'D'});
    HoldFor(84, {'W'});
    CHECK(editorState.score == 0);
    HoldFor(240, {'A'});
    CHECK(editorState.score == 1);
    CHECK_FALSE(Named(L"Treasure").active);
}

TEST_CASE("whatever the sample's scenes name is there") {
    OpenSample();
    for (const wchar_t* scene : {L"Main", L"Level2"}) {
        REQUIRE(LoadScene(InSample(L"Files\\Scenes\\" + std::wstring(scene) + L".scene")));
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

// The bytes after the given beginning.
static std::string Behind(const std::string& bytes, const std::string& beginning) {
    REQUIRE(bytes.starts_with(beginning));
    return bytes.substr(beginning.size());
}

TEST_CASE("the sample's scenes, prefabs and project file are what the program would save, byte for byte") {
    const ScratchFolder saved;
    OpenSample();
    for (const wchar_t* name : {L"Main.scene", L"Level2.scene"}) {
        const std::wstring scene = InSample(L"Files\\Scenes\\" + std::wstring(name));
        REQUIRE(LoadScene(scene));
        REQUIRE(SaveScene(saved / name));
        CHECK(FileBytes(saved / name) == FileBytes(scene));
    }
    for (const wchar_t* name : {L"Coin.prefab", L"Tree.prefab", L"Lamp.prefab"}) {
        const std::wstring prefab = InSample(L"Files\\Prefabs\\" + std::wstring(name));
        Scene objects;
        REQUIRE(LoadPrefab(prefab, objects));
        REQUIRE(WritePrefab(saved / name, objects));
        CHECK(FileBytes(saved / name) == FileBytes(prefab));
    }
    const std::string project = FileBytes(InSample(L"project.zel"));
    const std::string scene = FileBytes(InSample(L"Files\\Scenes\\Main.scene"));
    CHECK(Behind(project,
                 "\xEF\xBB\xBFZELENGINE_PROJECT\t1\r\nFILES\tFiles\r\n"
                 "CURRENT_SCENE\tFiles\\Scenes\\Main.scene\r\n") ==
          Behind(scene, "\xEF\xBB\xBFZELENGINE_SCENE\t1\r\n"));
}
