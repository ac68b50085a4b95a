#include "project/project_lifecycle.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "project/save_project.h"
#include "scene/undo.h"
#include "support/folder_tree.h"
#include "support/gestures.h"
#include "support/project_input.h"
#include "support/scene_equals_file.h"

#include "doctest/doctest.h"

#include <algorithm>

using Names = std::vector<std::wstring>;

static std::vector<std::wstring> KeysOf(const FolderContents& contents) {
    std::vector<std::wstring> keys;
    for (const auto& [path, bytes] : contents) keys.push_back(path);
    return keys;
}

static std::string RecentFile(const ScratchFolder& folder) {
    return FileBytes(folder / L"local\\ZelEngine\\recent-projects.txt");
}

static const Names kWholeProject{
    L"Files",           L"Files\\Scenes",  L"Files\\Scenes\\Main.scene",
    L"Files\\imported", L"Files\\scripts", L"Files\\scripts\\PlayerController.cpp",
    L"project.zel"};

TEST_CASE("a new project has its folders, its scene, its script and its project file") {
    const ScratchFolder folder;
    StartHub(folder);
    AnswerFolder(folder / L"projects");
    CreateProject(false);
    CHECK(headless.prompts == Names{L"Vyber slozku, kde se vytvori novy ZelEngine projekt"});
    CHECK(KeysOf(ContentsOf(ProjectIn(folder))) == kWholeProject);
    CHECK(FileBytes(FilesIn(folder) + L"\\scripts\\PlayerController.cpp") ==
          "// ZelEngine PlayerController\n\nfloat moveSpeed = 4.0f;\n\nvoid Update() {\n"
          "    // W/S/A/D pohyb je zatim spousten enginem podle nazvu PlayerController.\n}\n");
    CHECK(SceneEqualsFile(FilesIn(folder) + L"\\Scenes\\Main.scene"));
    CHECK(FileBytes(ProjectIn(folder) + L"\\project.zel")
              .starts_with("\xEF\xBB\xBFZELENGINE_PROJECT\t1\r\nFILES\tFiles\r\n"
                           "CURRENT_SCENE\tFiles\\Scenes\\Main.scene\r\nO\t"));

    CHECK(editorState.projectRoot == ProjectIn(folder));
    CHECK(editorState.filesRoot == FilesIn(folder));
    CHECK(editorState.filesFolder == FilesIn(folder));
    CHECK(editorState.scenePath == FilesIn(folder) + L"\\Scenes\\Main.scene");
    CHECK_FALSE(editorState.hubVisible);
    CHECK(editorState.fileEntries.size() == 5);
    CHECK(headless.title == L"ZelEngine - ZelEngineProject");
    CHECK(editorState.windowTitle == headless.title);
    CHECK(editorState.recentProjects.front().path == ProjectIn(folder));
    CHECK(RecentFile(folder).find("ZelEngineProject\r\n") != std::string::npos);
    CHECK(editorState.statusMessage == L"Zakladni projekt vytvoren: " + ProjectIn(folder));
}

TEST_CASE("a project made twice in one folder gets a number") {
    const ScratchFolder folder;
    StartHub(folder);
    for (const wchar_t* name : {L"", L"_01", L"_02"}) {
        AnswerFolder(folder / L"projects");
        CreateProject(true);
        CHECK(editorState.projectRoot == ProjectIn(folder) + name);
    }
    CHECK(editorState.statusMessage == L"Prazdny projekt vytvoren: " + ProjectIn(folder) + L"_02");
}

TEST_CASE("an existing player script is not overwritten") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFile(folder / L"projects\\ZelEngineProject\\taken", "");
    for (int32_t i = 1; i <= 99; ++i) {
        const std::wstring number = (i < 10 ? L"0" : L"") + std::to_wstring(i);
        PutFolder(ProjectIn(folder) + L"_" + number);
    }
    const std::wstring last = ProjectIn(folder) + L"_New";
    PutFile(last + L"\\Files\\scripts\\PlayerController.cpp", "mine");
    AnswerFolder(folder / L"projects");
    CreateProject(false);
    CHECK(editorState.projectRoot == last);
    CHECK(FileBytes(last + L"\\Files\\scripts\\PlayerController.cpp") == "mine");
}

