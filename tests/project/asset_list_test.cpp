#include "project/asset_list.h"

#include "platform/files.h"
#include "support/folder_tree.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <cstdint>

TEST_CASE("the kind of a file is told by its extension, in any case") {
    struct {
        const wchar_t* path;
        AssetKind kind;
    } cases[] = {{L"a.cpp", AssetKind::Script},
                 {L"a.h", AssetKind::Script},
                 {L"a.HPP", AssetKind::Script},
                 {L"a.obj", AssetKind::Model},
                 {L"a.OBJ", AssetKind::Model},
                 {L"a.scene", AssetKind::SceneFile},
                 {L"a.blueprint", AssetKind::Blueprint},
                 {L"a.prefab", AssetKind::Prefab},
                 {L"a.png", AssetKind::Image},
                 {L"a.jpg", AssetKind::Image},
                 {L"a.JPEG", AssetKind::Image},
                 {L"a.bmp", AssetKind::Image},
                 {L"a.TXT", AssetKind::Other},
                 {L"a", AssetKind::Other},
                 {L"", AssetKind::Other},
                 {L"a.", AssetKind::Other},
                 {L"a.c", AssetKind::Other},
                 {L"a.obj.txt", AssetKind::Other},
                 {L"x.obj\\a", AssetKind::Other},
                 {L".png", AssetKind::Image}};
    for (const auto& [path, kind] : cases) CHECK(AssetKindOf(path) == kind);
}

static std::vector<std::wstring> RelativePaths() {
    std::vector<std::wstring> paths;
    for (const AssetEntry& entry : editorState.fileEntries) {
        paths.push_back(entry.path.substr(editorState.filesRoot.size() + 1));
    }
    return paths;
}

TEST_CASE("the list holds everything below Files, by name, each folder before what is in it") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\imported\\b.OBJ", "");
    PutFile(FilesIn(folder) + L"\\imported\\a\\deep.png", "");
    PutFile(FilesIn(folder) + L"\\z.txt", "");
    PutFolder(FilesIn(folder) + L"\\imported\\folder.obj");
    RefreshAssetList();
    CHECK(RelativePaths() == std::vector<std::wstring>{L"imported", L"imported\\a", L"imported\\a\\deep.png",
                                                       L"imported\\b.OBJ", L"imported\\folder.obj", L"Scenes",
                                                       L"Scenes\\Main.scene", L"scripts",
                                                       L"scripts\\PlayerController.cpp", L"z.txt"});
    const AssetEntry& model = editorState.fileEntries[3];
    CHECK(model.name == L"b.OBJ");
    CHECK(model.folder == FilesIn(folder) + L"\\imported");
    CHECK(model.kind == AssetKind::Model);
    CHECK(editorState.fileEntries[4].kind == AssetKind::Folder);
}

TEST_CASE("names are sorted without regard to case") {
    const ScratchFolder folder;
    StartProject(folder);
    for (const wchar_t* name :
         {L"b.txt", L"A.txt", L"_.txt", L"Z.txt", L"\u0160a.txt", L"\u0161.txt", L"\u010D.txt"}) {
        PutFile(FilesIn(folder) + L"\\scripts\\" + name, "");
    }
    RefreshAssetList();
    std::vector<std::wstring> names;
    for (const AssetEntry& entry : editorState.fileEntries) {
        if (entry.folder == FilesIn(folder) + L"\\scripts") names.push_back(entry.name);
    }
    // "_" stands between "Z" and "a" in the character code: letters count as capitals.
    CHECK(names == std::vector<std::wstring>{L"A.txt", L"b.txt", L"PlayerController.cpp", L"Z.txt", L"_.txt",
                                             L"\u010D.txt", L"\u0161.txt", L"\u0160a.txt"});
}

TEST_CASE("listing makes the project's folders again") {
    const ScratchFolder folder;
    StartProject(folder);
    RemoveTree(FilesIn(folder));
    RefreshAssetList();
    CHECK(RelativePaths() == std::vector<std::wstring>{L"imported", L"Scenes", L"scripts"});
}

TEST_CASE("the selected file stays selected while it is there") {
    const ScratchFolder folder;
    StartProject(folder);
    Click(FileNamed(L"scripts"));
    const int32_t before = editorState.selectedFile;
    PutFile(FilesIn(folder) + L"\\a.txt", "");
    RefreshAssetList();
    CHECK(editorState.selectedFile == before + 1);  // "a.txt" comes before it
    CHECK(editorState.fileEntries[static_cast<size_t>(editorState.selectedFile)].name == L"scripts");
    Click(FileNamed(L"a.txt"));
    CHECK(RemoveFile(FilesIn(folder) + L"\\a.txt"));
    RefreshAssetList();
    CHECK(editorState.selectedFile == -1);
}

TEST_CASE("links, circles of links and folders that cannot be read do not harm the list") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(folder / L"outside\\secret.txt", "");
    const std::wstring imported = FilesIn(folder) + L"\\imported\\";
    if (PutLink(imported + L"circle", FilesIn(folder))) {
        CHECK(PutLink(imported + L"out", folder / L"outside"));
    }
    RefreshAssetList();
    CHECK(RelativePaths().size() == 5);
    FailEachStep([](const ScratchFolder& scratch) { StartProject(scratch); },
                 [](const ScratchFolder&) { RefreshAssetList(); },
                 [](const ScratchFolder&) { CHECK(editorState.fileEntries.size() <= 5); });
}

TEST_CASE("a very deep project is listed whole") {
    const ScratchFolder folder;
    StartProject(folder);
    std::wstring path = FilesIn(folder);
    for (int32_t i = 0; i < 60; ++i) path += L"\\d";
    PutFile(path + L"\\last.txt", "");
    RefreshAssetList();
    CHECK(editorState.fileEntries.size() == 66);
}

// How deep the call stack was at most when a file step was taken.
static uintptr_t deepestFrame;

static void NoteFrame() {
    deepestFrame = std::min(deepestFrame, reinterpret_cast<uintptr_t>(__builtin_frame_address(0)));
}

TEST_CASE("a list of deep folders takes no more stack than one of shallow folders") {
    uintptr_t deepest[2] = {};
    for (const int32_t depth : {3, 60}) {
        const ScratchFolder folder;
        StartProject(folder);
        std::wstring path = FilesIn(folder);
        for (int32_t i = 0; i < depth; ++i) path += L"\\d";
        PutFolder(path);
        deepestFrame = UINTPTR_MAX;
        fileFaults = {.onStep = NoteFrame};
        RefreshAssetList();
        fileFaults = {};
        deepest[depth > 3] = deepestFrame;
        CHECK(editorState.fileEntries.size() == static_cast<size_t>(depth + 5));
    }
    CHECK(deepest[0] == deepest[1]);
}
