#include "project/save_project.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "support/capture.h"
#include "support/folder_tree.h"
#include "support/project_input.h"
#include "support/scene_equals_file.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <deque>

static std::wstring CopyIn(const ScratchFolder& folder) { return folder / L"backup\\ZelEngineProject"; }

static void SaveInto(const std::wstring& chosen) {
    AnswerFolder(chosen);
    TapWithControlAndShift('S');
}

// A project with something to lose, and an empty folder "backup".
static void StartWithFiles(const ScratchFolder& folder) {
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\imported\\box.txt", "a box");
    PutFile(FilesIn(folder) + L"\\imported\\deep\\deeper\\note.txt", "a note");
    PutFolder(FilesIn(folder) + L"\\imported\\empty");
    PutFolder(folder / L"backup");
}

TEST_CASE("saving into a new folder makes a whole copy, and the editor continues with it") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    TapKey('G');
    SaveInto(folder / L"backup");
    CHECK(headless.prompts == std::vector<std::wstring>{L"Vyber slozku, kam se ma ulozit ZelEngine projekt"});
    CHECK(editorState.statusMessage == L"Projekt ulozen do: " + CopyIn(folder));
    // The scene was saved in the old project first, and the project file in the new one only.
    CHECK(ContentsOf(CopyIn(folder) + L"\\Files") == ContentsOf(FilesIn(folder)));
    const std::string project = FileBytes(CopyIn(folder) + L"\\project.zel");
    const std::string scene = FileBytes(FilesIn(folder) + L"\\Scenes\\Main.scene");
    CHECK(project.substr(project.find("O\t")) == scene.substr(scene.find("O\t")));

    CHECK(editorState.projectRoot == CopyIn(folder));
    CHECK(editorState.filesRoot == CopyIn(folder) + L"\\Files");
    CHECK(editorState.filesFolder == CopyIn(folder) + L"\\Files");
    CHECK(editorState.scenePath == CopyIn(folder) + L"\\Files\\Scenes\\Main.scene");
    CHECK(SceneEqualsFile(editorState.scenePath));
    CHECK(editorState.fileEntries.front().path.starts_with(CopyIn(folder)));
    CHECK(editorState.recentProjects.front().path == CopyIn(folder));
    CHECK(headless.title == L"ZelEngine - ZelEngineProject");
}

TEST_CASE("the project file of a copy names the copied scene and is read there") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    SaveInto(folder / L"backup");
    RemoveTree(folder / L"projects");
    CHECK(OpenProject(CopyIn(folder)) == Opening::Opened);
    CHECK(editorState.scenePath == CopyIn(folder) + L"\\Files\\Scenes\\Main.scene");
    CHECK(editorState.statusMessage == L"Projekt otevren: " + CopyIn(folder));
}

TEST_CASE("the folder that the Files page shows is the same one in the copy") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    OpenFolderNamed(L"imported");
    SaveInto(folder / L"backup");
    CHECK(editorState.filesFolder == CopyIn(folder) + L"\\Files\\imported");
    CHECK(IsShown(L"deep"));
}

TEST_CASE("a project saved twice into one folder gets a number") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    SaveInto(folder / L"backup");
    SaveInto(folder / L"backup");
    CHECK(editorState.projectRoot == CopyIn(folder) + L"_01");
}

TEST_CASE("a project can be copied into itself") {
    for (const wchar_t* inside : {L"", L"\\Files", L"\\Files\\imported\\deep"}) {
        const ScratchFolder folder;
        StartWithFiles(folder);
        const FolderContents before = ContentsOf(FilesIn(folder));
        const std::wstring chosen = ProjectIn(folder) + inside;
        SaveInto(chosen);
        CHECK(editorState.projectRoot == chosen + L"\\ZelEngineProject");
        CHECK(ContentsOf(editorState.filesRoot) == before);
    }
}

TEST_CASE("a cancelled choice of a folder saves nothing") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    TapKey('G');
    const FolderContents before = ContentsOf(folder.path);
    TapWithControlAndShift('S');
    CHECK(editorState.statusMessage == L"Ulozeni projektu zruseno.");
    CHECK(ContentsOf(folder.path) == before);
}