TEST_CASE("creating a project clears what the user was in the middle of") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    TapKey('P');
    Answers({Answer::No});
    AnswerFolder(folder / L"projects");
    TapWithControl('N');
    CHECK(editorState.projectRoot == ProjectIn(folder) + L"_01");
    CHECK_FALSE(editorState.playMode);
    CHECK_FALSE(editorState.sceneBeforePlay.has_value());
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.screen == Screen::SceneEditor);
    TapWithControl('Z');
    CHECK(SceneEqualsFile(editorState.scenePath));
}

TEST_CASE("a cancelled choice of a folder changes nothing") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    const std::wstring root = editorState.projectRoot;
    const size_t objects = editorState.scene.size();
    TapWithControl('N');
    CHECK(editorState.statusMessage == L"Vytvoreni noveho projektu zruseno.");
    TapWithControl('O');
    CHECK(editorState.statusMessage == L"Otevreni projektu zruseno.");
    CHECK(editorState.projectRoot == root);
    CHECK(editorState.scene.size() == objects);
    CHECK(headless.prompts.size() == 2);  // and nothing was asked about the scene
}

TEST_CASE("leaving for another project asks about a changed scene") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    const size_t objects = editorState.scene.size();
    AnswerFolder(folder / L"projects");
    Answers({Answer::Cancel});
    TapWithControl('N');
    CHECK(editorState.statusMessage == L"Otevreni sceny zruseno.");
    CHECK(editorState.projectRoot == ProjectIn(folder));
    CHECK(editorState.scene.size() == objects);
    CHECK(KeysOf(ContentsOf(folder / L"projects")).size() == 1 + kWholeProject.size());

    AnswerFolder(ProjectIn(folder));
    Answers({Answer::Yes});
    TapWithControl('O');
    CHECK(editorState.statusMessage == L"Projekt otevren: " + ProjectIn(folder));
    CHECK(editorState.scene.size() == objects);  // saved, and read again
}

TEST_CASE("whichever step fails, a new project is whole or leaves nothing") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartHub(folder);
            AnswerFolder(folder / L"projects");
        },
        [](const ScratchFolder&) { CreateProject(false); },
        [](const ScratchFolder& folder) {
            if (editorState.statusMessage == L"Projekt se nepodarilo ulozit.") {
                CHECK(ContentsOf(folder / L"projects").empty());
                CHECK(editorState.hubVisible);
                CHECK(editorState.projectRoot == L"Project");
                CHECK(editorState.recentProjects.empty());
                CHECK(headless.title.empty());
            } else {
                CHECK(editorState.statusMessage.starts_with(L"Zakladni projekt vytvoren: "));
                CHECK(KeysOf(ContentsOf(editorState.projectRoot)) == kWholeProject);
                CHECK_FALSE(editorState.hubVisible);
            }
        });
}

TEST_CASE("whichever step fails, a new project leaves the project that has its name alone") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartProject(folder);
            PutFile(editorState.scenePath, "precious");
            editorState.hubVisible = true;
            AnswerFolder(folder / L"projects");
        },
        [](const ScratchFolder&) { CreateProject(true); },
        [](const ScratchFolder& folder) {
            CHECK(KeysOf(ContentsOf(ProjectIn(folder))) == kWholeProject);
            CHECK(FileBytes(FilesIn(folder) + L"\\Scenes\\Main.scene") == "precious");
        });
}

TEST_CASE("a full disk leaves nothing of a new project, and the scene that was open") {
    for (const int64_t freeBytes : {0, 100, 160, 500, 2000}) {
        CAPTURE(freeBytes);
        const ScratchFolder folder;
        StartProject(folder);
        const FolderContents before = ContentsOf(folder / L"projects");
        const Scene scene = editorState.scene;
        AnswerFolder(folder / L"projects");
        fileFaults = {.freeBytes = freeBytes};
        CreateProject(false);
        fileFaults = {};
        CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
        CHECK(ContentsOf(folder / L"projects") == before);
        CHECK(editorState.projectRoot == ProjectIn(folder));
        CHECK(SceneEqualsFile(editorState.scenePath));
        CHECK(editorState.scene.size() == scene.size());
    }
}

TEST_CASE("a folder that cannot be written to gives a message and no project") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFile(folder / L"file", "x");
    AnswerFolder(folder / L"file");  // a folder cannot be made in it
    CreateProject(false);
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
    CHECK(editorState.hubVisible);
    CHECK(FileBytes(folder / L"file") == "x");
}

