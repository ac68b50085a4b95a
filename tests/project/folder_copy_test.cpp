#include "project/folder_copy.h"

#include "platform/files.h"
#include "support/folder_tree.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>

static void PutSource(const ScratchFolder& folder) {
    PutFile(folder / L"from\\a.txt", "a");
    PutFile(folder / L"from\\b\\c.txt", "c");
    PutFile(folder / L"from\\b\\d\\e.txt", "e");
    PutFolder(folder / L"from\\empty");
}

static bool Copy(const std::wstring& from, const std::wstring& to) {
    LongWork work(L"Copying", L"files");
    return CopyFolder(from, to, work);
}

TEST_CASE("a folder is copied with everything in it") {
    const ScratchFolder folder;
    PutSource(folder);
    CHECK(Copy(folder / L"from", folder / L"to\\deep"));
    CHECK(ContentsOf(folder / L"to\\deep") == ContentsOf(folder / L"from"));
}

TEST_CASE("a folder can be copied into itself") {
    const ScratchFolder folder;
    PutSource(folder);
    const FolderContents before = ContentsOf(folder / L"from");
    CHECK(Copy(folder / L"from", folder / L"from\\b\\copy"));
    CHECK(ContentsOf(folder / L"from\\b\\copy") == before);
}

TEST_CASE("whichever step of a copy fails, the new folder is removed again and the source stays whole") {
    FailEachStep([](const ScratchFolder& folder) { PutSource(folder); },
                 [](const ScratchFolder& folder) {
                     const bool isCopied = Copy(folder / L"from", folder / L"to");
                     editorState.statusMessage = isCopied ? L"copied" : L"failed";
                 },
                 [](const ScratchFolder& folder) {
                     CHECK(ContentsOf(folder / L"from").size() == 6);
                     // If the disk could not tell what was there, nothing is removed.
                     if (editorState.statusMessage == L"copied") {
                         CHECK(ContentsOf(folder / L"to") == ContentsOf(folder / L"from"));
                     } else {
                         CHECK(KindOfPath(folder / L"to") == PathKind::Missing);
                     }
                 });
}

TEST_CASE("a copy that fails leaves what its target held before") {
    const ScratchFolder folder;
    PutSource(folder);
    PutFile(folder / L"to\\mine.txt", "mine");
    fileFaults = {.freeBytes = 0};
    CHECK_FALSE(Copy(folder / L"from", folder / L"to"));
    fileFaults = {};
    CHECK(FileBytes(folder / L"to\\mine.txt") == "mine");
    CHECK_FALSE(Copy(folder / L"missing", folder / L"other"));
    CHECK(KindOfPath(folder / L"other") == PathKind::Missing);
    PutFile(folder / L"file", "x");
    CHECK_FALSE(Copy(folder / L"from", folder / L"file"));
    CHECK(FileBytes(folder / L"file") == "x");
}

TEST_CASE("a tree is listed with each folder before what is in it") {
    const ScratchFolder folder;
    PutSource(folder);
    FolderTree tree;
    CHECK(ListFolderTree(folder / L"from", tree));
    auto place = [&tree](const wchar_t* name) { return std::ranges::find(tree.folders, name); };
    CHECK(tree.folders.size() == 3);
    CHECK(place(L"b") < place(L"b\\d"));
    std::ranges::sort(tree.files);
    CHECK(tree.files == std::vector<std::wstring>{L"a.txt", L"b\\c.txt", L"b\\d\\e.txt"});
    CHECK_FALSE(ListFolderTree(folder / L"missing", tree));
    CHECK(tree.files.size() == 3);
}

TEST_CASE("a folder is removed with everything in it, but not what its links lead to") {
    const ScratchFolder folder;
    PutSource(folder);
    PutFile(folder / L"outside\\kept.txt", "kept");
    RemoveFolderTree(folder / L"from");
    CHECK(KindOfPath(folder / L"from") == PathKind::Missing);

    PutSource(folder);
    if (!PutLink(folder / L"from\\link", folder / L"outside")) return;
    RemoveFolderTree(folder / L"from");
    CHECK(FileBytes(folder / L"outside\\kept.txt") == "kept");
}

TEST_CASE("a long removal counts its files over the bottom panel") {
    const ScratchFolder folder;
    StartProject(folder);
    PutSource(folder);
    headless.texts.clear();
    headless.workTimeStep = 1;
    RemoveFolderTree(folder / L"from");
    headless.workTimeStep = 0;
    for (const wchar_t* text : {L"Odstranuji kopii: 1 z 3 souboru", L"Odstranuji kopii: 3 z 3 souboru"})
        CHECK(std::ranges::find(headless.texts, text, &DrawnText::text) != headless.texts.end());
}

TEST_CASE("a folder with read-only files in it is removed") {
    const ScratchFolder folder;
    PutFile(folder / L"tree\\deep\\a.txt", "a");
    PutFile(folder / L"tree\\deep\\b.txt", "b");
    PutFile(folder / L"stays.txt", "c");
    MakeReadOnly(folder / L"tree\\deep\\b.txt", true);
    MakeReadOnly(folder / L"stays.txt", true);
    RemoveFolderTree(folder / L"tree");
    CHECK(KindOfPath(folder / L"tree") == PathKind::Missing);
    CHECK_FALSE(RemoveFile(folder / L"stays.txt"));
    CHECK(KindOfPath(folder / L"stays.txt") == PathKind::File);
    MakeReadOnly(folder / L"stays.txt", false);
}

TEST_CASE("a unique folder takes the first free number, up to 99") {
    const ScratchFolder folder;
    CHECK(MakeUniqueFolder(folder.path, L"Game") == folder / L"Game");
    PutFile(folder / L"Game", "a file takes the name too");
    CHECK(MakeUniqueFolder(folder.path, L"Game") == folder / L"Game_01");
    for (int32_t i = 1; i <= 99; ++i) {
        if (i != 42) PutFolder(folder / (L"Game_" + std::wstring(i < 10 ? L"0" : L"") + std::to_wstring(i)));
    }
    CHECK(MakeUniqueFolder(folder.path, L"Game") == folder / L"Game_42");
    PutFolder(folder / L"Game_42");
    CHECK(MakeUniqueFolder(folder.path, L"Game") == folder / L"Game_New");
    PutFolder(folder / L"Game_New");
    CHECK(MakeUniqueFolder(folder.path, L"Game") == folder / L"Game_New");
    CHECK(KindOfPath(folder / L"Game_100") == PathKind::Missing);
}

TEST_CASE("a name that the disk gives no answer about does not count as free") {
    const ScratchFolder folder;
    PutFolder(folder / L"Game");
    fileFaults = {.failStep = 1};
    CHECK(MakeUniqueFolder(folder.path, L"Game") == folder / L"Game_01");
}
