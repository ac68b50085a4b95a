#include "project/asset_commands.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "support/folder_tree.h"
#include "support/project_input.h"
#include "support/scene_equals_file.h"

#include "doctest/doctest.h"

#include <algorithm>

// A project whose Files folder holds these too.
static void StartWith(const ScratchFolder& folder, const std::vector<std::wstring>& names) {
    StartProject(folder);
    for (const std::wstring& name : names) PutFile(FilesIn(folder) + L"\\" + name, "bytes");
    RefreshAssetList();
    RenderFrame();
}

static void RenameNamed(const std::wstring& name, const std::wstring& newName) {
    const auto& entries = editorState.fileEntries;
    const auto entry = std::ranges::find(entries, name, &AssetEntry::name);
    REQUIRE(entry != entries.end());
    RenameAsset(static_cast<int32_t>(entry - entries.begin()), newName);
}

static const AssetEntry* EntryNamed(const std::wstring& name) {
    const auto found = std::ranges::find(editorState.fileEntries, name, &AssetEntry::name);
    return found == editorState.fileEntries.end() ? nullptr : &*found;
}

TEST_CASE("a folder opens, and the back button leads up as far as Files") {
    const ScratchFolder folder;
    StartWith(folder, {L"imported\\deep\\a.txt"});
    OpenFolderNamed(L"imported");
    CHECK(editorState.statusMessage == L"Otevrena slozka: imported");
    CHECK(editorState.selectedFile == -1);
    OpenFolderNamed(L"deep");
    CHECK(editorState.filesFolder == FilesIn(folder) + L"\\imported\\deep");
    CHECK(IsShown(L"a.txt"));
    Click(FilesBackButton());
    CHECK(editorState.statusMessage == L"Files: zpet do nadrazene slozky.");
    CHECK(editorState.filesFolder == FilesIn(folder) + L"\\imported");
    Click(FilesBackButton());
    Click(FilesBackButton());
    CHECK(editorState.statusMessage == L"Jsi v hlavni slozce Files.");
    CHECK(editorState.filesFolder == FilesIn(folder));
}

TEST_CASE("files without an editor open with the system") {
    for (const wchar_t* name : {L"a.TXT", L"a.cpp", L"a.obj", L"a.png"}) {
        const ScratchFolder folder;
        StartWith(folder, {name});
        ChooseForFile(name, FileItem::Open);
        CHECK(headless.opened == std::vector<std::wstring>{FilesIn(folder) + L"\\" + name});
        CHECK(editorState.statusMessage == std::wstring(L"Oteviram soubor: ") + name);
        headless.openWorks = false;
        DoubleClick(FileNamed(name));
        CHECK(editorState.statusMessage == L"Nepodarilo se otevrit soubor ve Windows.");
    }
}

TEST_CASE("an item is renamed in its folder") {
    const ScratchFolder folder;
    StartWith(folder, {L"a.txt"});
    RenameFileTo(L"a.txt", L"b.png");
    CHECK(editorState.statusMessage == L"Polozka projektu byla prejmenovana.");
    CHECK(FileBytes(FilesIn(folder) + L"\\b.png") == "bytes");
    CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "<missing>");
    const AssetEntry* entry = EntryNamed(L"b.png");
    REQUIRE(entry != nullptr);
    CHECK(entry->path == FilesIn(folder) + L"\\b.png");
    CHECK(entry->kind == AssetKind::Image);
    CHECK(EntryNamed(L"a.txt") == nullptr);
}

TEST_CASE("a file renamed to a name without an extension keeps its own, and with one changes its kind") {
    struct {
        const wchar_t *before, *typed, *after;
        AssetKind kind;
    } cases[] = {{L"Level.scene", L"Arena", L"Arena.scene", AssetKind::SceneFile},
                 {L"Level.scene", L"Arena.prefab", L"Arena.prefab", AssetKind::Prefab},
                 {L"Level.scene", L"Arena.old", L"Arena.old", AssetKind::Other},
                 {L"two.dots.txt", L"none", L"none.txt", AssetKind::Other},
                 {L"noextension", L"other", L"other", AssetKind::Other},
                 {L"folder.d", L"plain", L"plain", AssetKind::Folder}};
    for (const auto& [before, typed, after, kind] : cases) {
        const ScratchFolder folder;
        StartProject(folder);
        if (kind == AssetKind::Folder) {
            PutFolder(FilesIn(folder) + L"\\" + before);
        } else {
            PutFile(FilesIn(folder) + L"\\" + before, "content");
        }
        RefreshAssetList();
        RenameFileTo(before, typed);
        CHECK(editorState.statusMessage == L"Polozka projektu byla prejmenovana.");
        CHECK(KindOfPath(FilesIn(folder) + L"\\" + before) == PathKind::Missing);
        CHECK(KindOfPath(FilesIn(folder) + L"\\" + after) != PathKind::Missing);
        const auto& entries = editorState.fileEntries;
        const auto entry = std::ranges::find(entries, std::wstring(after), &AssetEntry::name);
        REQUIRE(entry != entries.end());
        CHECK(entry->kind == kind);
    }
}