TEST_CASE("a project opens with its scene, its list of files and its title") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    TapWithControl('S');
    const size_t objects = editorState.scene.size();

    StartHub(folder);
    AnswerFolder(ProjectIn(folder));
    TapWithControl('O');
    CHECK(headless.prompts == Names{L"Vyber slozku ZelEngine projektu"});
    CHECK(editorState.scene.size() == objects);
    CHECK(editorState.statusMessage == L"Projekt otevren: " + ProjectIn(folder));
    CHECK(editorState.fileEntries.size() == 5);
    CHECK(headless.title == L"ZelEngine - ZelEngineProject");
    CHECK(editorState.recentProjects.front().path == ProjectIn(folder));
    CHECK_FALSE(editorState.hubVisible);
}

TEST_CASE("a project opens from its Files folder too") {
    const ScratchFolder folder;
    StartProject(folder);
    StartHub(folder);
    AnswerFolder(FilesIn(folder));
    OpenProjectDialog();
    CHECK(editorState.projectRoot == ProjectIn(folder));
}

TEST_CASE("a Files folder with a project file of its own is that project") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\project.zel", "ZELENGINE_PROJECT\t1\r\n");
    StartHub(folder);
    AnswerFolder(FilesIn(folder));
    OpenProjectDialog();
    CHECK(editorState.projectRoot == FilesIn(folder));
}

TEST_CASE("opening says whether the folder holds no project or the user stays") {
    const ScratchFolder folder;
    StartProject(folder);
    const std::wstring other = folder / L"projects\\Other";
    PutFolder(other + L"\\Files");
    pushUndo("Remove");
    editorState.scene.pop_back();
    Answers({Answer::Cancel});
    CHECK(OpenProject(other) == Opening::Refused);
    CHECK(editorState.projectRoot == ProjectIn(folder));
    CHECK(editorState.scene.size() == 5);
    CHECK(OpenProject(folder / L"nowhere") == Opening::NoProject);
    CHECK(headless.prompts.size() == 1);
    Answers({Answer::No});
    CHECK(OpenProject(other) == Opening::Opened);
    CHECK(editorState.projectRoot == other);
}

TEST_CASE("a folder that is no project is refused") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFile(folder / L"file", "x");
    PutFile(folder / L"flat\\Files", "a file");
    PutFolder(folder / L"lonely\\Files");
    PutFolder(folder / L"empty");
    for (const wchar_t* name : {L"file", L"flat", L"empty", L"missing", L"lonely\\Files"}) {
        editorState.statusMessage.clear();
        AnswerFolder(folder / name);
        OpenProjectDialog();
        CHECK(editorState.statusMessage == L"Vybrana slozka neni ZelEngine projekt.");
        CHECK(editorState.hubVisible);
        CHECK(OpenProject(folder / name) == Opening::NoProject);
    }
    CHECK(OpenProject(L"") == Opening::NoProject);
    CHECK(editorState.recentProjects.empty());
    CHECK(ContentsOf(folder / L"empty").empty());
}

TEST_CASE(
    "a folder with Files and no project file opens with the default scene, and saving writes the file") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFolder(folder / L"projects\\Bare\\Files");
    AnswerFolder(folder / L"projects\\Bare");
    OpenProjectDialog();
    CHECK(editorState.statusMessage ==
          L"Projekt otevren, ale project.zel nebyl nalezen. Vytvorena vychozi scena.");
    CHECK(editorState.scenePath == folder / L"projects\\Bare\\Files\\Scenes\\Main.scene");
    CHECK(SceneEqualsFile(editorState.scenePath));
    CHECK(KindOfPath(folder / L"projects\\Bare\\project.zel") == PathKind::Missing);
    CHECK(editorState.fileEntries.size() == 4);  // the new scene among them
    TapWithControl('S');
    CHECK(KindOfPath(folder / L"projects\\Bare\\project.zel") == PathKind::File);
}

TEST_CASE("a main scene without a project file is kept under the first free name") {
    const ScratchFolder folder;
    StartHub(folder);
    const std::wstring scenes = folder / L"projects\\Bare\\Files\\Scenes\\";
    PutFile(scenes + L"Main.scene", "work");
    PutFile(scenes + L"Main_01.scene", "older work");
    CHECK(OpenProject(folder / L"projects\\Bare") == Opening::Opened);
    CHECK(FileBytes(scenes + L"Main_02.scene") == "work");
    CHECK(FileBytes(scenes + L"Main_01.scene") == "older work");
    CHECK(SceneEqualsFile(scenes + L"Main.scene"));
}

