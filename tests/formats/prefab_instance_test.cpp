#include "formats/prefab.h"

#include "scene/editor_camera.h"
#include "scene/undo.h"
#include "support/edited_scene.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <cmath>

// A root with two children and a grandchild, in a file that is named "Tree".
static std::wstring PutTree(const ScratchFolder& folder) {
    std::wstring path = folder / L"Tree.prefab";
    const Scene tree{
        {.name = L"Root", .position{9, 9, 9}, .rotation{1, 2, 3}, .velocityY = -3, .velocity{1, 2, 3}},
        {.name = L"Left", .position{1, 0, 0}, .parentIndex = 0, .velocityY = 2},
        {.name = L"Leaf", .position{0, 1, 0}, .parentIndex = 1},
        {.name = L"Right", .parentIndex = 0}};
    REQUIRE(WritePrefab(path, tree));
    return path;
}

TEST_CASE("a prefab placed without a parent stands 4 units before the editor's camera") {
    const ScratchFolder folder;
    StartWithSamples();
    const std::wstring path = PutTree(folder);
    editorState.camera = {{1, 2, 3}, 0, 0};
    CHECK(InstantiatePrefab(path, -1));
    REQUIRE(editorState.scene.size() == 10);
    const GameObject& root = editorState.scene[6];
    CHECK(root.position == Vec3{1, 2, 7});
    CHECK(root.rotation == Vec3{1, 2, 3});
    CHECK(root.parentIndex == -1);
    CHECK(root.name == L"Tree");
    CHECK(editorState.selectedIndex == 6);
    CHECK(editorState.statusMessage == L"Prefab vlozen do sceny: Tree");

    editorState.camera = {{1, 2, 3}, 0.5f, 0.7f};
    CHECK(InstantiatePrefab(path, 99));
    const Vec3 placed = editorState.scene[10].position;
    CHECK(placed.x == doctest::Approx(1 + 4 * std::sin(0.5) * std::cos(0.7)));
    CHECK(placed.y == doctest::Approx(2 + 4 * std::sin(0.7)));
    CHECK(placed.z == doctest::Approx(3 + 4 * std::cos(0.5) * std::cos(0.7)));
}

TEST_CASE("a prefab placed under a parent is a child at its place") {
    const ScratchFolder folder;
    StartWithSamples();
    CHECK(InstantiatePrefab(PutTree(folder), 4));
    CHECK(editorState.scene[6].parentIndex == 4);
    CHECK(editorState.scene[6].position == Vec3{});
    CHECK(editorState.scene[7].position == Vec3{1, 0, 0});
}

TEST_CASE("two instances of a prefab are two trees, at rest, and know where they came from") {
    const ScratchFolder folder;
    StartWithSamples();
    const std::wstring path = PutTree(folder);
    CHECK(InstantiatePrefab(path, -1));
    CHECK(InstantiatePrefab(path, -1));
    REQUIRE(editorState.scene.size() == 14);
    for (const int32_t root : {6, 10}) {
        CHECK(editorState.scene[root].parentIndex == -1);
        CHECK(editorState.scene[root + 1].parentIndex == root);
        CHECK(editorState.scene[root + 2].parentIndex == root + 1);
        CHECK(editorState.scene[root + 3].parentIndex == root);
        CHECK(editorState.scene[root + 1].name == L"Left");
        for (int32_t i = root; i < root + 4; ++i) {
            CHECK(editorState.scene[i].prefabSource == path);
            CHECK(editorState.scene[i].velocityY == 0);
            CHECK(editorState.scene[i].velocity == Vec3{});
        }
    }
}

TEST_CASE("placing a prefab is one undo step") {
    const ScratchFolder folder;
    StartWithSamples();
    editorState.selectedIndex = 3;
    const Scene before = editorState.scene;
    CHECK(InstantiatePrefab(PutTree(folder), -1));
    CHECK(editorState.undoSteps.size() == 1);
    undo();
    CHECK(editorState.scene == before);
    CHECK(editorState.selectedIndex == 3);
}

TEST_CASE("a prefab without objects adds nothing, but is an undo step and says so") {
    const ScratchFolder folder;
    StartWithSamples();
    PutFile(folder / L"Empty.prefab", "ZELENGINE_PREFAB\t1\r\n");
    CHECK(InstantiatePrefab(folder / L"Empty.prefab", -1));
    CHECK(editorState.scene.size() == 6);
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.undoSteps.size() == 1);
    CHECK(editorState.statusMessage == L"Prefab vlozen do sceny: Empty");
}

TEST_CASE("a prefab that cannot be read changes nothing and says so") {
    const ScratchFolder folder;
    StartWithSamples();
    const Scene before = editorState.scene;
    CHECK_FALSE(InstantiatePrefab(folder / L"gone.prefab", -1));
    CHECK(editorState.statusMessage == L"Prefab se nepodarilo nacist.");
    CHECK_FALSE(SpawnPrefab(folder / L"gone.prefab", {}));
    CHECK(editorState.statusMessage == L"Prefab se nepodarilo nacist pro spawn.");
    CHECK(editorState.scene == before);
    CHECK(editorState.undoSteps.empty());
}

TEST_CASE("a file name that is all extension leaves the root its own name with _Prefab") {
    const ScratchFolder folder;
    StartWithSamples();
    REQUIRE(WritePrefab(folder / L".prefab", Scene{{.name = L"Crate"}}));
    CHECK(InstantiatePrefab(folder / L".prefab", -1));
    CHECK(editorState.scene[6].name == L"Crate_Prefab");
}

TEST_CASE("a prefab with damaged parents never attaches to objects of the scene") {
    const ScratchFolder folder;
    StartWithSamples();
    const auto line = [](const char* parent) {
        return "O\tx" + std::string(12, '\t') + parent + std::string(16, '\t') + "\r\n";
    };
    PutFile(folder / L"a.prefab",
            line("5") + line("3") + line("2147483647") + line("-7") + line("4") + line("1"));
    CHECK(InstantiatePrefab(folder / L"a.prefab", -1));
    REQUIRE(editorState.scene.size() == 12);
    const int32_t parents[] = {-1, 9, -1, -1, 10, 7};
    for (int32_t i = 0; i < 6; ++i) CHECK(editorState.scene[6 + i].parentIndex == parents[i]);
}

TEST_CASE("a spawned prefab stands where it was put, without an undo step and without being selected") {
    const ScratchFolder folder;
    StartWithSamples();
    const std::wstring path = PutTree(folder);
    editorState.statusMessage = L"before";
    CHECK(SpawnPrefab(path, {5, 6, 7}));
    REQUIRE(editorState.scene.size() == 10);
    CHECK(editorState.scene[6].position == Vec3{5, 6, 7});
    CHECK(editorState.scene[6].parentIndex == -1);
    CHECK(editorState.scene[6].name == L"Tree");
    CHECK(editorState.scene[7].parentIndex == 6);
    CHECK(editorState.scene[9].prefabSource == path);
    CHECK(editorState.selectedIndex == 2);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.statusMessage == L"before");
}