TEST_CASE("the rename box begins with the name, and Escape leaves it") {
    const ScratchFolder folder;
    StartWith(folder, {L"a.txt"});
    ChooseForFile(L"a.txt", FileItem::Rename);
    CHECK(editorState.statusMessage == L"Napis novy nazev, Enter potvrdi a Esc zrusi.");
    CHECK(editorState.nameEntry.text == L"a.txt");
    Type(L"x");
    TapKey(kKeyEscape);
    CHECK(editorState.statusMessage == L"Prejmenovani zruseno.");
    CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "bytes");
}

TEST_CASE("an empty name is refused and keeps the box open") {
    for (const wchar_t* name : {L"", L"   "}) {
        const ScratchFolder folder;
        StartWith(folder, {L"a.txt"});
        RenameFileTo(L"a.txt", name);
        CHECK(editorState.statusMessage == L"Nazev souboru nesmi byt prazdny.");
        CHECK(editorState.nameEntry.kind == NameEntry::Kind::File);
        CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "bytes");
    }
}

TEST_CASE("forbidden characters in a name become underscores, and blanks around it are dropped") {
    const ScratchFolder folder;
    StartWith(folder, {L"a.txt"});
    RenameFileTo(L"a.txt", L"  x\\y/z:*?\"<>|.txt ");
    CHECK(FileBytes(FilesIn(folder) + L"\\x_y_z_______.txt") == "bytes");
}

TEST_CASE("renaming to a name that the system refuses fails") {
    for (const wchar_t* name : {L"NUL", L"com1.txt", L"x.", L".", L"..", L"con"}) {
        const ScratchFolder folder;
        StartWith(folder, {L"a.txt"});
        RenameFileTo(L"a.txt", name);
        CHECK(editorState.statusMessage == L"Soubor nebo slozku se nepodarilo prejmenovat.");
        CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "bytes");
        CHECK(EntryNamed(L"a.txt") != nullptr);
    }
}

TEST_CASE("renaming to a name that is taken overwrites nothing") {
    const ScratchFolder folder;
    StartWith(folder, {L"a.txt", L"b.txt"});
    PutFile(FilesIn(folder) + L"\\b.txt", "other");
    RenameFileTo(L"a.txt", L"b.txt");
    CHECK(editorState.statusMessage == L"Soubor nebo slozku se nepodarilo prejmenovat.");
    CHECK(FileBytes(FilesIn(folder) + L"\\b.txt") == "other");
    RenameFileTo(L"a.txt", L"a.txt");
    CHECK(editorState.statusMessage == L"Polozka projektu byla prejmenovana.");
    RemoveTree(FilesIn(folder) + L"\\a.txt");
    RenameFileTo(L"a.txt", L"c.txt");
    CHECK(editorState.statusMessage == L"Soubor nebo slozku se nepodarilo prejmenovat.");
}

TEST_CASE("whatever refers to a renamed file or folder follows it") {
    const ScratchFolder folder;
    StartWith(folder, {L"pictures\\inner\\t.png"});
    editorState.scene[2].texturePath = FilesIn(folder) + L"\\pictures\\inner\\t.png";
    RenameFileTo(L"pictures", L"images");
    CHECK(editorState.scene[2].texturePath == FilesIn(folder) + L"\\images\\inner\\t.png");
    OpenFolderNamed(L"images");
    CHECK(IsShown(L"inner"));
    OpenFolderNamed(L"inner");
    CHECK(IsShown(L"t.png"));
    Click(FilesBackButton());
    Click(FilesBackButton());

    RenameFileTo(L"Scenes", L"Levels");
    CHECK(editorState.scenePath == FilesIn(folder) + L"\\Levels\\Main.scene");
    TapWithControl('S');
    CHECK(SceneEqualsFile(FilesIn(folder) + L"\\Levels\\Main.scene"));
    CHECK(KindOfPath(FilesIn(folder) + L"\\Scenes") == PathKind::Missing);
}