TEST_CASE("links are not followed out of the project, and a circle of links ends") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    PutFile(folder / L"outside\\secret.txt", "secret");
    if (!PutLink(FilesIn(folder) + L"\\imported\\out", folder / L"outside")) return;
    CHECK(PutLink(FilesIn(folder) + L"\\imported\\file.txt", folder / L"outside\\secret.txt"));
    CHECK(PutLink(FilesIn(folder) + L"\\imported\\circle", FilesIn(folder)));
    CHECK(PutLink(FilesIn(folder) + L"\\imported\\itself", FilesIn(folder) + L"\\imported\\itself"));
    SaveInto(folder / L"backup");
    CHECK(editorState.statusMessage == L"Projekt ulozen do: " + CopyIn(folder));
    CHECK(KindOfPath(CopyIn(folder) + L"\\Files\\imported\\out") == PathKind::Missing);
    CHECK(KindOfPath(CopyIn(folder) + L"\\Files\\imported\\file.txt") == PathKind::Missing);
    CHECK(KindOfPath(CopyIn(folder) + L"\\Files\\imported\\circle") == PathKind::Missing);
    CHECK(FileBytes(CopyIn(folder) + L"\\Files\\imported\\box.txt") == "a box");
    for (const AssetEntry& entry : editorState.fileEntries) CHECK(entry.name != L"secret.txt");
}

TEST_CASE("whichever step fails, the copy is whole or leaves nothing, and the project stays as it was") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartWithFiles(folder);
            AnswerFolder(folder / L"backup");
        },
        [](const ScratchFolder&) { SaveProjectAs(); },
        [](const ScratchFolder& folder) {
            FolderContents original = ContentsOf(ProjectIn(folder));
            CHECK(original[L"Files\\imported\\box.txt"] == "a box");
            if (editorState.statusMessage == L"Projekt se nepodarilo ulozit.") {
                CHECK(ContentsOf(folder / L"backup").empty());
                CHECK(editorState.projectRoot == ProjectIn(folder));
                CHECK(editorState.scenePath == FilesIn(folder) + L"\\Scenes\\Main.scene");
                CHECK(headless.title == L"ZelEngine - ZelEngineProject");
            } else {
                CHECK(editorState.statusMessage == L"Projekt ulozen do: " + editorState.projectRoot);
                CHECK(ContentsOf(editorState.projectRoot) == original);
            }
        });
}

TEST_CASE("a full disk leaves nothing of the copy") {
    for (const int64_t freeBytes : {0, 10, 3000, 3500, 4000, 6000}) {
        CAPTURE(freeBytes);
        const ScratchFolder folder;
        StartWithFiles(folder);
        const FolderContents before = ContentsOf(ProjectIn(folder));
        AnswerFolder(folder / L"backup");
        fileFaults = {.freeBytes = freeBytes};
        SaveProjectAs();
        fileFaults = {};
        if (editorState.projectRoot != ProjectIn(folder)) continue;  // there was room enough
        CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
        CHECK(ContentsOf(folder / L"backup").empty());
        CHECK(ContentsOf(ProjectIn(folder)) == before);
    }
}

