#include "platform/files.h"

#include "platform/folders.h"
#include "platform/headless/fault_injection.h"
#include "platform/headless/native_path.h"
#include "support/folder_entries.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <filesystem>

static std::vector<std::wstring> NamesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    for (const FolderEntry& entry : EntriesOf(folder)) names.push_back(entry.name);
    return names;
}

using Names = std::vector<std::wstring>;

TEST_CASE("a written file holds exactly its bytes and stands alone in its folder") {
    const ScratchFolder folder;
    const std::string bytes("\xEF\xBB\xBF\0\r\n\x1A\xFF", 8);
    CHECK(WriteWholeFile(folder / L"a.bin", bytes));
    CHECK(FileBytes(folder / L"a.bin") == bytes);
    CHECK(WriteWholeFile(folder / L"a.bin", "short"));
    CHECK(FileBytes(folder / L"a.bin") == "short");
    CHECK(WriteWholeFile(folder / L"a.bin", ""));
    CHECK(FileBytes(folder / L"a.bin") == "");
    CHECK(NamesIn(folder.path) == Names{L"a.bin"});
}

TEST_CASE("a file is read whole, and reading anything else fails") {
    const ScratchFolder folder;
    const std::string bytes(200'000, '\x1A');
    PutFile(folder / L"a.bin", bytes);
    PutFile(folder / L"empty", "");
    std::string read;
    CHECK(ReadWholeFile(folder / L"a.bin", read));
    CHECK(read == bytes);
    CHECK(ReadWholeFile(folder / L"empty", read));
    CHECK(read == "");

    read = "old";
    CHECK_FALSE(ReadWholeFile(folder / L"missing", read));
    CHECK(read == "");
    CHECK_FALSE(ReadWholeFile(folder.path, read));
    CHECK_FALSE(ReadWholeFile(L"", read));
}

TEST_CASE("a folder, a read-only file and a missing folder cannot be written to") {
    const ScratchFolder folder;
    PutFolder(folder / L"folder");
    CHECK_FALSE(WriteWholeFile(folder / L"folder", "x"));
    CHECK(KindOfPath(folder / L"folder") == PathKind::Folder);
    CHECK_FALSE(WriteWholeFile(folder / L"missing\\a.bin", "x"));
    CHECK_FALSE(WriteWholeFile(L"", "x"));

    PutFile(folder / L"kept", "old");
    MakeReadOnly(folder / L"kept", true);
    CHECK_FALSE(WriteWholeFile(folder / L"kept", "new"));
    CHECK(FileBytes(folder / L"kept") == "old");
    MakeReadOnly(folder / L"kept", false);
    CHECK(WriteWholeFile(folder / L"kept", "new"));
    CHECK(NamesIn(folder.path) == Names{L"folder", L"kept"});
}

TEST_CASE("whichever step of a save fails, the file is the old one or the new one") {
    for (const bool failFollowing : {false, true}) {
        for (int32_t step = 1; step < 20; ++step) {
            const ScratchFolder folder;
            PutFile(folder / L"a.txt", "old contents");
            fileFaults = {.failStep = step, .failFollowing = failFollowing};
            const bool isWritten = WriteWholeFile(folder / L"a.txt", "new");
            const bool isOver = fileFaults.steps < step;
            fileFaults = {};

            CHECK(FileBytes(folder / L"a.txt") == (isWritten ? "new" : "old contents"));
            CHECK(NamesIn(folder.path) == Names{L"a.txt"});
            if (failFollowing && !isOver) CHECK_FALSE(isWritten);
            if (isOver) CHECK(isWritten);
        }
    }
}

TEST_CASE("whichever step of a first save fails, no part of a file is left") {
    for (int32_t step = 1; step < 10; ++step) {
        const ScratchFolder folder;
        fileFaults = {.failStep = step, .failFollowing = true};
        const bool isWritten = WriteWholeFile(folder / L"a.txt", "new");
        fileFaults = {};
        CHECK(NamesIn(folder.path) == (isWritten ? Names{L"a.txt"} : Names{}));
    }
}

TEST_CASE("a file that cannot be replaced is written in place") {
    const ScratchFolder folder;
    PutFile(folder / L"a.txt", "old and longer");
    // Create, write and flush the temporary file; the fourth step replaces the target.
    fileFaults = {.failStep = 4};
    CHECK(WriteWholeFile(folder / L"a.txt", "new"));
    CHECK(fileFaults.steps > 4);
    fileFaults = {};
    CHECK(FileBytes(folder / L"a.txt") == "new");
    CHECK(NamesIn(folder.path) == Names{L"a.txt"});
}

// The folder that `NoteCopyBeside` looks into, and the steps of a save at which a copy of "new" stood there.
static std::filesystem::path watchedFolder;
static std::vector<int32_t> stepsWithCopy;

static void NoteCopyBeside() {
    for (const auto& entry : std::filesystem::directory_iterator(watchedFolder)) {
        const bool isCopy =
            entry.path().filename() != "a.txt" && FileBytes(ProgramPath(entry.path())) == "new";
        if (isCopy) stepsWithCopy.push_back(fileFaults.steps);
    }
}

TEST_CASE("a file that is written in place has its complete copy beside it until it is flushed") {
    const ScratchFolder folder;
    PutFile(folder / L"a.txt", "old");
    watchedFolder = NativePath(folder.path);
    stepsWithCopy.clear();
    // After the three steps of the copy and the rename that fails: reading, writing, flushing.
    fileFaults = {.failStep = 4, .onStep = NoteCopyBeside};
    CHECK(WriteWholeFile(folder / L"a.txt", "new"));
    CHECK(fileFaults.steps == 7);
    fileFaults = {};
    CHECK(stepsWithCopy == std::vector<int32_t>{4, 5, 6, 7});
    CHECK(NamesIn(folder.path) == Names{L"a.txt"});
}

TEST_CASE("a successful save removes what interrupted saves left behind, but no whole copy") {
    for (const int32_t failStep : {0, 4}) {  // renamed over the target, or written into it
        const ScratchFolder folder;
        PutFile(folder / L"a.txt", "old");
        PutFile(folder / L"~save0.tmp", "a part");
        PutFile(folder / L"~save1.tmp", "");
        PutFile(folder / L"~save0.whole", "the only whole file");
        fileFaults = {.failStep = failStep};
        CHECK(WriteWholeFile(folder / L"a.txt", "new"));
        fileFaults = {};
        CHECK(FileBytes(folder / L"a.txt") == "new");
        CHECK(FileBytes(folder / L"~save0.whole") == "the only whole file");
        CHECK(NamesIn(folder.path) == Names{L"a.txt", L"~save0.whole"});
    }
}

TEST_CASE("a file that cannot have a copy beside it is written in place") {
    const ScratchFolder folder;
    PutFile(folder / L"a.txt", "old and longer");
    fileFaults = {.failStep = 1};
    CHECK(WriteWholeFile(folder / L"a.txt", "new"));
    fileFaults = {};
    CHECK(FileBytes(folder / L"a.txt") == "new");
}

TEST_CASE("a full disk keeps the old file") {
    for (int64_t freeBytes = 0; freeBytes < 12; ++freeBytes) {
        const ScratchFolder folder;
        PutFile(folder / L"a.txt", "old");
        fileFaults = {.freeBytes = freeBytes};
        CHECK_FALSE(WriteWholeFile(folder / L"a.txt", "new contents"));
        CHECK_FALSE(WriteWholeFile(folder / L"b.txt", "new contents"));
        fileFaults = {};
        CHECK(FileBytes(folder / L"a.txt") == "old");
        CHECK(NamesIn(folder.path) == Names{L"a.txt"});
    }
}

TEST_CASE("a save whose temporary file cannot be filled does not touch the target") {
    const ScratchFolder folder;
    PutFile(folder / L"a.txt", "old");
    for (const int32_t step : {2, 3}) {  // writing and flushing it
        fileFaults = {.failStep = step};
        CHECK_FALSE(WriteWholeFile(folder / L"a.txt", "new"));
        CHECK(fileFaults.steps == step);
    }
    fileFaults = {};
    CHECK(FileBytes(folder / L"a.txt") == "old");
}

TEST_CASE("a write that ends early without an error is noticed") {
    const ScratchFolder folder;
    PutFile(folder / L"a.txt", "old");
    fileFaults = {.writtenAtOnce = 5};
    CHECK_FALSE(WriteWholeFile(folder / L"a.txt", "new contents"));
    fileFaults = {};
    CHECK(FileBytes(folder / L"a.txt") == "old");
    CHECK(NamesIn(folder.path) == Names{L"a.txt"});
}

TEST_CASE("a write in place that fails puts the old bytes back") {
    for (const char* bytes : {"no", "longer than what was there before"}) {
        const ScratchFolder folder;
        PutFile(folder / L"a.txt", "old contents");
        // The temporary file cannot be made, and the write in place ends after one byte.
        fileFaults = {.failStep = 1, .writtenAtOnce = 1};
        CHECK_FALSE(WriteWholeFile(folder / L"a.txt", bytes));
        fileFaults = {};
        CHECK(FileBytes(folder / L"a.txt") == "old contents");
    }
}

TEST_CASE("the kind of a path tells files, folders and nothing apart") {
    const ScratchFolder folder;
    PutFile(folder / L"a.txt", "");
    CHECK(KindOfPath(folder / L"a.txt") == PathKind::File);
    CHECK(KindOfPath(folder.path) == PathKind::Folder);
    CHECK(KindOfPath(folder.path + L"\\") == PathKind::Folder);
    CHECK(KindOfPath(folder / L"b.txt") == PathKind::Missing);
    CHECK(KindOfPath(L"") == PathKind::Missing);
}

TEST_CASE("a path about which the disk says nothing is not taken for a free one") {
    const ScratchFolder folder;
    PutFile(folder / L"a.txt", "a");
    PutFile(folder / L"b.txt", "b");
    for (const wchar_t* name : {L"a.txt", L"c.txt"}) {
        fileFaults = {.failStep = 1};
        CHECK(KindOfPath(folder / name) == PathKind::Unknown);
    }
    fileFaults = {.failStep = 1};
    CHECK_FALSE(RenamePath(folder / L"a.txt", folder / L"b.txt"));
    CHECK(FileBytes(folder / L"b.txt") == "b");
}

TEST_CASE("folders are made with their parents, and not where a file stands") {
    const ScratchFolder folder;
    CHECK(MakeFolders(folder / L"a\\b\\c"));
    CHECK(KindOfPath(folder / L"a\\b\\c") == PathKind::Folder);
    CHECK(MakeFolders(folder / L"a\\b\\c"));
    PutFile(folder / L"file", "x");
    CHECK_FALSE(MakeFolders(folder / L"file"));
    CHECK_FALSE(MakeFolders(folder / L"file\\below"));
    CHECK_FALSE(MakeFolders(L""));
}

TEST_CASE("a file is copied over another one") {
    const ScratchFolder folder;
    PutFile(folder / L"from", "new");
    PutFile(folder / L"to", "old and longer");
    CHECK(CopyWholeFile(folder / L"from", folder / L"to"));
    CHECK(FileBytes(folder / L"to") == "new");
    CHECK(FileBytes(folder / L"from") == "new");
    CHECK_FALSE(CopyWholeFile(folder / L"missing", folder / L"to"));
    CHECK(FileBytes(folder / L"to") == "new");
}

TEST_CASE("a file is not copied onto itself or onto a read-only one, and its copy is read-only like it") {
    const ScratchFolder folder;
    PutFile(folder / L"from", "new");
    PutFile(folder / L"kept", "old");
    CHECK_FALSE(CopyWholeFile(folder / L"from", folder / L"from"));
    CHECK(FileBytes(folder / L"from") == "new");

    MakeReadOnly(folder / L"kept", true);
    CHECK_FALSE(CopyWholeFile(folder / L"from", folder / L"kept"));
    CHECK(FileBytes(folder / L"kept") == "old");
    CHECK(CopyWholeFile(folder / L"kept", folder / L"to"));
    CHECK_FALSE(WriteWholeFile(folder / L"to", "x"));
    CHECK(FileBytes(folder / L"to") == "old");
    for (const wchar_t* name : {L"kept", L"to"}) MakeReadOnly(folder / name, false);
}

TEST_CASE("a copy that fails at any step says so") {
    const ScratchFolder folder;
    PutFile(folder / L"from", "new");
    for (const int32_t step : {1, 2, 3}) {  // reading, making and filling it
        fileFaults = {.failStep = step};
        CHECK_FALSE(CopyWholeFile(folder / L"from", folder / L"to"));
        CHECK(fileFaults.steps == step);
    }
    fileFaults = {.freeBytes = 2};
    CHECK_FALSE(CopyWholeFile(folder / L"from", folder / L"to"));
    fileFaults = {};
    CHECK(FileBytes(folder / L"from") == "new");
}

TEST_CASE("renaming never replaces what stands there") {
    const ScratchFolder folder;
    PutFile(folder / L"a", "a");
    PutFile(folder / L"b", "b");
    CHECK_FALSE(RenamePath(folder / L"a", folder / L"b"));
    CHECK(FileBytes(folder / L"b") == "b");
    CHECK(RenamePath(folder / L"a", folder / L"c"));
    CHECK(NamesIn(folder.path) == Names{L"b", L"c"});
    PutFile(folder / L"old\\file", "x");
    CHECK(RenamePath(folder / L"old", folder / L"new"));
    CHECK(FileBytes(folder / L"new\\file") == "x");
    CHECK_FALSE(RenamePath(folder / L"missing", folder / L"d"));
    CHECK_FALSE(RenamePath(L"", folder / L"d"));
}

TEST_CASE("only files are removed as files, and only empty folders as folders") {
    const ScratchFolder folder;
    PutFile(folder / L"folder\\file", "x");
    CHECK_FALSE(RemoveFile(folder / L"folder"));
    CHECK_FALSE(RemoveEmptyFolder(folder / L"folder"));
    CHECK_FALSE(RemoveEmptyFolder(folder / L"folder\\file"));
    CHECK(RemoveFile(folder / L"folder\\file"));
    CHECK(RemoveEmptyFolder(folder / L"folder"));
    CHECK_FALSE(RemoveFile(folder / L"folder\\file"));
    CHECK(NamesIn(folder.path).empty());
}

TEST_CASE("a folder is listed by name, by UTF-16 units") {
    const ScratchFolder folder;
    for (const wchar_t* name : {L"b", L"B", L"a", L"\xE000", L"\U0001F600", L"\x10D"}) {
        PutFile(folder / name, "x");
    }
    PutFolder(folder / L"c");
    // Case-insensitive disks keep one of "b" and "B".
    auto names = NamesIn(folder.path);
    if (names.front() != L"B") names.insert(names.begin(), L"B");
    CHECK(names == Names{L"B", L"a", L"b", L"c", L"\x10D", L"\U0001F600", L"\xE000"});
    const auto entries = EntriesOf(folder.path);
    const auto c = std::find_if(entries.begin(), entries.end(), [](auto& e) { return e.name == L"c"; });
    CHECK(*c == FolderEntry{L"c", true, false});
    CHECK(EntriesOf(folder / L"missing").empty());
    CHECK(EntriesOf(folder / L"a").empty());
    CHECK(EntriesOf(L"").empty());
}

TEST_CASE("paths that no disk can hold fail and do not throw") {
    const ScratchFolder folder;
    std::wstring broken = folder / L"x";
    broken.back() = static_cast<wchar_t>(0xD83D);
    std::wstring withNul = folder / L"a.txt";
    PutFile(withNul, "kept");
    withNul += L'\0';
    withNul += L"tail";
    const std::wstring endless = folder.path + L"\\" + std::wstring(5000, L'n');

    for (const std::wstring& path : {withNul, endless, broken}) {
        std::string bytes;
        CHECK_FALSE(ReadWholeFile(path, bytes));
        CHECK(KindOfPath(path) == PathKind::Missing);
        CHECK(EntriesOf(path).empty());
        CHECK_FALSE(RemoveFile(path));
        CHECK_FALSE(RenamePath(path, folder / L"other"));
        (void)AbsolutePath(path);
    }
    CHECK_FALSE(WriteWholeFile(endless, "x"));
    if constexpr (sizeof(wchar_t) == 4) {
        broken.back() = static_cast<wchar_t>(0xFFFFFFFF);
        CHECK(KindOfPath(broken) == PathKind::Missing);
    }
    CHECK(FileBytes(folder / L"a.txt") == "kept");
}

TEST_CASE("a full path has no dots left and starts from the working folder") {
    const ScratchFolder folder;
    folderAnswers.workingFolder = folder.path;
    CHECK(WorkingFolder() == folder.path);
    CHECK(AbsolutePath(L"Project") == folder / L"Project");
    CHECK(AbsolutePath(L"a\\.\\b\\..\\c") == folder / L"a\\c");
    CHECK(AbsolutePath(L"a\\b\\..") == folder / L"a");
    CHECK(AbsolutePath(L".") == folder.path);
    CHECK(AbsolutePath(L"a\\") == folder / L"a\\");
    CHECK(AbsolutePath(L"a/b") == folder / L"a\\b");
    CHECK(AbsolutePath(L"C:\\x\\..\\y") == L"C:\\y");
    CHECK(AbsolutePath(L"C:/../y") == L"C:\\y");
    CHECK(AbsolutePath(folder / L"x") == folder / L"x");
    CHECK(AbsolutePath(L"") == L"");

    PutFile(folder / L"here.txt", "x");
    CHECK(KindOfPath(L"here.txt") == PathKind::File);
}

TEST_CASE("a full path of 260 units or more leaves the path as it was") {
    const ScratchFolder folder;
    folderAnswers.workingFolder = folder.path;
    const std::wstring fits(259 - folder.path.size() - 1, L'n');
    CHECK(AbsolutePath(fits) == folder / fits);
    CHECK(AbsolutePath(fits + L"n") == fits + L"n");
}
