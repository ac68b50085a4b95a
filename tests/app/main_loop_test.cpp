#include "app/main_loop.h"

#include "formats/obj_file.h"
#include "formats/project_file.h"
#include "formats/scene_file.h"
#include "platform/canvas.h"
#include "platform/headless/fault_injection.h"
#include "platform/headless/headless.h"
#include "render/frame_buffer.h"
#include "scene/default_scenes.h"
#include "scene/long_work.h"
#include "state/editor_state.h"
#include "support/allocation_limit.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <optional>

// The executable stands in "program", the process in "work", with data of its own.
static void StartProgramIn(const ScratchFolder& folder) {
    headless = HeadlessPlatform{};
    ReleaseFrameBuffer();
    folderAnswers.executablePath = folder / L"program\\ZelEngine.exe";
    folderAnswers.workingFolder = folder / L"work";
    folderAnswers.localDataFolder = folder / L"data";
    PutFolder(folder / L"program");
    PutFolder(folder / L"work");
    headless.input = {{}, {}};  // two frames
}

// A project whose scene holds one cube of that name beside camera and light.
static void PutProject(const std::wstring& root, const std::wstring& cubeName) {
    const EditorState before = editorState;
    resetScene(false);
    editorState.projectRoot = root;
    editorState.scenePath = root + L"\\Files\\Scenes\\Level.scene";
    editorState.scene.push_back({.name = cubeName, .meshIndex = 0, .velocityY = -3, .velocity{1, 1, 1}});
    REQUIRE(SaveScene(editorState.scenePath));
    REQUIRE(WriteProjectFile(root));
    editorState = before;
}

TEST_CASE("a frame simulates at most 0.05 seconds, also after a pause of two") {
    CHECK(FrameTime(2) == 0.05f);
    CHECK(FrameTime(0.05) == 0.05f);
    CHECK(FrameTime(0.016) == 0.016f);
    CHECK(FrameTime(0) == 0);
    CHECK(FrameTime(-1) == -1);  // there is no lower limit
}

// A click on the first project of the Hub in the frame after the first.
static void ClickFirstProject() {
    headless.input = {{}, {{.kind = InputKind::LeftDown, .x = 300, .y = 200}}, {}};
}

TEST_CASE("a normal start shows the Project Hub before the default scene and ends with 0") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    CHECK(RunProgram() == 0);
    CHECK(headless.windowIsOpen);
    CHECK(headless.title == L"ZelEngine - Projects");
    CHECK(editorState.hubVisible);
    CHECK(editorState.statusMessage == L"Vyber existujici projekt nebo vytvor novy.");
    CHECK(headless.clientSize == ClientSize{1360, 820});
    CHECK(headless.presents == 1);  // nothing happens in the second turn
    CHECK(headless.starts == 1);
    CHECK(headless.stops == 1);
    CHECK_FALSE(editorState.runtimeMode);
    CHECK_FALSE(editorState.playMode);
    REQUIRE(editorState.scene.size() == 6);
    CHECK(editorState.scene[2].name == L"PlayerCube");
    CHECK(frameBuffer.pixels == nullptr);
    CHECK(headless.windowIcon == L"assets\\pe.png");
    CHECK(FileBytes(folder / L"data\\ZelEngine\\recent-projects.txt") != "<missing>");
}

TEST_CASE("a first start beside a project lists it, and a click opens it") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    PutProject(folder / L"work\\Project", L"From the project");
    ClickFirstProject();
    CHECK(RunProgram() == 0);
    REQUIRE(editorState.recentProjects.size() == 1);
    CHECK(editorState.recentProjects[0].path == folder / L"work\\Project");
    CHECK_FALSE(editorState.hubVisible);
    CHECK(headless.title == L"ZelEngine - Project");
    REQUIRE(editorState.scene.size() == 3);
    CHECK(editorState.scene[2].name == L"From the project");
    CHECK_FALSE(editorState.runtimeMode);
}

TEST_CASE("the project in the working folder is saved again byte for byte, its model included") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    PutFile(folder / L"work\\Project\\Files\\imported\\one.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    resetScene(false);
    editorState.projectRoot = folder / L"work\\Project";
    editorState.scenePath = folder / L"work\\Project\\Files\\Scenes\\Main.scene";
    const int32_t mesh = LoadObjIntoLibrary(folder / L"work\\Project\\Files\\imported\\one.obj");
    editorState.scene.push_back({.name = L"Model", .meshIndex = mesh});
    REQUIRE(SaveScene(editorState.scenePath));
    REQUIRE(WriteProjectFile(editorState.projectRoot));
    const std::wstring scenePath = editorState.scenePath;
    const std::string scene = FileBytes(scenePath);
    const std::string project = FileBytes(folder / L"work\\Project\\project.zel");
    CHECK(scene.find("file:Files\\imported\\one.obj") != std::string::npos);

    editorState = EditorState{};
    ClickFirstProject();
    CHECK(RunProgram() == 0);
    CHECK(editorState.projectRoot == folder / L"work\\Project");
    CHECK(editorState.meshes.size() == 8);
    REQUIRE(SaveScene(editorState.scenePath));
    REQUIRE(WriteProjectFile(editorState.projectRoot));
    CHECK(editorState.scenePath == scenePath);
    CHECK(FileBytes(scenePath) == scene);
    CHECK(FileBytes(folder / L"work\\Project\\project.zel") == project);
}

