#include "formats/other_writers.h"

#include "formats/prefab.h"
#include "formats/scene_file.h"
#include "platform/files.h"
#include "project/asset_commands.h"
#include "project/asset_list.h"
#include "project/scene_switch.h"
#include "support/folder_tree.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>

static std::wstring MainScene(const ScratchFolder& folder) {
    return FilesIn(folder) + L"\\Scenes\\Main.scene";
}
static std::wstring OtherMain(const ScratchFolder& folder) {
    return FilesIn(folder) + L"\\Scenes\\Main_jine.scene";
}

constexpr const char* kTheirs = "ZELENGINE_SCENE\t1\r\nsomebody else's\r\n";

TEST_CASE("a scene that somebody else has changed is kept beside the saved one, and the message names it") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(MainScene(folder), kTheirs);
    TapKey('G');
    TapWithControl('S');
    CHECK(editorState.statusMessage ==
          L"Ctrl+S: projekt ulozen: " + ProjectIn(folder) + L" Jina verze: Main_jine.scene");
    CHECK(FileBytes(OtherMain(folder)) == kTheirs);
    CHECK(FileBytes(MainScene(folder)).find("GameObject_06") != std::string::npos);
    OpenFolderNamed(L"Scenes");
    CHECK(IsShown(L"Main_jine.scene"));

    TapKey('G');
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Ctrl+S: projekt ulozen: " + ProjectIn(folder));
    PutFile(MainScene(folder), "again");
    TapWithControl('S');
    CHECK(FileBytes(FilesIn(folder) + L"\\Scenes\\Main_jine_01.scene") == "again");
    CHECK(FileBytes(OtherMain(folder)) == kTheirs);
}

TEST_CASE("a project file that somebody else has changed is kept too, and both are named") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(MainScene(folder), kTheirs);
    PutFile(ProjectIn(folder) + L"\\project.zel", "theirs");
    TapWithControl('S');
    CHECK(editorState.statusMessage.ends_with(L" Jina verze: Main_jine.scene, project_jine.zel"));
    CHECK(FileBytes(ProjectIn(folder) + L"\\project_jine.zel") == "theirs");
}

TEST_CASE("a prefab that somebody else has changed is kept beside the saved one") {
    const ScratchFolder folder;
    StartProject(folder);
    ChooseCreate(CreateItem::Prefab);
    const std::wstring prefab = FilesIn(folder) + L"\\PlayerCube.prefab";
    DoubleClick(FileNamed(L"PlayerCube.prefab"));
    PutFile(prefab, "theirs");
    Scene ignored;
    LoadPrefab(prefab, ignored);  // placing it meanwhile is not to have opened it
    TapKey('G');
    TapWithControl('S');
    CHECK(editorState.statusMessage ==
          L"Prefab ulozen: PlayerCube.prefab Jina verze: PlayerCube_jine.prefab");
    CHECK(FileBytes(FilesIn(folder) + L"\\PlayerCube_jine.prefab") == "theirs");
}

TEST_CASE(
    "the program keeps no other version of a file that it read or wrote itself, even if the file was moved") {
    const ScratchFolder folder;
    StartProject(folder);
    const auto saveFindsNoOther = [] {
        TapKey('G');
        TapWithControl('S');
        return editorState.statusMessage.find(L"Jina verze") == std::wstring::npos;
    };
    CHECK(saveFindsNoOther());
    CHECK(OpenProject(ProjectIn(folder)) == Opening::Opened);
    CHECK(saveFindsNoOther());
    OpenSceneFile(MainScene(folder));
    CHECK(saveFindsNoOther());
    OpenFolderNamed(L"Scenes");
    RenameFileTo(L"Main.scene", L"Level.scene");
    CHECK(saveFindsNoOther());
    AnswerFolder(folder / L"elsewhere");
    TapWithControlAndShift('S');
    REQUIRE(editorState.projectRoot != ProjectIn(folder));
    CHECK(saveFindsNoOther());
    RemoveTree(editorState.scenePath);
    CHECK(saveFindsNoOther());
}

TEST_CASE("no other version is kept of a prefab that stood there before the program and was opened in it") {
    const ScratchFolder folder;
    StartProject(folder);
    ChooseCreate(CreateItem::Prefab);
    PutFile(FilesIn(folder) + L"\\Before.prefab", FileBytes(FilesIn(folder) + L"\\PlayerCube.prefab"));
    RefreshAssetList();
    DoubleClick(FileNamed(L"Before.prefab"));
    REQUIRE(editorState.screen == Screen::PrefabEditor);
    TapKey('G');
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Prefab ulozen: Before.prefab");
    CHECK_FALSE(IsShown(L"Before_jine.prefab"));
}

TEST_CASE("another version that equals what is saved is not kept") {
    const ScratchFolder folder;
    StartProject(folder);
    TapWithControl('S');
    editorState.knownFiles.clear();  // as if another window had saved the same
    TapWithControl('S');
    CHECK(editorState.statusMessage == L"Ctrl+S: projekt ulozen: " + ProjectIn(folder));
}

TEST_CASE("a file whose other version cannot be kept is not replaced") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(MainScene(folder), kTheirs);
    TapKey('G');
    fileFaults = {.freeBytes = 10};
    TapWithControl('S');
    fileFaults = {};
    CHECK(editorState.statusMessage == L"Projekt se nepodarilo ulozit.");
    CHECK(FileBytes(MainScene(folder)) == kTheirs);
    CHECK(FileBytes(OtherMain(folder)) == "<missing>");
}

TEST_CASE("a file that is not there is written, even if the disk could not tell so at first") {
    const ScratchFolder folder;
    fileFaults = {.failStep = 1};
    CHECK(SaveOver(folder / L"new.scene", "ours"));
    fileFaults = {};
    CHECK(FileBytes(folder / L"new.scene") == "ours");
}

TEST_CASE("whichever file call fails, both versions exist or the other one was not replaced") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartProject(folder);
            PutFile(MainScene(folder), kTheirs);
            TapKey('G');
        },
        [](const ScratchFolder&) { TapWithControl('S'); },
        [](const ScratchFolder& folder) {
            const FolderContents files = ContentsOf(FilesIn(folder) + L"\\Scenes");
            const bool isThere =
                std::ranges::any_of(files, [](const auto& file) { return file.second == kTheirs; });
            CHECK(isThere);
        });
}

TEST_CASE("different bytes have different fingerprints, whatever their length") {
    std::vector<uint64_t> seen;
    std::string bytes;
    for (int32_t length = 0; length < 40; ++length) {
        seen.push_back(Fingerprint(bytes));
        for (size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] ^= 1;
            seen.push_back(Fingerprint(bytes));
            bytes[i] ^= 1;
        }
        bytes += '\0';
    }
    std::ranges::sort(seen);
    CHECK(std::ranges::adjacent_find(seen) == seen.end());
}
