#include "formats/prefab.h"

#include "platform/headless/fault_injection.h"
#include "scene/default_scenes.h"
#include "support/edited_scene.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>

using NameList = std::vector<std::wstring>;
using ParentList = std::vector<int32_t>;

constexpr const char* kHeader = "\xEF\xBB\xBFZELENGINE_PREFAB\t1\r\n";

// A line of 30 columns that names its object and its parent, and nothing more than it must.
static std::string Line(const std::string& name, int32_t parent) {
    return "O\t" + name + std::string(12, '\t') + std::to_string(parent) + std::string(16, '\t') + "\r\n";
}

// A line of 53 columns with a mesh and a texture.
static std::string LineWithFiles(const std::string& mesh, const std::string& texture) {
    return "O\tThing" + std::string(10, '\t') + mesh + std::string(26, '\t') + "1\t\t\t" + texture +
           std::string(12, '\t') + "\r\n";
}

static NameList Names(const Scene& objects) {
    NameList names;
    for (const GameObject& object : objects) names.push_back(object.name);
    return names;
}

static ParentList Parents(const Scene& objects) {
    ParentList parents;
    for (const GameObject& object : objects) parents.push_back(object.parentIndex);
    return parents;
}

static int64_t LineCount(const std::string& bytes) { return std::ranges::count(bytes, '\n'); }

TEST_CASE("a prefab is an object and all below it, each before its children, in scene order") {
    StartWithParents({-1, 5, 1, 1, -1, -1, 1, 3, 0});
    const Scene prefab = CollectPrefab(editorState.scene, 1);
    CHECK(Names(prefab) == NameList{L"o1", L"o2", L"o3", L"o7", L"o6"});
    CHECK(Parents(prefab) == ParentList{-1, 0, 0, 2, 0});
}

TEST_CASE("a prefab of an object in a cycle of parents holds each of them once, below a root") {
    StartWithParents({2, 0, 1});
    const Scene prefab = CollectPrefab(editorState.scene, 1);
    CHECK(Names(prefab) == NameList{L"o1", L"o2", L"o0"});
    CHECK(Parents(prefab) == ParentList{-1, 0, 1});
    StartWithParents({0});
    CHECK(Parents(CollectPrefab(editorState.scene, 0)) == ParentList{-1});
}