TEST_CASE("from the Prefab editor it closes the prefab first, and stops when the prefab stays open") {
    const ScratchFolder folder;
    StartWithFiles(folder);
    ChooseCreate(CreateItem::Prefab);
    DoubleClick(FileNamed(L"PlayerCube.prefab"));
    REQUIRE(editorState.screen == Screen::PrefabEditor);
    TapKey('G');
    Answers({Answer::Cancel});
    SaveInto(folder / L"backup");
    CHECK(editorState.screen == Screen::PrefabEditor);
    CHECK(ContentsOf(folder / L"backup").empty());
    Answers({Answer::No});
    SaveInto(folder / L"backup");
    CHECK(editorState.screen == Screen::SceneEditor);
    CHECK(editorState.projectRoot == CopyIn(folder));
    CHECK(SceneEqualsFile(CopyIn(folder) + L"\\Files\\Scenes\\Main.scene"));
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

TEST_CASE("after a build the editor stays in its project") {
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

TEST_CASE("a build without the program stays as a project") {
    const ScratchFolder folder;
    StartToBuild(folder);
    folderAnswers.executablePath = folder / L"missing.exe";
    BuildInto(folder / L"builds");
    CHECK(editorState.statusMessage ==
          L"Projekt ulozen jako build, ale nepodarilo se zkopirovat ZelGame.exe.");
    CHECK(KindOfPath(BuildIn(folder) + L"\\project.zel") == PathKind::File);
    CHECK(KindOfPath(BuildIn(folder) + L"\\ZelGame.exe") == PathKind::Missing);
}

TEST_CASE("whichever step fails, a build says what is there and leaves nothing in part") {
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

// Runs a copying command once for every moment at which Esc may come, each time from a fresh `start`; then
// `check`, which is told whether the command was cancelled by `message`.
template <typename Start, typename Act, typename Check>
static void CancelAtEachMoment(Start start, Act act, const std::wstring& message, Check check) {
    for (size_t moment = 0;; ++moment) {
        CAPTURE(moment);
        const ScratchFolder folder;
        start(folder);
        headless.workTimeStep = 1;  // every look at the clock is a turn
        headless.workInput = std::deque<std::vector<InputEvent>>(moment);
        headless.workInput.push_back({{.kind = InputKind::KeyDown, .key = kKeyEscape}});
        act(folder);
        headless.workTimeStep = 0;
        const bool isCancelled = editorState.statusMessage == message;
        const bool cameTooLate = !headless.workInput.empty();
        headless.workInput.clear();
        check(folder, isCancelled);
        if (cameTooLate) {
            CHECK(moment > 5);
            break;
        }
    }
}

TEST_CASE("whenever Esc comes, saving under a new folder is cancelled without a trace or has ended") {
    CancelAtEachMoment(
        StartWithFiles, [](const ScratchFolder& folder) { SaveInto(folder / L"backup"); },
        L"Ulozeni projektu zruseno.",
        [](const ScratchFolder& folder, bool isCancelled) {
            const FolderContents original = ContentsOf(FilesIn(folder));
            CHECK(ContentsOf(folder / L"backup").empty() == isCancelled);
            CHECK(editorState.projectRoot == (isCancelled ? ProjectIn(folder) : CopyIn(folder)));
            CHECK(ContentsOf(editorState.filesRoot) == original);
            CHECK(SceneEqualsFile(editorState.scenePath));
            CHECK_FALSE(headless.quitRequested);
        });
}

TEST_CASE("whenever Esc comes, a build is cancelled without a trace or has ended") {
    CancelAtEachMoment(
        StartToBuild, [](const ScratchFolder& folder) { BuildInto(folder / L"builds"); },
        L"Sestaveni projektu zruseno.",
        [](const ScratchFolder& folder, bool isCancelled) {
            CHECK(ContentsOf(folder / L"builds").empty() == isCancelled);
            if (isCancelled) return;
            CHECK(editorState.statusMessage == L"Projekt sestaven do: " + BuildIn(folder));
            CHECK(FileBytes(BuildIn(folder) + L"\\ZelGame.exe") == "the program");
            CHECK(ContentsOf(BuildIn(folder) + L"\\Files") == ContentsOf(FilesIn(folder)));
        });
}

TEST_CASE("a long copy and a long build count their files over the bottom panel") {
    // Main.scene, PlayerController.cpp and note.txt; the copy has box.txt too.
    const struct {
        void (*start)(const ScratchFolder& folder);
        void (*copyInto)(const std::wstring& parent);
        const wchar_t *first, *last;
    } cases[] = {
        {StartWithFiles, SaveInto, L"Kopiruji projekt: 0 z 4 souboru", L"Kopiruji projekt: 3 z 4 souboru"},
        {StartToBuild, BuildInto, L"Sestavuji projekt: 0 z 3 souboru", L"Sestavuji projekt: 2 z 3 souboru"}};
    for (const auto& [start, copyInto, first, last] : cases) {
        const ScratchFolder folder;
        start(folder);
        headless.texts.clear();
        headless.workTimeStep = 1;
        copyInto(folder / L"copies");
        headless.workTimeStep = 0;
        for (const wchar_t* text : {first, last})
            CHECK(std::ranges::find(headless.texts, text, &DrawnText::text) != headless.texts.end());
        CHECK(headless.taskProgress.back() < 0);
    }
}
