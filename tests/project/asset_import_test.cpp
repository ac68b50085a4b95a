#include "project/asset_commands.h"

#include "platform/files.h"
#include "support/folder_tree.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>

constexpr const char* kTriangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

// The path of a file in the folder, this many characters long.
static std::wstring RoundaboutPath(const ScratchFolder& folder, const std::wstring& name, size_t length) {
    std::wstring path = folder.path + L"\\";
    while (path.size() + name.size() + 2 <= length) path += L".\\";
    if (path.size() + name.size() < length) path += L"\\";
    return path + name;
}

static const AssetEntry& SelectedFile() {
    return editorState.fileEntries.at(static_cast<size_t>(editorState.selectedFile));
}

TEST_CASE("dropped files are copied into the folder that is shown, and the last one is selected") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(folder / L"a.txt", "a");
    PutFile(folder / L"b.png", "b");
    OpenFolderNamed(L"imported");
    DropFiles({folder / L"a.txt", folder / L"b.png"});
    CHECK(editorState.statusMessage == L"Importovano 2 souboru do aktualni slozky.");
    CHECK(ContentsOf(FilesIn(folder) + L"\\imported") == FolderContents{{L"a.txt", "a"}, {L"b.png", "b"}});
    CHECK(FileBytes(folder / L"a.txt") == "a");
    CHECK(SelectedFile().name == L"b.png");
    CHECK(SelectedFile().kind == AssetKind::Image);
    CHECK(IsShown(L"a.txt"));
}

TEST_CASE("of two dropped files with one name the second stays") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(folder / L"x\\same.txt", "first");
    PutFile(folder / L"y\\same.txt", "second");
    const size_t before = editorState.fileEntries.size();
    DropFiles({folder / L"x\\same.txt", folder / L"y\\same.txt"});
    CHECK(editorState.statusMessage == L"Importovano 2 souboru do aktualni slozky.");
    CHECK(FileBytes(FilesIn(folder) + L"\\same.txt") == "second");
    CHECK(editorState.fileEntries.size() == before + 1);
}

TEST_CASE("a name that differs in case only is the same entry of the list") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(folder / L"x\\same.txt", "first");
    PutFile(folder / L"y\\SAME.TXT", "second");
    const size_t before = editorState.fileEntries.size();
    DropFiles({folder / L"x\\same.txt", folder / L"y\\SAME.TXT"});
    CHECK(editorState.fileEntries.size() == before + 1);
}

TEST_CASE("a dropped model is placed in the scene") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(folder / L"Tree.OBJ", kTriangle);
    PutFile(folder / L"broken.obj", "no model");
    const size_t objects = editorState.scene.size(), meshes = editorState.meshes.size();
    DropFiles({folder / L"Tree.OBJ", folder / L"broken.obj"});
    CHECK(editorState.statusMessage == L"Importovano 2 souboru do aktualni slozky.");
    CHECK(editorState.scene.size() == objects + 1);
    CHECK(editorState.meshes.size() == meshes + 1);
    CHECK(editorState.scene.back().name == L"Tree");
    CHECK(editorState.scene.back().meshIndex == static_cast<int32_t>(meshes));
    CHECK(editorState.meshes.back().source == FilesIn(folder) + L"\\Tree.OBJ");
    TapWithControl('Z');
    CHECK(editorState.scene.size() == objects);
}

TEST_CASE("a dropped file of another kind, and a model dropped on a Blueprint, are imported and not placed") {
    struct {
        const wchar_t* name;
        Screen screen;
        bool isPlaced;
    } cases[] = {{L"cube.obj", Screen::SceneEditor, true},
                 {L"cube.txt", Screen::SceneEditor, false},
                 {L"cube.obj", Screen::BlueprintEditor, false},
                 {L"cube.obj", Screen::PrefabEditor, true}};
    for (const auto& [name, screen, isPlaced] : cases) {
        const ScratchFolder folder;
        StartProject(folder);
        PutFile(folder / name, kTriangle);
        editorState.screen = screen;
        const size_t before = editorState.scene.size();
        DropFiles({folder / name});
        CHECK(editorState.statusMessage == L"Importovano 1 souboru do aktualni slozky.");
        CHECK(editorState.scene.size() == before + (isPlaced ? 1 : 0));
    }
}

TEST_CASE("folders, missing files and paths of more than 260 characters are not counted") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(folder / L"dir\\inner.txt", "x");
    PutFile(folder / L"a.txt", "a");
    const FolderContents before = ContentsOf(FilesIn(folder));
    DropFiles({folder / L"dir", folder / L"missing.txt", L"", RoundaboutPath(folder, L"a.txt", 261)});
    CHECK(editorState.statusMessage == L"Importovano 0 souboru do aktualni slozky.");
    DropFiles({});
    CHECK(editorState.statusMessage == L"Importovano 0 souboru do aktualni slozky.");
    CHECK(ContentsOf(FilesIn(folder)) == before);
    DropFiles({RoundaboutPath(folder, L"a.txt", 260)});
    CHECK(editorState.statusMessage == L"Importovano 1 souboru do aktualni slozky.");
    CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "a");
}