TEST_CASE("whichever step of opening fails, no scene of the project is lost") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartHub(folder);
            const std::wstring scenes = folder / L"projects\\Bare\\Files\\Scenes\\";
            PutFile(scenes + L"Main.scene", "work");
            PutFile(scenes + L"Main_01.scene", "older work");
        },
        [](const ScratchFolder& folder) { OpenProject(folder / L"projects\\Bare"); },
        [](const ScratchFolder& folder) {
            const std::wstring scenes = folder / L"projects\\Bare\\Files\\Scenes\\";
            CHECK(FileBytes(scenes + L"Main_01.scene") == "older work");
            // Under whichever name.
            const FolderContents contents = ContentsOf(scenes.substr(0, scenes.size() - 1));
            const bool isKept =
                std::ranges::any_of(contents, [](const auto& file) { return file.second == "work"; });
            CHECK(isKept);
        });
}

TEST_CASE("a project file that is a folder opens as a project without one") {
    const ScratchFolder folder;
    StartHub(folder);
    PutFolder(folder / L"projects\\Odd\\project.zel");
    CHECK(OpenProject(folder / L"projects\\Odd") == Opening::Opened);
    CHECK(editorState.statusMessage ==
          L"Projekt otevren, ale project.zel nebyl nalezen. Vytvorena vychozi scena.");
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Scena ulozena, ale project.zel se nepodarilo ulozit.");
    CHECK(SceneEqualsFile(editorState.scenePath));
}

TEST_CASE("a path with a separator at its end opens the same project") {
    const ScratchFolder folder;
    StartProject(folder);
    StartHub(folder);
    CHECK(OpenProject(ProjectIn(folder) + L"\\") == Opening::Opened);
    CHECK(editorState.projectRoot == ProjectIn(folder));
    CHECK(editorState.scenePath == FilesIn(folder) + L"\\Scenes\\Main.scene");
    CHECK(headless.title == L"ZelEngine - ZelEngineProject");
}

TEST_CASE("opening a project empties the undo history and stops the game") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    TapWithControl('S');
    TapKey('P');
    OpenFolderNamed(L"Scenes");
    CHECK(OpenProject(ProjectIn(folder)) == Opening::Opened);
    CHECK_FALSE(editorState.playMode);
    CHECK(editorState.undoSteps.empty());
    CHECK(editorState.filesFolder == FilesIn(folder));
    CHECK(headless.prompts.empty());
}

TEST_CASE("a drag of a file ends when another project opens") {
    const ScratchFolder folder;
    StartProject(folder);
    const Point at = FileNamed(L"scripts");
    Press(at);
    Move({at.x + 20, at.y});
    CHECK(IsDragged<FilesDrag>());
    AnswerFolder(ProjectIn(folder));
    TapWithControl('O');
    CHECK_FALSE(Held<FilesDrag>());
    Release({600, 300});
    CHECK(editorState.statusMessage == L"Projekt otevren: " + ProjectIn(folder));
}

TEST_CASE("opening a project is the way from the game to the editor, creating one is not") {
    const ScratchFolder folder;
    StartProject(folder);
    editorState.runtimeMode = true;
    editorState.playMode = true;
    AnswerFolder(ProjectIn(folder));
    TapWithControl('O');
    CHECK_FALSE(editorState.runtimeMode);
    CHECK_FALSE(editorState.playMode);
    editorState.runtimeMode = true;
    AnswerFolder(folder / L"projects");
    TapWithControl('N');
    CHECK(editorState.runtimeMode);
}

TEST_CASE("Ctrl+S saves the scene and the project file") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    CHECK_FALSE(SceneEqualsFile(editorState.scenePath));
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Ctrl+S: projekt ulozen: " + ProjectIn(folder));
    CHECK(SceneEqualsFile(editorState.scenePath));
    const std::string scene = FileBytes(editorState.scenePath);
    const std::string project = FileBytes(ProjectIn(folder) + L"\\project.zel");
    CHECK(project.substr(project.find("O\t")) == scene.substr(scene.find("O\t")));
}

TEST_CASE("a scene without a file is saved as the main scene") {
    const ScratchFolder folder;
    StartProject(folder);
    editorState.scenePath.clear();
    RemoveTree(FilesIn(folder) + L"\\Scenes");
    SaveProject();
    CHECK(editorState.scenePath == FilesIn(folder) + L"\\Scenes\\Main.scene");
    CHECK(SceneEqualsFile(editorState.scenePath));
}

