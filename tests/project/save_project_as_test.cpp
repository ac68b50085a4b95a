#include "project/save_project_as.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "support/folder_tree.h"
#include "support/project_input.h"
#include "support/scene_equals_file.h"

#include "doctest/doctest.h"

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

TEST_CASE("a project saved under a new folder is a whole copy, and the editor goes on with it") {
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