TEST_CASE("a project.zel beside the executable opens straight into its game") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    PutProject(folder / L"program", L"From the game");
    PutProject(folder / L"work\\Project", L"Of the editor");
    CHECK(RunProgram() == 0);
    CHECK(headless.title == L"ZelGame");
    CHECK(editorState.runtimeMode);
    CHECK(editorState.playMode);
    CHECK_FALSE(editorState.hubVisible);
    CHECK(editorState.statusMessage == L"ZelGame runtime: projekt nacten z build slozky.");
    CHECK(editorState.projectRoot == folder / L"program");
    CHECK(editorState.filesRoot == folder / L"program\\Files");
    CHECK(editorState.filesFolder == folder / L"program\\Files");
    CHECK(editorState.scenePath == folder / L"program\\Files\\Scenes\\Level.scene");
    REQUIRE(editorState.scene.size() == 3);
    CHECK(editorState.scene[2].name == L"From the game");
    CHECK(editorState.scene[2].velocityY == 0);
    CHECK(editorState.scene[2].velocity == Vec3{});
    CHECK(headless.presents == 2);
}

TEST_CASE("moving project.zel away makes the same executable start as the editor") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    PutProject(folder / L"program", L"From the game");
    RemoveTree(folder / L"program\\project.zel");
    CHECK(RunProgram() == 0);
    CHECK(headless.title == L"ZelEngine - Projects");
    CHECK_FALSE(editorState.runtimeMode);
}

TEST_CASE("a project.zel that cannot be read still starts the game, with the default scene") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    PutFolder(folder / L"program\\project.zel");
    CHECK(RunProgram() == 0);
    CHECK(headless.title == L"ZelGame");
    CHECK(editorState.scene.size() == 6);
    CHECK(editorState.scenePath == folder / L"program\\Files\\Scenes\\Main.scene");
}

TEST_CASE("the game reads no list of projects and writes none") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    PutProject(folder / L"program", L"From the game");
    CHECK(RunProgram() == 0);
    CHECK(FileBytes(folder / L"data\\ZelEngine\\recent-projects.txt") == "<missing>");
}

TEST_CASE("a window that does not open ends the program with 1, everything released") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    headless.windowOpens = false;
    CHECK(RunProgram() == 1);
    CHECK(headless.presents == 0);
    CHECK(headless.starts == 1);
    CHECK(headless.stops == 1);
}

TEST_CASE("a request to quit ends the program after the messages that came with it") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    headless.input = {
        {},
        {{.kind = InputKind::KeyDown, .key = kKeyEscape}, {.kind = InputKind::MouseMove, .x = 7, .y = 9}},
        {},
        {}};
    CHECK(RunProgram() == 0);
    CHECK(headless.presents == 1);
    CHECK(editorState.pointer == Point{7, 9});
}

TEST_CASE("each frame takes the time since the one before, limited") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    headless.input = {{}, {}, {}};
    headless.clock = {100, 100.01, 102, 102.04};  // at the start, then once a frame
    CHECK(RunProgram() == 0);
    CHECK(editorState.animationTime == doctest::Approx(0.01 + 0.05 + 0.04));
}

static std::optional<AllocationLimit> limit;

// From the second picture on there is no memory for anything large.
static void LimitMemory() {
    if (headless.presents == 2) limit.emplace(100'000);
}

TEST_CASE("without memory for a command the program says so, saves nothing and ends with 1") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    PutProject(folder / L"work\\Project", L"Listed");
    const EditorState before = editorState;
    editorState.scene.assign(1000, GameObject{.name = L"many"});
    const std::wstring scenePath = folder / L"work\\Project\\Files\\Scenes\\Level.scene";
    REQUIRE(SaveScene(scenePath));
    editorState = before;
    const std::string scene = FileBytes(scenePath);
    // The first project of the Hub opens, and a game starts, which keeps the scene aside; then a save.
    headless.input = {{},
                      {{.kind = InputKind::LeftDown, .x = 300, .y = 200}},
                      {{.kind = InputKind::KeyDown, .key = 'P'}, {.kind = InputKind::KeyUp, .key = 'P'}},
                      {{.kind = InputKind::KeyDown, .key = 'G'}}};
    headless.onPresent = LimitMemory;
    CHECK(RunProgram() == 1);
    limit.reset();
    CHECK(editorState.scene.size() == 1000);
    CHECK_FALSE(editorState.playMode);
    CHECK(headless.prompts ==
          std::vector<std::wstring>{L"Nedostatek pameti: program se ukonci.\n\n"
                                    L"Ulozene soubory jsou v poradku, neulozene zmeny jsou ztraceny."});
    CHECK(headless.captions == std::vector<std::wstring>{L"ZelEngine"});
    CHECK(FileBytes(scenePath) == scene);
    CHECK(headless.stops == 1);
    CHECK(headless.presents == 2);
    CHECK(frameBuffer.pixels == nullptr);
}

TEST_CASE("after long work the program is told that keys and mouse were let go meanwhile") {
    const ScratchFolder folder;
    StartProgramIn(folder);
    headless.onPresent = [] {
        if (headless.presents != 1) return;
        editorState.keyDown['W'] = true;
        headless.workTimeStep = 1;
        LongWork work(L"Working", L"things");
        work.Continue(1, 2);
        headless.workTimeStep = 0;
    };
    CHECK(RunProgram() == 0);
    CHECK_FALSE(editorState.keyDown['W']);
    headless.onPresent = nullptr;
}
