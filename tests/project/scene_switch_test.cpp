#include "project/scene_switch.h"

#include "formats/obj_file.h"
#include "formats/object_line.h"
#include "formats/scene_file.h"
#include "formats/texture_file.h"
#include "project/asset_list.h"
#include "project/project_hub.h"
#include "render/builtin_meshes.h"
#include "scene/undo.h"
#include "support/folder_tree.h"
#include "support/project_input.h"
#include "support/scene_equals_file.h"

#include "doctest/doctest.h"

#include <algorithm>

// A project with a second scene "Other.scene" of one object beside Main.scene; the Files page shows both.
static void StartWithTwoScenes(const ScratchFolder& folder) {
    StartProject(folder);
    const Scene main = editorState.scene;
    editorState.scene = {GameObject{.name = L"Alone"}};
    SaveScene(FilesIn(folder) + L"\\Scenes\\Other.scene");
    editorState.scene = main;
    MarkSceneSaved();
    CHECK(OpenProject(ProjectIn(folder)) == Opening::Opened);
    OpenFolderNamed(L"Scenes");
    headless.prompts.clear();
}

static std::wstring OtherScene(const ScratchFolder& folder) {
    return FilesIn(folder) + L"\\Scenes\\Other.scene";
}
static std::wstring MainScene(const ScratchFolder& folder) {
    return FilesIn(folder) + L"\\Scenes\\Main.scene";
}

TEST_CASE("opening another scene asks first, and No opens it") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    TapKey('G');
    const std::string before = FileBytes(MainScene(folder));
    Answers({Answer::No});
    DoubleClick(FileNamed(L"Other.scene"));
    CHECK(headless.prompts ==
          std::vector<std::wstring>{L"Chces ulozit aktualni scenu pred otevrenim jine sceny?"});
    CHECK(headless.captions == std::vector<std::wstring>{L"ZelEngine"});
    CHECK(editorState.scenePath == OtherScene(folder));
    CHECK(editorState.statusMessage == L"Otevrena scena: " + OtherScene(folder));
    CHECK(editorState.scene.size() == 1);
    CHECK(FileBytes(MainScene(folder)) == before);
    TapWithControl('Z');  // undo brings nothing of the other scene
    CHECK(editorState.scene.size() == 1);
}

TEST_CASE("Yes saves the scene that is left") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    TapKey('G');
    const std::string before = FileBytes(MainScene(folder));
    Answers({Answer::Yes});
    DoubleClick(FileNamed(L"Other.scene"));
    CHECK(editorState.scenePath == OtherScene(folder));
    CHECK(FileBytes(MainScene(folder)) != before);
}

TEST_CASE("Cancel stays with the scene") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    TapKey('G');
    const size_t objects = editorState.scene.size();
    Answers({Answer::Cancel});
    DoubleClick(FileNamed(L"Other.scene"));
    CHECK(editorState.statusMessage == L"Otevreni sceny zruseno.");
    CHECK(editorState.scenePath == MainScene(folder));
    CHECK(editorState.scene.size() == objects);
    CHECK_FALSE(editorState.undoSteps.empty());
}

TEST_CASE("a scene that cannot be saved is not left") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    TapKey('G');
    Answers({Answer::Yes});
    fileFaults = {.freeBytes = 10};
    OpenSceneFile(OtherScene(folder));
    fileFaults = {};
    CHECK(editorState.statusMessage == L"Aktualni scenu se nepodarilo ulozit.");
    CHECK(editorState.scenePath == MainScene(folder));
    CHECK(editorState.scene.size() > 1);
}

TEST_CASE("a scene without a file is saved as the main scene before it is left") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    TapKey('G');
    const size_t objects = editorState.scene.size();
    editorState.scenePath.clear();
    Answers({Answer::Yes});
    OpenSceneFile(OtherScene(folder));
    CHECK(editorState.scenePath == OtherScene(folder));
    CHECK(LoadScene(MainScene(folder)));
    CHECK(editorState.scene.size() == objects);
}