TEST_CASE("whichever step of a rename fails, the name is the old one or the new one") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartWith(folder, {L"a.txt", L"b.txt"});
        },
        [](const ScratchFolder&) {
            const auto index = EntryNamed(L"a.txt") - editorState.fileEntries.data();
            RenameAsset(static_cast<int32_t>(index), L"c.txt");
        },
        [](const ScratchFolder& folder) {
            const bool isRenamed = EntryNamed(L"c.txt") != nullptr;
            CHECK(FileBytes(FilesIn(folder) + (isRenamed ? L"\\c.txt" : L"\\a.txt")) == "bytes");
            if (!isRenamed) {
                CHECK(editorState.statusMessage == L"Soubor nebo slozku se nepodarilo prejmenovat.");
                return;
            }
            // Nobody knows what a project file names that cannot be read.
            const bool isPlain = editorState.statusMessage == L"Polozka projektu byla prejmenovana.";
            CHECK((isPlain || editorState.statusMessage ==
                                  L"Polozka prejmenovana, ale project.zel se nepodarilo ulozit."));
        });
}

TEST_CASE("a duplicate stands beside its file, with _Copy before the extension") {
    struct {
        const wchar_t *name, *first, *second;
    } cases[] = {{L"Level.scene", L"Level_Copy.scene", L"Level_Copy_01.scene"},
                 {L"noextension", L"noextension_Copy", L"noextension_Copy_01"},
                 {L"a.b.txt", L"a.b_Copy.txt", L"a.b_Copy_01.txt"}};
    for (const auto& [name, first, second] : cases) {
        const ScratchFolder folder;
        StartWith(folder, {name});
        for (const wchar_t* copy : {first, second}) {
            ChooseForFile(name, FileItem::Duplicate);
            CHECK(editorState.statusMessage == L"Polozka projektu byla duplikovana.");
            CHECK(FileBytes(FilesIn(folder) + L"\\" + copy) == "bytes");
            CHECK(editorState.fileEntries.back().name == copy);
        }
    }
}

TEST_CASE("a folder's duplicate is empty, and a dot in its name is no extension") {
    const ScratchFolder folder;
    StartWith(folder, {L"v1.0\\a.txt"});
    ChooseForFile(L"v1.0", FileItem::Duplicate);
    CHECK(editorState.fileEntries.back().name == L"v1.0_Copy");
    CHECK(editorState.fileEntries.back().kind == AssetKind::Folder);
    CHECK(KindOfPath(FilesIn(folder) + L"\\v1.0_Copy") == PathKind::Folder);
    CHECK(ContentsOf(FilesIn(folder) + L"\\v1.0_Copy").empty());
}

TEST_CASE("whichever step of duplicating fails, no part of the copy is left") {
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartWith(folder, {L"a.txt", L"a_Copy.txt"});
        },
        [](const ScratchFolder& folder) {
            PutFile(FilesIn(folder) + L"\\a_Copy.txt", "mine");
            const auto index = EntryNamed(L"a.txt") - editorState.fileEntries.data();
            DuplicateAsset(static_cast<int32_t>(index));
        },
        [](const ScratchFolder& folder) {
            FolderContents files = ContentsOf(FilesIn(folder));
            CHECK(files[L"a_Copy.txt"] == "mine");
            if (editorState.statusMessage == L"Polozka projektu byla duplikovana.") {
                CHECK(FileBytes(editorState.fileEntries.back().path) == "bytes");
            } else {
                CHECK(editorState.statusMessage == L"Polozku projektu se nepodarilo duplikovat.");
                CHECK(files.size() == 7);
                CHECK(editorState.fileEntries.size() == 7);
            }
        });
}

TEST_CASE("a full disk leaves no part of a duplicate") {
    const ScratchFolder folder;
    StartWith(folder, {L"a.txt"});
    fileFaults = {.freeBytes = 3};
    ChooseForFile(L"a.txt", FileItem::Duplicate);
    fileFaults = {};
    CHECK(editorState.statusMessage == L"Polozku projektu se nepodarilo duplikovat.");
    CHECK(FileBytes(FilesIn(folder) + L"\\a_Copy.txt") == "<missing>");
}

