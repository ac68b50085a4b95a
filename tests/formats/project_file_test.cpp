#include "formats/project_file.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "platform/headless/fault_injection.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

static std::string Line(const std::string& name) { return "O\t" + name + std::string(28, '\t'); }

static void OpenIn(const ScratchFolder& folder) {
    editorState.projectRoot = folder.path;
    editorState.filesRoot = folder / L"Files";
    editorState.scenePath = folder / L"Files\\Scenes\\Second.scene";
    resetScene(false);
}

TEST_CASE("a project file holds three header lines and the scene") {
    const ScratchFolder folder;
    OpenIn(folder);
    editorState.scene.clear();
    CHECK(WriteProjectFile(folder.path));
    CHECK(FileBytes(folder / L"project.zel") ==
          "\xEF\xBB\xBFZELENGINE_PROJECT\t1\r\nFILES\tFiles\r\n"
          "CURRENT_SCENE\tFiles\\Scenes\\Second.scene\r\n");

    resetScene(false);
    CHECK(WriteProjectFile(folder.path));
    CHECK(SaveScene(folder / L"same.scene"));
    const std::string project = FileBytes(folder / L"project.zel"), scene = FileBytes(folder / L"same.scene");
    CHECK(project.substr(project.find("O\t")) == scene.substr(scene.find("O\t")));
}

TEST_CASE("the current scene is written relative to the folder that the project is written into") {
    const ScratchFolder folder;
    OpenIn(folder);
    editorState.scene.clear();
    CHECK(WriteProjectFile(folder / L"new\\deep"));
    CHECK(FileBytes(folder / L"new\\deep\\project.zel")
              .find("CURRENT_SCENE\t" + std::string(folder.path.begin(), folder.path.end()) +
                    "\\Files\\Scenes\\Second.scene\r\n") != std::string::npos);
}

TEST_CASE("a project file that cannot be written fails and leaves the old one") {
    const ScratchFolder folder;
    OpenIn(folder);
    PutFile(folder / L"project.zel", "old");
    fileFaults = {.freeBytes = 10};
    CHECK_FALSE(WriteProjectFile(folder.path));
    fileFaults = {};
    CHECK(FileBytes(folder / L"project.zel") == "old");
    PutFile(folder / L"file", "x");
    CHECK_FALSE(WriteProjectFile(folder / L"file"));
    PutFolder(folder / L"taken\\project.zel");
    CHECK_FALSE(WriteProjectFile(folder / L"taken"));
}

TEST_CASE("a project opens with the scene that it names") {
    const ScratchFolder folder;
    OpenIn(folder);
    PutFile(folder / L"Files\\Scenes\\Second.scene", Line("from the scene"));
    PutFile(folder / L"project.zel",
            "ZELENGINE_PROJECT\t1\nFILES\tOther\nCURRENT_SCENE\tFiles\\Scenes\\Second.scene\tmore\n"
            "CURRENT_SCENE\tFiles\\Scenes\\Third.scene\n" +
                Line("from the project"));
    editorState.scenePath.clear();
    CHECK(ReadProjectFile(folder.path));
    REQUIRE(editorState.scene.size() == 1);
    CHECK(editorState.scene[0].name == L"from the scene");
    CHECK(editorState.scenePath == folder / L"Files\\Scenes\\Second.scene");
}

TEST_CASE("a project whose scene is missing, a folder or not named opens with its own copy as Main.scene") {
    for (const char* header : {"CURRENT_SCENE\tFiles\\Scenes\\Deleted.scene\r\n", "CURRENT_SCENE\tFiles\r\n",
                               "", "CURRENT_SCENE\r\n", "current_scene\tFiles\\Scenes\\Second.scene\r\n",
                               " CURRENT_SCENE\tFiles\\Scenes\\Second.scene\r\n"}) {
        const ScratchFolder folder;
        OpenIn(folder);
        PutFile(folder / L"Files\\Scenes\\Second.scene", Line("from the scene"));
        PutFile(folder / L"project.zel", header + Line("from the project") + "\r\n");
        CHECK(ReadProjectFile(folder.path));
        REQUIRE(editorState.scene.size() == 1);
        CHECK(editorState.scene[0].name == L"from the project");
        CHECK(editorState.scenePath == folder / L"Files\\Scenes\\Main.scene");
    }
}