TEST_CASE("the scene that is open is read again without a question") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    const size_t objects = editorState.scene.size();
    TapKey('G');
    DoubleClick(FileNamed(L"Main.scene"));
    CHECK(headless.prompts.empty());
    CHECK(editorState.scene.size() == objects);
    OpenSceneFile(FilesIn(folder) + L"\\.\\Scenes\\..\\Scenes\\Main.scene");
    CHECK(headless.prompts.empty());
}

TEST_CASE("a scene that cannot be opened leaves the scene as it was") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    TapKey('G');
    const size_t objects = editorState.scene.size();
    RemoveTree(OtherScene(folder));
    Answers({Answer::No});
    DoubleClick(FileNamed(L"Other.scene"));
    CHECK(editorState.statusMessage == L"Scenu se nepodarilo otevrit.");
    CHECK(editorState.scenePath == MainScene(folder));
    CHECK(editorState.scene.size() == objects);
    CHECK_FALSE(editorState.undoSteps.empty());
}

TEST_CASE("whichever step of opening a scene fails, the scene is the old one or the new one") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartWithTwoScenes(folder);
            Answers({Answer::No});
        },
        [](const ScratchFolder& folder) { OpenSceneFile(OtherScene(folder)); },
        [](const ScratchFolder& folder) {
            const bool isNew = editorState.scenePath == OtherScene(folder);
            CHECK((editorState.scene.size() == 1) == isNew);
            CHECK(editorState.statusMessage ==
                  (isNew ? L"Otevrena scena: " + OtherScene(folder) : L"Scenu se nepodarilo otevrit."));
            CHECK(SceneEqualsFile(editorState.scenePath));
        });
}

TEST_CASE("a game stops before another scene opens, and its changes are not saved") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    const std::string before = FileBytes(MainScene(folder));
    TapKey('P');
    editorState.scene[2].position.y = 50;
    Answers({Answer::Yes});
    DoubleClick(FileNamed(L"Other.scene"));
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.scenePath == OtherScene(folder));
    CHECK(FileBytes(MainScene(folder)) == before);
}

TEST_CASE("a search for a component ends when another scene opens") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    editorState.componentSearchActive = true;
    Answers({Answer::No});
    DoubleClick(FileNamed(L"Other.scene"));
    CHECK(editorState.scenePath == OtherScene(folder));
    CHECK_FALSE(editorState.componentSearchActive);
}

// Opens the project with Main.scene of these bytes, and goes to the Project Hub. True when a question came.
static bool AsksOnLeaving(const ScratchFolder& folder, const std::string& bytes, void (*edit)() = nullptr) {
    StartWithTwoScenes(folder);
    PutFile(MainScene(folder), bytes);
    REQUIRE(OpenProject(ProjectIn(folder)) == Opening::Opened);
    headless.prompts.clear();
    if (edit != nullptr) edit();
    ReturnToHub();
    const bool asks = !headless.prompts.empty();
    CHECK(editorState.hubVisible == !asks);
    return asks;
}

TEST_CASE("a scene that nobody edited is left without a question, however its file is written") {
    const std::string columns(28, '\t');
    for (const std::string& bytes :
         {"ZELENGINE_SCENE\t1\nO\tA" + columns + "\n",          // LF, thirty columns, no mark
          "O\tA" + columns + "\r\nrubbish\r\n",                 // a line that stores nothing
          std::string("ZELENGINE_SCENE\t1\r\n"),                // the default scene in place of none
          "O\tA\t1e9999\t" + std::string(27, '\t') + "\n",      // numbers that cannot be read
          "O\tA\t0.1234567891" + std::string(27, '\t') + "\n",  // more digits than are written
          "O\tA" + std::string(9, '\t') + "\tfile:missing.obj" + std::string(19, '\t') + "\n"}) {
        CAPTURE(bytes);
        const ScratchFolder folder;
        CHECK_FALSE(AsksOnLeaving(folder, bytes));
    }
    GameObject object{.name = L"A", .hasTexture = true, .texturePath = L"missing.png"};
    std::wstring line;
    WriteObjectLine(line, object);
    const ScratchFolder folder;
    CHECK_FALSE(AsksOnLeaving(folder, TextFileBytes(line)));
}

// As a command does.
static void ChangeScene(void (*change)(Scene& scene)) {
    pushUndo("Change");
    change(editorState.scene);
}