TEST_CASE("Esc cancels a long duplicate without a trace") {
    const ScratchFolder folder;
    StartWith(folder, {L"big.txt"});
    PutFile(FilesIn(folder) + L"\\big.txt", std::string(3'000'000, 'x'));
    const size_t entries = editorState.fileEntries.size();
    headless.texts.clear();
    headless.workTimeStep = 1;
    headless.workInput = {{{.kind = InputKind::KeyDown, .key = kKeyEscape}}};
    ChooseForFile(L"big.txt", FileItem::Duplicate);
    headless.workTimeStep = 0;
    CHECK(editorState.statusMessage == L"Duplikovani polozky zruseno.");
    CHECK(std::ranges::find(headless.texts, L"Duplikuji soubor: 2 z 3 MB", &DrawnText::text) !=
          headless.texts.end());
    CHECK(FileBytes(FilesIn(folder) + L"\\big_Copy.txt") == "<missing>");
    CHECK(editorState.fileEntries.size() == entries);
    CHECK_FALSE(headless.quitRequested);
}

TEST_CASE("a deleted item leaves the disk and the list") {
    const ScratchFolder folder;
    StartWith(folder, {L"a.txt", L"b.txt"});
    ChooseForFile(L"a.txt", FileItem::Delete);
    CHECK(editorState.statusMessage == L"Polozka projektu byla odstranena z panelu.");
    CHECK(FileBytes(FilesIn(folder) + L"\\a.txt") == "<missing>");
    CHECK_FALSE(IsShown(L"a.txt"));
    CHECK(IsShown(L"b.txt"));
    CHECK(editorState.selectedFile == -1);
    CHECK(headless.prompts.empty());
    CHECK(headless.recycled.empty());
}

TEST_CASE("deleting a folder with files only takes it off the list, and a refresh shows it again") {
    const ScratchFolder folder;
    StartWith(folder, {L"full\\a.txt"});
    ChooseForFile(L"full", FileItem::Delete);
    CHECK(editorState.statusMessage == L"Polozka projektu byla odstranena z panelu.");
    CHECK_FALSE(IsShown(L"full"));
    CHECK(FileBytes(FilesIn(folder) + L"\\full\\a.txt") == "bytes");
    RefreshAssetList();
    CHECK(IsShown(L"full"));
}

TEST_CASE("the open scene's file can be deleted, and the next save writes it again") {
    const ScratchFolder folder;
    StartWith(folder, {});
    const size_t objects = editorState.scene.size();
    OpenFolderNamed(L"Scenes");
    ChooseForFile(L"Main.scene", FileItem::Delete);
    CHECK(FileBytes(FilesIn(folder) + L"\\Scenes\\Main.scene") == "<missing>");
    CHECK(editorState.scene.size() == objects);
    TapWithControl('S');
    CHECK(SceneEqualsFile(FilesIn(folder) + L"\\Scenes\\Main.scene"));
}

TEST_CASE("an index that names no item does nothing") {
    const ScratchFolder folder;
    StartWith(folder, {L"a.txt"});
    editorState.statusMessage = L"untouched";
    for (const int32_t index : {-1, 6, 1'000'000}) {
        OpenAsset(index);
        RenameAsset(index, L"x");
        DuplicateAsset(index);
        DeleteAsset(index);
    }
    CHECK(editorState.statusMessage == L"untouched");
    CHECK(editorState.fileEntries.size() == 6);
}

TEST_CASE("a renamed open scene is the one that the next start opens") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    TapWithControl('S');
    const std::string before = FileBytes(ProjectIn(folder) + L"\\project.zel");
    const size_t objects = editorState.scene.size();
    RenameNamed(L"Scenes", L"Levels");
    REQUIRE(editorState.scenePath == FilesIn(folder) + L"\\Levels\\Main.scene");
    std::string expected = before;
    expected.replace(expected.find("Files\\Scenes\\Main.scene"), 23, "Files\\Levels\\Main.scene");
    CHECK(FileBytes(ProjectIn(folder) + L"\\project.zel") == expected);
    editorState.hubVisible = true;
    REQUIRE(OpenProject(ProjectIn(folder)) == Opening::Opened);
    CHECK(editorState.scenePath == FilesIn(folder) + L"\\Levels\\Main.scene");
    CHECK(editorState.scene.size() == objects);
}

// The stored scene path of the open project after a rename, with project.zel of these bytes.
static std::string SceneAfterRename(const std::string& before, const std::wstring& name,
                                    const std::wstring& newName) {
    const ScratchFolder folder;
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\Scenes\\Other.scene", "ZELENGINE_SCENE\t1\r\n");
    PutFile(ProjectIn(folder) + L"\\project.zel", before);
    RefreshAssetList();
    RenameNamed(name, newName);
    CHECK(editorState.statusMessage == L"Polozka projektu byla prejmenovana.");
    return FileBytes(ProjectIn(folder) + L"\\project.zel");
}