TEST_CASE("saving while a game plays changes no file") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    const FolderContents before = ContentsOf(folder.path);
    TapKey('P');
    for (const auto save : {+[] { TapWithControl('S'); }, +[] { TapWithControlAndShift('S'); },
                            +[] {
                                Click({1100, 20});
                            }}) {
        editorState.statusMessage.clear();
        save();
        CHECK(editorState.statusMessage ==
              L"Nejdriv vypni Play Mode. Runtime zmeny se do projektu neukladaji.");
    }
    CHECK(ContentsOf(folder.path) == before);
    CHECK(headless.prompts.empty());
}

TEST_CASE("whichever step of a save fails, every file is the old one or the new one") {
    static FolderContents old;
    static std::string newScene, newProject;
    {
        const ScratchFolder folder;
        StartProject(folder);
        old = ContentsOf(ProjectIn(folder));
        TapKey('G');
        SaveProject();
        newScene = FileBytes(editorState.scenePath);
        newProject = FileBytes(ProjectIn(folder) + L"\\project.zel");
    }
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartProject(folder);
            TapKey('G');
        },
        [](const ScratchFolder&) { SaveProject(); },
        [](const ScratchFolder& folder) {
            FolderContents contents = ContentsOf(ProjectIn(folder));
            const bool sceneIsNew = contents[L"Files\\Scenes\\Main.scene"] == newScene;
            const bool projectIsNew = contents[L"project.zel"] == newProject;
            if (!sceneIsNew)
                CHECK(contents[L"Files\\Scenes\\Main.scene"] == old[L"Files\\Scenes\\Main.scene"]);
            if (!projectIsNew) CHECK(contents[L"project.zel"] == old[L"project.zel"]);
            CHECK(KeysOf(contents) == KeysOf(old));
            const wchar_t* message = !sceneIsNew     ? L"Projekt se nepodarilo ulozit."
                                     : !projectIsNew ? L"Scena ulozena, ale project.zel se nepodarilo ulozit."
                                                     : L"Ctrl+S: projekt ulozen: ";
            CHECK(editorState.statusMessage.starts_with(message));
        });
}

TEST_CASE("a project folder that disappears is made again by saving") {
    const ScratchFolder folder;
    StartProject(folder);
    RemoveTree(folder / L"projects");
    RenderFrame();
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Ctrl+S: projekt ulozen: " + ProjectIn(folder));
    CHECK(SceneEqualsFile(FilesIn(folder) + L"\\Scenes\\Main.scene"));
    CHECK(KindOfPath(ProjectIn(folder) + L"\\project.zel") == PathKind::File);
}

TEST_CASE("in a project folder that has disappeared every command fails with its message") {
    const ScratchFolder folder;
    StartProject(folder);
    RemoveTree(folder / L"projects");
    PutFile(folder / L"projects", "a file stands in the way");
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
    AnswerFolder(folder.path);
    TapWithControlAndShift('S');
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
    AnswerFolder(folder.path);
    TapWithControl('B');
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo sestavit.");
    ChooseCreate(CreateItem::Script);
    CHECK(editorState.statusMessage == L"Polozku projektu se nepodarilo vytvorit.");
    CHECK(editorState.projectRoot == ProjectIn(folder));
    CHECK(KindOfPath(ProjectIn(folder)) == PathKind::Missing);
    CHECK(KindOfPath(folder / L"ZelEngineProject") == PathKind::Missing);
    CHECK(KindOfPath(folder / L"ZelEngineProject_Build") == PathKind::Missing);
}

TEST_CASE("no project is created while the user stays in an unsaved prefab") {
    const ScratchFolder folder;
    StartProject(folder);
    const std::wstring root = editorState.projectRoot;
    PutFolder(folder / L"other");
    editorState.screen = Screen::PrefabEditor;
    editorState.prefabDirty = true;
    Answers({Answer::Cancel});
    AnswerFolder(folder / L"other");
    CreateProject(true);
    CHECK(headless.prompts == std::vector<std::wstring>{L"Chces ulozit zmeny v prefabu?"});
    CHECK(editorState.projectRoot == root);
    CHECK(editorState.screen == Screen::PrefabEditor);
    CHECK(ContentsOf(folder / L"other").empty());
}
