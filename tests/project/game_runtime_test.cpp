#include "project/project_lifecycle.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "support/folder_tree.h"
#include "support/project_input.h"
#include "support/scene_equals_file.h"

#include "doctest/doctest.h"

#include <algorithm>

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