TEST_CASE("an edited scene is not left without a question, until the edit is undone or saved") {
    const std::string bytes = "ZELENGINE_SCENE\t1\nO\tA" + std::string(28, '\t') + "\n";
    struct {
        void (*edit)();
        bool asks;
    } cases[] = {{[] { ChangeScene([](Scene& scene) { scene[0].position.x = 1; }); }, true},
                 {[] { ChangeScene([](Scene& scene) { scene[0].parentIndex = 7; }); }, true},
                 {[] { TapKey('G'); }, true},
                 {[] { ChangeScene([](Scene& scene) { scene.clear(); }); }, true},
                 {[] {  // moved away and back by hand
                      ChangeScene([](Scene& scene) { scene[0].position.x = 1; });
                      ChangeScene([](Scene& scene) { scene[0].position.x = 0; });
                  },
                  false},
                 {[] {
                      TapKey('G');
                      TapWithControl('Z');
                  },
                  false},
                 {[] {
                      TapKey('G');
                      TapWithControl('S');
                  },
                  false},
                 {[] {
                      TapWithControl('S');
                      TapKey('G');
                  },
                  true},
                 {[] {  // a game is played and stopped
                      TapKey('P');
                      editorState.scene[0].position.y = -50;
                      TapKey('P');
                  },
                  false},
                 {[] { editorState.selectedIndex = -1; }, false}};
    for (const auto& [edit, asks] : cases) {
        const ScratchFolder folder;
        CHECK(AsksOnLeaving(folder, bytes, edit) == asks);
    }
}

TEST_CASE("a save that fails leaves the scene changed") {
    const ScratchFolder folder;
    const bool asks = AsksOnLeaving(folder, "O\tA" + std::string(28, '\t') + "\n", [] {
        TapKey('G');
        fileFaults.freeBytes = 0;
        TapWithControl('S');
        fileFaults = {};
    });
    CHECK(asks);
}

TEST_CASE("a project saved into a new folder has nothing left to save") {
    const ScratchFolder folder;
    StartProject(folder);
    editorState.scene[0].collectPrefab = FilesIn(folder) + L"\\a.prefab";
    AnswerFolder(folder / L"projects");
    TapWithControlAndShift('S');
    REQUIRE(editorState.projectRoot != ProjectIn(folder));
    headless.prompts.clear();
    ReturnToHub();
    CHECK(headless.prompts.empty());
}

TEST_CASE("a reference that followed a rename is a change of the scene") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\a.prefab", "ZELENGINE_PREFAB\t1\r\n");
    RefreshAssetList();
    editorState.scene[0].collectPrefab = FilesIn(folder) + L"\\a.prefab";
    TapWithControl('S');
    RenderFrame();
    RenameFileTo(L"a.prefab", L"b.prefab");
    headless.prompts.clear();
    ReturnToHub();
    CHECK(headless.prompts.size() == 1);
}

// A tetrahedron: no built-in mesh has four faces.
constexpr const char* kTetrahedron =
    "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 3 2\nf 1 2 4\nf 1 4 3\nf 2 3 4\n";
// Two triangles.
constexpr const char* kSheet = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nf 1 2 3 4\n";

static std::wstring ModelIn(const ScratchFolder& folder, const wchar_t* name) {
    return FilesIn(folder) + L"\\imported\\" + name;
}

// The number of faces of the mesh that an object of the open scene draws; 0 without one.
static size_t FacesOf(const std::wstring& name) {
    const auto object = std::ranges::find(editorState.scene, name, &GameObject::name);
    if (object == editorState.scene.end()) return 0;
    const auto mesh = static_cast<size_t>(object->meshIndex);
    return mesh < editorState.meshes.size() ? editorState.meshes[mesh].mesh.triangles.size() : 0;
}

static std::wstring TextureOf(const std::wstring& name) {
    const auto object = std::ranges::find(editorState.scene, name, &GameObject::name);
    if (object == editorState.scene.end()) return {};
    const auto texture = static_cast<size_t>(object->textureIndex);
    return texture < editorState.textures.size() ? editorState.textures[texture].path : L"";
}