TEST_CASE("renaming changes the stored scene only if it names what was renamed") {
    const std::string other = "CURRENT_SCENE\tFiles\\Scenes\\Other.scene\n";
    // Main.scene is open, and the file names the other one.
    CHECK(SceneAfterRename(other, L"Main.scene", L"First.scene") == other);
    CHECK(SceneAfterRename(other, L"imported", L"Scenes2") == other);
    CHECK(SceneAfterRename(other, L"Other.scene", L"Second.scene") ==
          "\xEF\xBB\xBF"
          "CURRENT_SCENE\tFiles\\Scenes\\Second.scene\n");
    CHECK(SceneAfterRename(other, L"Scenes", L"Levels") ==
          "\xEF\xBB\xBF"
          "CURRENT_SCENE\tFiles\\Levels\\Other.scene\n");
    // As the disk finds it: in another case, with other separators.
    CHECK(
        SceneAfterRename("CURRENT_SCENE\t.\\files//SCENES\\other.scene\n", L"Other.scene", L"Second.scene") ==
        "\xEF\xBB\xBF"
        "CURRENT_SCENE\tFiles\\Scenes\\Second.scene\n");
    // A path that leads out of the project is no scene of it.
    const std::string outside = "CURRENT_SCENE\t..\\ZelEngineProject\\Files\\Scenes\\Other.scene\n";
    CHECK(SceneAfterRename(outside, L"Other.scene", L"Second.scene") == outside);
}

TEST_CASE("the stored scene follows a rename, wherever its line stands and however the file is encoded") {
    const std::string line = "CURRENT_SCENE\tFiles\\Scenes\\Main.scene", mark = "\xEF\xBB\xBF",
                      newLine = "CURRENT_SCENE\tFiles\\Scenes\\First.scene";
    struct {
        std::string before, after;
    } cases[] = {
        {line, newLine},                // without a line end
        {line + "\n", newLine + "\n"},  // the first line
        {mark + line + "\r\nO\r\n", newLine + "\r\nO\r\n"},
        {"\n\n" + line + "\r\n", "\n\n" + newLine + "\r\n"},
        // Bytes that are no text stay in every other line. The first line with a path counts.
        {"\xFF\n" + line + "\tmore\n" + line + "\n", "\xFF\n" + newLine + "\tmore\n" + line + "\n"},
        {"CURRENT_SCENE\nxCURRENT_SCENE\ty\n" + line, "CURRENT_SCENE\nxCURRENT_SCENE\ty\n" + newLine},
    };
    for (const auto& [before, after] : cases) {
        CAPTURE(before);
        CHECK(SceneAfterRename(before, L"Main.scene", L"First.scene") == mark + after);
    }
    std::string wide = "\xFF\xFE";
    for (const char c : line + "\r\n") wide += {c, '\0'};
    CHECK(SceneAfterRename(wide, L"Main.scene", L"First.scene") == mark + newLine + "\r\n");
}

TEST_CASE("a rename that cannot be written into the project file says so") {
    FailEachStep([](const ScratchFolder& folder) { StartProject(folder); },
                 [](const ScratchFolder&) { RenameNamed(L"Scenes", L"Levels"); },  // the folder "Scenes"
                 [](const ScratchFolder& folder) {
                     const bool isRenamed = KindOfPath(FilesIn(folder) + L"\\Levels") == PathKind::Folder;
                     const std::string scene =
                         FileBytes(ProjectIn(folder) + L"\\project.zel").find("\\Levels\\") ==
                                 std::string::npos
                             ? "old"
                             : "new";
                     const std::wstring expected =
                         !isRenamed       ? L"Soubor nebo slozku se nepodarilo prejmenovat."
                         : scene == "new" ? L"Polozka projektu byla prejmenovana."
                                          : L"Polozka prejmenovana, ale project.zel se nepodarilo ulozit.";
                     CHECK(editorState.statusMessage == expected);
                 });
}

TEST_CASE("renaming works in a project without a project file") {
    const ScratchFolder folder;
    StartProject(folder);
    RemoveTree(ProjectIn(folder) + L"\\project.zel");
    RenameNamed(L"Scenes", L"Levels");
    CHECK(editorState.statusMessage == L"Polozka projektu byla prejmenovana.");
    CHECK(KindOfPath(ProjectIn(folder) + L"\\project.zel") == PathKind::Missing);
}