TEST_CASE("a hundred files are imported at once") {
    const ScratchFolder folder;
    StartProject(folder);
    std::vector<std::wstring> files;
    for (int32_t i = 0; i < 100; ++i) {
        files.push_back(folder / (L"many\\f" + std::to_wstring(i) + L".txt"));
        PutFile(files.back(), std::to_string(i));
    }
    DropFiles(files);
    CHECK(editorState.statusMessage == L"Importovano 100 souboru do aktualni slozky.");
    CHECK(FileBytes(FilesIn(folder) + L"\\f73.txt") == "73");
    CHECK(SelectedFile().name == L"f99.txt");
    RenderFrame();
}

TEST_CASE("Esc ends a long import before the next file, and no file is there in part") {
    const ScratchFolder folder;
    StartProject(folder);
    std::vector<std::wstring> files;
    for (const wchar_t* name : {L"a.txt", L"b.txt", L"c.txt"}) {
        PutFile(folder / name, "content");
        files.push_back(folder / name);
    }
    headless.workTimeStep = 1;
    const std::vector<InputEvent> nothing, escape{{.kind = InputKind::KeyDown, .key = kKeyEscape}};
    headless.workInput = {nothing, nothing, nothing, escape};  // within the second file
    headless.texts.clear();
    DropFiles(files);
    headless.workTimeStep = 0;
    CHECK(std::ranges::find(headless.texts, L"Importuji: 1 z 3 souboru", &DrawnText::text) !=
          headless.texts.end());
    CHECK(editorState.statusMessage == L"Import zrusen. Importovano 1 souboru do aktualni slozky.");
    CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "content");
    CHECK(FileBytes(FilesIn(folder) + L"\\b.txt") == "<missing>");
    CHECK(FileBytes(FilesIn(folder) + L"\\c.txt") == "<missing>");
    CHECK(headless.workInput.empty());
}

TEST_CASE("a file dropped onto itself stays and is not counted") {
    const ScratchFolder folder;
    StartProject(folder);
    const std::wstring script = FilesIn(folder) + L"\\scripts\\PlayerController.cpp";
    const std::string bytes = FileBytes(script);
    OpenFolderNamed(L"scripts");
    DropFiles({script});
    CHECK(editorState.statusMessage == L"Importovano 0 souboru do aktualni slozky.");
    CHECK(FileBytes(script) == bytes);
}

TEST_CASE("a dropped file replaces neither a folder nor a read-only file") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFolder(FilesIn(folder) + L"\\a.txt");
    PutFile(FilesIn(folder) + L"\\b.txt", "old");
    MakeReadOnly(FilesIn(folder) + L"\\b.txt", true);
    PutFile(folder / L"a.txt", "a");
    PutFile(folder / L"b.txt", "b");
    DropFiles({folder / L"a.txt", folder / L"b.txt"});
    CHECK(editorState.statusMessage == L"Importovano 0 souboru do aktualni slozky.");
    CHECK(KindOfPath(FilesIn(folder) + L"\\a.txt") == PathKind::Folder);
    CHECK(FileBytes(FilesIn(folder) + L"\\b.txt") == "old");
    MakeReadOnly(FilesIn(folder) + L"\\b.txt", false);
}

TEST_CASE("whichever step of an import fails, every file is the old one or the new one") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartProject(folder);
            PutFile(FilesIn(folder) + L"\\old.txt", "old bytes");
            PutFile(folder / L"old.txt", "new bytes");
            PutFile(folder / L"new.txt", "new file");
        },
        [](const ScratchFolder& folder) {
            DropFiles({folder / L"old.txt", folder / L"new.txt"});
        },
        [](const ScratchFolder& folder) {
            FolderContents files = ContentsOf(FilesIn(folder));
            const bool isReplaced = files[L"old.txt"] == "new bytes", isMade = files.contains(L"new.txt");
            if (!isReplaced) CHECK(files[L"old.txt"] == "old bytes");
            if (isMade) CHECK(files[L"new.txt"] == "new file");
            const int32_t count = (isReplaced ? 1 : 0) + (isMade ? 1 : 0);
            CHECK(editorState.statusMessage ==
                  L"Importovano " + std::to_wstring(count) + L" souboru do aktualni slozky.");
            CHECK(files.size() == (isMade ? 7 : 6));
        });
}

TEST_CASE("a full disk keeps the file of the same name, and leaves no part of a new one") {
    for (const int64_t freeBytes : {0, 4}) {
        const ScratchFolder folder;
        StartProject(folder);
        PutFile(FilesIn(folder) + L"\\old.txt", "old bytes");
        PutFile(folder / L"old.txt", "new bytes");
        PutFile(folder / L"new.txt", "new file");
        fileFaults = {.freeBytes = freeBytes};
        DropFiles({folder / L"old.txt", folder / L"new.txt"});
        fileFaults = {};
        CHECK(editorState.statusMessage == L"Importovano 0 souboru do aktualni slozky.");
        CHECK(FileBytes(FilesIn(folder) + L"\\old.txt") == "old bytes");
        CHECK(FileBytes(FilesIn(folder) + L"\\new.txt") == "<missing>");
    }
}

TEST_CASE("files dropped on the game are ignored") {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(folder / L"a.txt", "a");
    editorState.runtimeMode = true;
    DropFiles({folder / L"a.txt"});
    CHECK(editorState.statusMessage == L"untouched");
    CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "<missing>");
}