TEST_CASE("a prefab of a chain of 100,000 objects holds all of them") {
    editorState = EditorState{};
    for (int32_t i = 0; i < 100'000; ++i) editorState.scene.push_back({.parentIndex = i - 1});
    const Scene prefab = CollectPrefab(editorState.scene, 0);
    REQUIRE(prefab.size() == 100'000);
    CHECK(prefab.back().parentIndex == 99'998);
}

TEST_CASE("a prefab of a parent, two children and a grandchild has four lines behind its header") {
    const ScratchFolder folder;
    StartWithParents({-1, 0, 1, 0});
    CHECK(WritePrefab(folder / L"made\\here\\a.prefab", CollectPrefab(editorState.scene, 0)));
    const std::string bytes = FileBytes(folder / L"made\\here\\a.prefab");
    CHECK(bytes.starts_with(kHeader));
    CHECK(LineCount(bytes) == 5);
    CHECK(bytes.find("\r\nO\to0\t") != std::string::npos);
}

TEST_CASE("a parent that is not in the prefab is written as none") {
    const ScratchFolder folder;
    const Scene objects{{.parentIndex = 4}, {.parentIndex = 0}, {.parentIndex = 3}, {.parentIndex = -9}};
    CHECK(WritePrefab(folder / L"a.prefab", objects));
    Scene loaded;
    CHECK(LoadPrefab(folder / L"a.prefab", loaded));
    CHECK(Parents(loaded) == ParentList{-1, 0, 3, -1});
}

TEST_CASE("a prefab comes back from its file as it was written, and is written with the same bytes") {
    const ScratchFolder folder;
    resetScene(true);
    editorState.projectRoot = folder.path;
    Scene objects = editorState.scene;
    for (GameObject& object : objects) object.meshIndex = std::max(object.meshIndex, 0);
    objects[3].parentIndex = 2;
    objects[3].collectPrefab = folder / L"x.prefab";
    CHECK(WritePrefab(folder / L"a.prefab", objects));
    Scene loaded;
    CHECK(LoadPrefab(folder / L"a.prefab", loaded));
    CHECK(loaded == objects);
    CHECK(WritePrefab(folder / L"b.prefab", loaded));
    CHECK(FileBytes(folder / L"a.prefab") == FileBytes(folder / L"b.prefab"));
}

TEST_CASE("a prefab is read like a scene, but an empty one gets no default objects") {
    const ScratchFolder folder;
    for (const std::string& bytes : {std::string(kHeader) + Line("a", -1) + "broken\r\n\r\n" + Line("b", 0),
                                     Line("a", -1) + Line("b", 0)}) {
        PutFile(folder / L"in.prefab", bytes);
        Scene objects{{.name = L"old"}};
        CHECK(LoadPrefab(folder / L"in.prefab", objects));
        CHECK(Names(objects) == NameList{L"a", L"b"});
        CHECK(Parents(objects) == ParentList{-1, 0});
    }
    for (const std::string& bytes : {std::string(kHeader), std::string{}}) {
        PutFile(folder / L"in.prefab", bytes);
        Scene objects{{.name = L"old"}};
        CHECK(LoadPrefab(folder / L"in.prefab", objects));
        CHECK(objects.empty());
    }
}

TEST_CASE("a prefab that cannot be read gives no objects and changes no scene") {
    const ScratchFolder folder;
    resetScene(true);
    Scene objects{{.name = L"old"}};
    CHECK_FALSE(LoadPrefab(folder / L"missing.prefab", objects));
    CHECK(objects.empty());
    CHECK(editorState.scene.size() == 6);
}

TEST_CASE("a prefab that cannot be written leaves the old file") {
    const ScratchFolder folder;
    PutFile(folder / L"a.prefab", "old");
    fileFaults = {.failStep = 1, .failFollowing = true};
    CHECK_FALSE(WritePrefab(folder / L"a.prefab", Scene{{.name = L"new"}}));
    fileFaults = {};
    CHECK(FileBytes(folder / L"a.prefab") == "old");
}

TEST_CASE("models and images that a prefab names are loaded once, missing ones leave the object without") {
    const ScratchFolder folder;
    resetScene(false);
    editorState.projectRoot = folder.path;
    PutFile(folder / L"box.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    PutFile(folder / L"dot.bmp", OnePixelBitmap());
    PutFile(folder / L"a.prefab", LineWithFiles("file:box.obj", "dot.bmp") +
                                      LineWithFiles("file:box.obj", "dot.bmp") +
                                      LineWithFiles("file:gone.obj", "gone.bmp"));
    Scene objects;
    CHECK(LoadPrefab(folder / L"a.prefab", objects));
    REQUIRE(objects.size() == 3);
    CHECK(editorState.meshes.size() == 8);
    CHECK(editorState.textures.size() == 1);
    CHECK(objects[1].meshIndex == 7);
    CHECK(objects[1].textureIndex == 0);
    CHECK(objects[1].hasTexture);
    CHECK(objects[2].meshIndex == -1);
    CHECK(objects[2].textureIndex == -1);
    CHECK_FALSE(objects[2].hasTexture);
}

TEST_CASE("reordered objects are written with every parent before its children") {
    const Scene objects{{.name = L"late", .parentIndex = 5}, {.name = L"root"},
                        {.name = L"a", .parentIndex = 1},    {.name = L"b", .parentIndex = 1},
                        {.name = L"a1", .parentIndex = 2},   {.name = L"second"}};
    const Scene ordered = InPrefabOrder(objects);
    std::vector<std::pair<std::wstring, int32_t>> found;
    for (const GameObject& object : ordered) found.push_back({object.name, object.parentIndex});
    CHECK(found == std::vector<std::pair<std::wstring, int32_t>>{
                       {L"root", -1}, {L"a", 0}, {L"a1", 1}, {L"b", 0}, {L"second", -1}, {L"late", 4}});
    CHECK(InPrefabOrder(ordered) == ordered);
}

TEST_CASE("a prefab's order loses no object, whatever the parents are") {
    const Scene objects{{.name = L"0", .parentIndex = 1},  {.name = L"1", .parentIndex = 0},
                        {.name = L"2", .parentIndex = 2},  {.name = L"3", .parentIndex = 99},
                        {.name = L"4", .parentIndex = -7}, {.name = L"5"}};
    const Scene ordered = InPrefabOrder(objects);
    REQUIRE(ordered.size() == 6);
    CHECK(ordered[0].name == L"3");
    for (const GameObject& object : ordered) CHECK((object.parentIndex >= -1 && object.parentIndex < 6));
    CHECK(InPrefabOrder({}).empty());
}

TEST_CASE("an object whose parent index is outside the list becomes a root in its place") {
    for (const int32_t parent : {-7, -2, 3, 99}) {
        CAPTURE(parent);
        const Scene objects{{.name = L"first", .parentIndex = parent},
                            {.name = L"second"},
                            {.name = L"child", .parentIndex = 0}};
        std::vector<std::pair<std::wstring, int32_t>> found;
        for (const GameObject& object : InPrefabOrder(objects))
            found.push_back({object.name, object.parentIndex});
        CHECK(found ==
              std::vector<std::pair<std::wstring, int32_t>>{{L"first", -1}, {L"child", 0}, {L"second", -1}});
    }
}