TEST_CASE("an empty scene path names the project folder and so falls back") {
    const ScratchFolder folder;
    OpenIn(folder);
    PutFile(folder / L"project.zel", "CURRENT_SCENE\t\r\n" + Line("from the project"));
    CHECK(ReadProjectFile(folder.path));
    CHECK(editorState.scenePath == folder / L"Files\\Scenes\\Main.scene");
    CHECK(editorState.scene[0].name == L"from the project");
}

TEST_CASE("a scene that exists and cannot be read falls back as well") {
    const ScratchFolder folder;
    OpenIn(folder);
    PutFile(folder / L"Files\\Scenes\\Second.scene", Line("from the scene"));
    PutFile(folder / L"project.zel",
            "CURRENT_SCENE\tFiles\\Scenes\\Second.scene\n" + Line("from the project"));
    // Read the project, ask for the scene's kind; the third step reads the scene.
    fileFaults = {.failStep = 3};
    CHECK(ReadProjectFile(folder.path));
    CHECK(editorState.scene[0].name == L"from the project");
    CHECK(editorState.scenePath == folder / L"Files\\Scenes\\Main.scene");
}

TEST_CASE("a project file without objects gives the default scene") {
    const ScratchFolder folder;
    OpenIn(folder);
    PutFile(folder / L"project.zel", "ZELENGINE_PROJECT\t1\r\n");
    CHECK(ReadProjectFile(folder.path));
    CHECK(editorState.scene.size() == 6);
}

TEST_CASE("opening a folder without a readable project file changes nothing") {
    const ScratchFolder folder;
    OpenIn(folder);
    editorState.scene[0].name = L"kept";
    PutFolder(folder / L"odd\\project.zel");
    for (const std::wstring& path : {folder.path, folder / L"missing", folder / L"odd"}) {
        CHECK_FALSE(ReadProjectFile(path));
        CHECK(editorState.scene[0].name == L"kept");
        CHECK(editorState.scenePath == folder / L"Files\\Scenes\\Second.scene");
    }
}

TEST_CASE("a project that was written is read with the same scene and path") {
    const ScratchFolder folder;
    OpenIn(folder);
    editorState.scene.push_back({.name = L"mine", .meshIndex = 0});
    for (GameObject& object : editorState.scene) object.meshIndex = 0;
    const Scene saved = editorState.scene;
    CHECK(SaveScene(editorState.scenePath));
    CHECK(WriteProjectFile(folder.path));
    const std::string bytes = FileBytes(folder / L"project.zel");
    resetScene(true);
    CHECK(ReadProjectFile(folder.path));
    CHECK(editorState.scene == saved);
    CHECK(WriteProjectFile(folder.path));
    CHECK(FileBytes(folder / L"project.zel") == bytes);

    RemoveTree(editorState.scenePath);
    CHECK(ReadProjectFile(folder.path));
    CHECK(editorState.scene == saved);
}

TEST_CASE("a project folder holds a project file of any kind, or a folder Files") {
    const ScratchFolder folder;
    PutFile(folder / L"a\\project.zel", "");
    PutFolder(folder / L"b\\project.zel");
    PutFolder(folder / L"c\\Files");
    PutFile(folder / L"d\\Files", "a file");
    PutFolder(folder / L"e");
    PutFile(folder / L"f", "a file");
    CHECK(IsProjectFolder(folder / L"a"));
    CHECK(IsProjectFolder(folder / L"b"));
    CHECK(IsProjectFolder(folder / L"c"));
    CHECK_FALSE(IsProjectFolder(folder / L"d"));
    CHECK_FALSE(IsProjectFolder(folder / L"e"));
    CHECK_FALSE(IsProjectFolder(folder / L"f"));
    CHECK_FALSE(IsProjectFolder(folder / L"a\\project.zel"));
    CHECK_FALSE(IsProjectFolder(folder / L"missing"));
    CHECK_FALSE(IsProjectFolder(L""));
}

TEST_CASE("a line of a project file is read in pieces of 4095 characters") {
    for (const size_t length : {4094u, 4095u, 4096u}) {
        const ScratchFolder folder;
        OpenIn(folder);
        PutFile(folder / L"Files\\Scenes\\Second.scene", Line("from the scene"));
        PutFile(folder / L"project.zel", std::string(length, 'x') +
                                             "CURRENT_SCENE\tFiles\\Scenes\\Second.scene\r\n" +
                                             Line("from the project"));
        CHECK(ReadProjectFile(folder.path));
        const bool isFound = editorState.scene[0].name == L"from the scene";
        CHECK(isFound == (length == 4095));
    }
}
