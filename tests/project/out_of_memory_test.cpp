// Running out of memory. Whatever is read or made from a file, a window or a command fails as it does for
// any other reason, and no file is left half written.
#include "blueprint/blueprint_file.h"
#include "formats/obj_file.h"
#include "formats/object_line.h"
#include "formats/prefab.h"
#include "formats/project_file.h"
#include "formats/recent_projects.h"
#include "formats/scene_file.h"
#include "formats/texture_file.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "project/prefab_editor.h"
#include "project/save_project.h"
#include "render/frame_buffer.h"
#include "support/allocation_limit.h"
#include "support/image_bytes.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <new>

// Runs `act` once for every allocation that it makes, each time with the path of that name in a fresh
// folder, after `start` and with that allocation failing; then `check`, which gets what `act` returned.
template <typename Start, typename Act, typename Check>
static void FailEachAllocation(const wchar_t* name, Start start, Act act, Check check) {
    bool hasFailed = true;
    for (int64_t number = 1; hasFailed; ++number) {
        CAPTURE(number);
        const ScratchFolder folder;
        start(folder);
        const std::wstring path = folder / name;
        bool answer = false;
        {
            const FailingAllocation failing(number);
            answer = act(path);
            hasFailed = FailingAllocation::HasFailed();
        }
        check(answer);
        CHECK((answer || hasFailed));
    }
}

