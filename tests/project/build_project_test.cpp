#include "project/build_project.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "project/game_runtime.h"
#include "support/folder_tree.h"
#include "support/project_input.h"
#include "support/scene_equals_file.h"

#include "doctest/doctest.h"

#include <algorithm>

static std::wstring BuildIn(const ScratchFolder& folder) {
    return folder / L"builds\\ZelEngineProject_Build";
}

static void StartToBuild(const ScratchFolder& folder) {
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\imported\\deep\\note.txt", "a note");
    PutFolder(folder / L"builds");
}

static void BuildInto(const std::wstring& chosen) {
    AnswerFolder(chosen);
    TapWithControl('B');
}

TEST_CASE("a build is a copy of the project with the program as ZelGame.exe") {
    const ScratchFolder folder;
    StartToBuild(folder);
    TapKey('G');
    BuildInto(folder / L"builds");
    CHECK(headless.prompts == std::vector<std::wstring>{L"Vyber slozku, kam se ma sestavit projekt"});
    CHECK(editorState.statusMessage == L"Projekt sestaven do: " + BuildIn(folder));
    CHECK(SceneEqualsFile(FilesIn(folder) + L"\\Scenes\\Main.scene"));
    FolderContents build = ContentsOf(BuildIn(folder));
    CHECK(build[L"ZelGame.exe"] == "the program");
    CHECK(build[L"project.zel"].find("CURRENT_SCENE\tFiles\\Scenes\\Main.scene\r\nO\t") != std::string::npos);
    CHECK(build[L"Files\\imported\\deep\\note.txt"] == "a note");
    CHECK(build[L"Files\\Scenes\\Main.scene"] == FileBytes(FilesIn(folder) + L"\\Scenes\\Main.scene"));
}

TEST_CASE("after a build the editor goes on with its project") {
    const ScratchFolder folder;
    StartToBuild(folder);
    OpenFolderNamed(L"scripts");
    const auto files = editorState.fileEntries.size();
    const size_t recent = editorState.recentProjects.size();
    BuildInto(folder / L"builds");
    CHECK(editorState.projectRoot == ProjectIn(folder));
    CHECK(editorState.filesRoot == FilesIn(folder));
    CHECK(editorState.filesFolder == FilesIn(folder) + L"\\scripts");
    CHECK(editorState.scenePath == FilesIn(folder) + L"\\Scenes\\Main.scene");
    CHECK(editorState.fileEntries.size() == files);
    CHECK(editorState.recentProjects.size() == recent);
    CHECK(headless.title == L"ZelEngine - ZelEngineProject");
}

TEST_CASE("a second build gets a number") {
    const ScratchFolder folder;
    StartToBuild(folder);
    BuildInto(folder / L"builds");
    BuildInto(folder / L"builds");
    CHECK(editorState.statusMessage == L"Projekt sestaven do: " + BuildIn(folder) + L"_01");
}

TEST_CASE("the top bar builds too, a game must stop first, and a cancelled choice builds nothing") {
    const ScratchFolder folder;
    StartToBuild(folder);
    TapKey('P');
    Click({1250, 20});
    CHECK(editorState.statusMessage == L"Nejdriv vypni Play Mode, potom sestav projekt.");
    CHECK(headless.prompts.empty());
    TapKey('P');
    Click({1250, 20});
    CHECK(editorState.statusMessage == L"Sestaveni projektu zruseno.");
    AnswerFolder(folder / L"builds");
    Click({1250, 20});
    CHECK(editorState.statusMessage == L"Projekt sestaven do: " + BuildIn(folder));
}

TEST_CASE("a build closes the Prefab editor, and stops when it stays open") {
    const ScratchFolder folder;
    StartToBuild(folder);
    ChooseCreate(CreateItem::Prefab);
    DoubleClick(FileNamed(L"PlayerCube.prefab"));
    TapKey('G');
    Answers({Answer::Cancel});
    BuildInto(folder / L"builds");
    CHECK(editorState.screen == Screen::PrefabEditor);
    Answers({Answer::No});
    BuildInto(folder / L"builds");
    CHECK(editorState.screen == Screen::SceneEditor);
    CHECK(KindOfPath(BuildIn(folder)) == PathKind::Folder);
}

TEST_CASE("without the program the build stays as a project") {
    const ScratchFolder folder;
    StartToBuild(folder);
    folderAnswers.executablePath = folder / L"missing.exe";
    BuildInto(folder / L"builds");
    CHECK(editorState.statusMessage ==
          L"Projekt ulozen jako build, ale nepodarilo se zkopirovat ZelGame.exe.");
    CHECK(KindOfPath(BuildIn(folder) + L"\\project.zel") == PathKind::File);
    CHECK(KindOfPath(BuildIn(folder) + L"\\ZelGame.exe") == PathKind::Missing);
}