static void AddTextured(const std::wstring& name, const std::wstring& path) {
    editorState.scene.push_back(
        {.name = name, .hasTexture = true, .textureIndex = LoadTextureImage(path), .texturePath = path});
}

TEST_CASE("loading the open scene again is one undo step, which brings back what was edited") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    TapKey('G');
    TapKey('G');
    const Scene edited = editorState.scene;
    const size_t steps = editorState.undoSteps.size();
    OpenSceneFile(MainScene(folder));
    CHECK(editorState.statusMessage == L"Otevrena scena: " + MainScene(folder));
    CHECK(editorState.undoSteps.size() == steps + 1);
    CHECK(SceneIsSaved());
    TapWithControl('Z');
    CHECK(editorState.scene == edited);
    CHECK_FALSE(SceneIsSaved());
    TapWithControl('Z');
    CHECK(editorState.scene.size() == edited.size() - 1);
}

TEST_CASE("after a scene was loaded again, undo still draws its old meshes and textures") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    PutFile(ModelIn(folder, L"sheet.obj"), kSheet);
    PutFile(ModelIn(folder, L"tetrahedron.obj"), kTetrahedron);
    PutFile(ModelIn(folder, L"a.bmp"), OnePixelBitmap());
    PutFile(ModelIn(folder, L"b.bmp"), OnePixelBitmap());
    // In memory the tetrahedron stands before the sheet and b before a; the file names the sheet and a alone,
    // so that a load gives them the other's index.
    const int32_t tetrahedron = LoadObjIntoLibrary(ModelIn(folder, L"tetrahedron.obj"));
    const int32_t sheet = LoadObjIntoLibrary(ModelIn(folder, L"sheet.obj"));
    REQUIRE(sheet == tetrahedron + 1);
    LoadTextureImage(ModelIn(folder, L"b.bmp"));
    editorState.scene.push_back({.name = L"sheet", .meshIndex = sheet});
    AddTextured(L"a", ModelIn(folder, L"a.bmp"));
    TapWithControl('S');
    pushUndo("Add objects");
    editorState.scene.push_back({.name = L"tetrahedron", .meshIndex = tetrahedron});
    AddTextured(L"b", ModelIn(folder, L"b.bmp"));
    editorState.clipboardObject = GameObject{.name = L"copy", .meshIndex = tetrahedron};

    OpenSceneFile(MainScene(folder));
    CHECK(FacesOf(L"sheet") == 2);
    CHECK(FacesOf(L"tetrahedron") == 0);
    CHECK(TextureOf(L"a") == ModelIn(folder, L"a.bmp"));

    undo();
    CHECK(FacesOf(L"sheet") == 2);
    CHECK(FacesOf(L"tetrahedron") == 4);
    CHECK(TextureOf(L"a") == ModelIn(folder, L"a.bmp"));
    CHECK(TextureOf(L"b") == ModelIn(folder, L"b.bmp"));
    editorState.scene.push_back(*editorState.clipboardObject);
    CHECK(FacesOf(L"copy") == 4);

    undo();
    CHECK(FacesOf(L"sheet") == 2);
    CHECK(FacesOf(L"PlayerCube") == editorState.meshes[kCubeMesh].mesh.triangles.size());
    CHECK(TextureOf(L"a") == ModelIn(folder, L"a.bmp"));
}

TEST_CASE("loading the open scene again fails without a trace") {
    const ScratchFolder folder;
    StartWithTwoScenes(folder);
    for (int32_t i = 0; i < 64; ++i) TapKey('G');
    const Scene edited = editorState.scene;
    REQUIRE(editorState.undoSteps.size() == 64);
    const int32_t selected = editorState.selectedIndex;
    const auto oldest = editorState.undoSteps.front().scene.runs;
    RemoveTree(MainScene(folder));
    OpenSceneFile(MainScene(folder));
    CHECK(editorState.statusMessage == L"Scenu se nepodarilo otevrit.");
    CHECK(editorState.scene == edited);
    CHECK(editorState.selectedIndex == selected);
    CHECK(editorState.undoSteps.size() == 64);
    CHECK(editorState.undoSteps.front().scene.runs == oldest);
}