// Three objects, one of them with a model and an image.
static std::string ObjectsOf(const ScratchFolder& folder, const char* header) {
    PutFile(folder / L"model.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    PutFile(folder / L"image.bmp", OnePixelBitmap());
    editorState.projectRoot = folder.path;
    return std::string(header) + "O\tA" + std::string(9, '\t') + "\tfile:model.obj" + std::string(20, '\t') +
           "\tO\n" + "O\tB" + std::string(28, '\t') + "\nO\tC" + std::string(28, '\t') + "\n";
}

static void StartWithScene(const ScratchFolder& folder) {
    const std::string objects = ObjectsOf(folder, "ZELENGINE_SCENE\t1\n");
    PutFile(folder / L"a.scene", objects);
    editorState.scene = {{.name = L"before"}};
    editorState.scenePath = L"before";
    editorState.meshes.resize(2);
}

static void CheckSceneBefore() {
    REQUIRE(editorState.scene.size() == 1);
    CHECK(editorState.scene[0].name == L"before");
    CHECK(editorState.meshes.size() == 2);
}

TEST_CASE("a scene too large for the memory leaves the open one") {
    FailEachAllocation(
        L"a.scene", StartWithScene, [](const std::wstring& path) { return LoadScene(path); },
        [](bool isLoaded) {
            if (!isLoaded) return CheckSceneBefore();
            CHECK(editorState.scene.size() == 3);
        });
}

TEST_CASE("a project file too large for the memory leaves the open scene") {
    FailEachAllocation(
        L"project",
        [](const ScratchFolder& folder) {
            StartWithScene(folder);
            PutFile(folder / L"project\\project.zel", ObjectsOf(folder, "CURRENT_SCENE\ta.scene\n"));
        },
        [](const std::wstring& path) { return ReadProjectFile(path); },
        [](bool isRead) {
            if (!isRead) return CheckSceneBefore();
            CHECK(editorState.scene.size() == 3);
        });
}

TEST_CASE("a prefab too large for the memory has no objects") {
    Scene objects;
    FailEachAllocation(
        L"a.prefab",
        [](const ScratchFolder& folder) { PutFile(folder / L"a.prefab", ObjectsOf(folder, "")); },
        [&objects](const std::wstring& path) { return LoadPrefab(path, objects); },
        [&objects](bool isLoaded) { CHECK(objects.size() == (isLoaded ? 3 : 0)); });
}

TEST_CASE("a model too large for the memory is not loaded") {
    FailEachAllocation(
        L"model.obj", [](const ScratchFolder& folder) { ObjectsOf(folder, ""); },
        [](const std::wstring& path) {
            Mesh mesh;
            const bool isRead = ReadObjFile(path, mesh);
            return isRead && mesh.triangles.size() == 1;
        },
        [](bool) {});
}

TEST_CASE("a Blueprint too large for the memory counts as one that cannot be read") {
    FailEachAllocation(
        L"a.blueprint",
        [](const ScratchFolder& folder) {
            PutFile(folder / L"a.blueprint", "NODE\t5\tA title longer than a short string\t1\t2\n");
        },
        [](const std::wstring& path) {
            CHECK(LoadBlueprint(path));
            return editorState.blueprintNodes.size() == 1;
        },
        [](bool isRead) {
            REQUIRE(editorState.blueprintNodes.size() == (isRead ? 1 : 2));
            CHECK(editorState.blueprintNodes[0].title ==
                  (isRead ? L"A title longer than a short string" : L"Event BeginPlay"));
        });
}

TEST_CASE("running out of memory over the list of projects does not end the program") {
    FailEachAllocation(
        L"",
        [](const ScratchFolder& folder) {
            StartIn(folder);
            PutFolder(folder / L"projects\\One\\Files");
            AddRecentProject(folder / L"projects\\One");
            SaveRecentProjects();
        },
        [](const std::wstring&) {
            LoadRecentProjects();
            return editorState.recentProjects.size() == 1;
        },
        [](bool) {});
}

TEST_CASE("an image too large for the memory is not loaded") {
    const ScratchFolder folder;
    PutFile(folder / L"a.png", PngBytes({400, 400, std::vector<uint32_t>(400 * 400, 0xFF123456)}));
    for (const size_t most : {100'000u, 500'000u}) {  // for no pixels, and for one copy too few
        const AllocationLimit limit(most);
        CHECK(LoadTextureImage(folder / L"a.png") == -1);
        CHECK(editorState.statusMessage == L"Texture image se nepodarilo nacist.");
    }
    CHECK(LoadTextureImage(folder / L"a.png") == 0);
}

TEST_CASE("a window too large for the memory shows nothing until there is enough") {
    ReleaseFrameBuffer();
    headless = HeadlessPlatform{};
    for (int64_t number = 1;; ++number) {
        ReleaseFrameBuffer();
        REQUIRE(EnsureSize(40, 30));
        bool isMade = false, hasFailed = false;
        {
            const FailingAllocation failing(number);
            isMade = EnsureSize(300, 200);
            hasFailed = FailingAllocation::HasFailed();
        }
        CHECK(isMade != hasFailed);
        CHECK((frameBuffer.pixels != nullptr) == isMade);
        Clear(Pixel{0x123456});  // nothing is drawn into what is not there
        CHECK(EnsureSize(300, 200));
        CHECK(frameBuffer.depth.size() == 300 * 200);
        if (!hasFailed) break;
    }
    {
        const AllocationLimit limit(1'000'000);
        CHECK_FALSE(EnsureSize(2000, 2000));
        CHECK(EnsureSize(200, 200));
        ClearDepth({10, 10, 190, 190}, frameBuffer);
    }
    ReleaseFrameBuffer();
}

TEST_CASE("clearing the depth of a part of the window takes no memory") {
    ReleaseFrameBuffer();
    headless = HeadlessPlatform{};
    REQUIRE(EnsureSize(333, 222));
    const AllocationLimit limit(0);
    for (const Rect& area : {Rect{0, 0, 333, 222}, {1, 1, 333, 222}, {100, 50, 120, 222}, {0, 0, 0, 0}})
        ClearDepth(area, frameBuffer);
}

// Files whose folder stands must all be whole.
static bool HoldsWholeProject(const std::wstring& root) {
    return LoadScene(root + L"\\Files\\Scenes\\Main.scene") && editorState.scene.size() == 6 &&
           LoadScene(root + L"\\project.zel") && editorState.scene.size() == 6;
}

// Fails allocations above a size, and not one after another: the file system library of the test machine
// ends the program if it lacks a few bytes.
TEST_CASE("if memory runs out no project is made, and the open one stays") {
    size_t made = 0;
    for (size_t most = 2000; most <= 200'000; most += most / 4) {
        CAPTURE(most);
        const ScratchFolder folder;
        StartHub(folder);
        editorState.scene = {{.name = L"before"}};
        AnswerFolder(folder / L"projects");
        bool hasEnded = false;
        {
            const AllocationLimit limit(most);
            try {
                CreateProject(false);
            } catch (const std::bad_alloc&) {
                hasEnded = true;  // where no command can report it, the program ends
            }
        }
        const bool isMade = KindOfPath(ProjectIn(folder)) != PathKind::Missing;
        made += isMade;
        if (isMade) {
            CHECK(HoldsWholeProject(ProjectIn(folder)));
            continue;
        }
        CHECK_FALSE(hasEnded);
        CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
        REQUIRE(editorState.scene.size() == 1);
        CHECK(editorState.scene[0].name == L"before");
        CHECK(editorState.hubVisible);
    }
    CHECK(made > 0);
    CHECK(made < 20);
}

TEST_CASE("a scene too large to be copied stays open when a project is created") {
    const ScratchFolder folder;
    StartHub(folder);
    editorState.scene.assign(2000, GameObject{});
    AnswerFolder(folder / L"projects");
    {
        const AllocationLimit limit(200'000);
        CreateProject(false);
    }
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
    CHECK(editorState.scene.size() == 2000);
    CHECK(KindOfPath(ProjectIn(folder)) == PathKind::Missing);
}

TEST_CASE("whichever allocation of a save fails, each file is the old one or the new one") {
    for (int64_t number = 1;; ++number) {
        CAPTURE(number);
        const ScratchFolder folder;
        StartProject(folder);
        const std::wstring scene = editorState.scenePath, project = ProjectIn(folder) + L"\\project.zel";
        const std::string oldScene = FileBytes(scene), oldProject = FileBytes(project);
        TapKey('G');
        bool hasFailed = false, hasEnded = false;
        {
            const FailingAllocation failing(number);
            try {
                SaveProject();
            } catch (const std::bad_alloc&) {
                hasEnded = true;
            }
            hasFailed = FailingAllocation::HasFailed();
        }
        const bool sceneIsOld = FileBytes(scene) == oldScene, projectIsOld = FileBytes(project) == oldProject;
        if (!hasEnded) {
            CHECK(editorState.statusMessage == (sceneIsOld ? L"Projekt se nepodarilo ulozit."
                                                : projectIsOld
                                                    ? L"Scena ulozena, ale project.zel se nepodarilo ulozit."
                                                    : L"Ctrl+S: projekt ulozen: " + ProjectIn(folder)));
        }
        SaveScene(folder / L"expected.scene");
        const std::string newScene = FileBytes(folder / L"expected.scene");
        CHECK((sceneIsOld || FileBytes(scene) == newScene));
        CHECK((projectIsOld || FileBytes(project).ends_with(newScene.substr(newScene.find("O\t")))));
        if (!hasFailed) break;
    }
}

TEST_CASE("a scene, prefab or Blueprint too large for the memory is not saved and says so") {
    const ScratchFolder folder;
    StartProject(folder);
    const std::string before = FileBytes(editorState.scenePath);
    editorState.scene.assign(3000, GameObject{.name = L"many"});
    editorState.blueprintNodes.assign(5000, BlueprintNode{.title = L"many nodes"});
    {
        const AllocationLimit limit(100'000);
        SaveProject();
        CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
        CHECK_FALSE(WritePrefab(folder / L"a.prefab", editorState.scene));
        CHECK_FALSE(SaveBlueprint(folder / L"a.blueprint"));
        editorState.screen = Screen::PrefabEditor;
        editorState.prefabPath = folder / L"a.prefab";
        SavePrefabEditor();
        CHECK(editorState.statusMessage == L"Prefab se nepodarilo ulozit.");
    }
    editorState.screen = Screen::SceneEditor;
    CHECK(FileBytes(editorState.scenePath) == before);
    CHECK(KindOfPath(folder / L"a.prefab") == PathKind::Missing);
    CHECK(KindOfPath(folder / L"a.blueprint") == PathKind::Missing);
}

TEST_CASE("a list of files too large for the memory is empty until the next refresh") {
    const ScratchFolder folder;
    StartProject(folder);
    for (int32_t i = 0; i < 200; ++i) PutFile(FilesIn(folder) + L"\\" + std::to_wstring(i), "");
    {
        const AllocationLimit limit(8000);
        RefreshAssetList();
        CHECK(editorState.fileEntries.empty());
    }
    RefreshAssetList();
    CHECK(editorState.fileEntries.size() == 205);
}