TEST_CASE("whichever step fails, a build says what is there, and leaves no part of anything") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartToBuild(folder);
            AnswerFolder(folder / L"builds");
        },
        [](const ScratchFolder&) { BuildProject(); },
        [](const ScratchFolder& folder) {
            CHECK(editorState.projectRoot == ProjectIn(folder));
            CHECK(editorState.scenePath == FilesIn(folder) + L"\\Scenes\\Main.scene");
            FolderContents builds = ContentsOf(folder / L"builds");
            if (editorState.statusMessage == L"Projekt se nepodarilo sestavit.") {
                CHECK(builds.empty());
                return;
            }
            const bool isNumbered = builds.contains(L"ZelEngineProject_Build_01");
            const std::wstring name = isNumbered ? L"ZelEngineProject_Build_01" : L"ZelEngineProject_Build";
            CHECK(builds[name + L"\\Files\\imported\\deep\\note.txt"] == "a note");
            CHECK(builds[name + L"\\project.zel"] == FileBytes(ProjectIn(folder) + L"\\project.zel"));
            const bool isWhole =
                editorState.statusMessage == L"Projekt sestaven do: " + (folder / L"builds\\" + name);
            if (isWhole) {
                CHECK(builds[name + L"\\ZelGame.exe"] == "the program");
            } else {
                CHECK(editorState.statusMessage ==
                      L"Projekt ulozen jako build, ale nepodarilo se zkopirovat ZelGame.exe.");
                CHECK_FALSE(builds.contains(name + L"\\ZelGame.exe"));
            }
        });
}

TEST_CASE("a disk that is full before the program is copied leaves no part of it") {
    const ScratchFolder folder;
    StartToBuild(folder);
    const std::string program(100'000, 'x');
    PutFile(folderAnswers.executablePath, program);
    AnswerFolder(folder / L"builds");
    fileFaults = {.freeBytes = 50'000};
    BuildProject();
    fileFaults = {};
    CHECK(editorState.statusMessage ==
          L"Projekt ulozen jako build, ale nepodarilo se zkopirovat ZelGame.exe.");
    CHECK_FALSE(ContentsOf(BuildIn(folder)).contains(L"ZelGame.exe"));
}

TEST_CASE("the program beside a project file starts as its game") {
    const ScratchFolder folder;
    StartToBuild(folder);
    TapKey('G');
    const size_t objects = editorState.scene.size();
    BuildInto(folder / L"builds");

    StartIn(folder);
    folderAnswers.executablePath = BuildIn(folder) + L"\\ZelGame.exe";
    CHECK(DetectRuntimeProject());
    CHECK(editorState.playMode);
    CHECK(editorState.runtimeMode);
    CHECK_FALSE(editorState.hubVisible);
    CHECK(editorState.scene.size() == objects);
    CHECK(editorState.projectRoot == BuildIn(folder));
    CHECK(editorState.filesFolder == BuildIn(folder) + L"\\Files");
    CHECK(editorState.scenePath == BuildIn(folder) + L"\\Files\\Scenes\\Main.scene");
    CHECK(editorState.statusMessage == L"ZelGame runtime: projekt nacten z build slozky.");
    CHECK(std::ranges::any_of(editorState.fileEntries,
                              [](const AssetEntry& entry) { return entry.name == L"note.txt"; }));
}

TEST_CASE("the program without a project file beside it starts as the editor, whatever its name") {
    const ScratchFolder folder;
    StartToBuild(folder);
    BuildInto(folder / L"builds");
    CHECK(RenamePath(BuildIn(folder) + L"\\project.zel", folder / L"elsewhere"));
    StartIn(folder);
    folderAnswers.executablePath = BuildIn(folder) + L"\\ZelGame.exe";
    CHECK_FALSE(DetectRuntimeProject());
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.projectRoot == L"Project");
}

TEST_CASE("a project file that cannot be read plays the scene that is there") {
    const ScratchFolder folder;
    StartIn(folder);
    const size_t objects = editorState.scene.size();
    PutFolder(folder / L"program\\project.zel");
    CHECK(DetectRuntimeProject());
    CHECK(editorState.playMode);
    CHECK(editorState.scene.size() == objects);
    CHECK(editorState.scenePath == folder / L"program\\Files\\Scenes\\Main.scene");
}
