#include "platform/files.h"

#include "doctest/doctest.h"
#include "platform/aside.h"
#include "platform/windows/file_calls.h"
#include "platform/windows/test_folder.h"
#include "support/folder_entries.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <thread>

namespace {

// A file that another program keeps open.
class HeldFile {
public:
    HeldFile(const std::wstring& path, DWORD share)
        : handle(CreateFileW(path.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
        REQUIRE(handle != INVALID_HANDLE_VALUE);
    }
    ~HeldFile() { CloseHandle(handle); }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    HANDLE Get() const { return handle; }

    std::string ReadFromStart() const {
        SetFilePointer(handle, 0, nullptr, FILE_BEGIN);
        char buffer[64] = {};
        DWORD got = 0;
        ReadFile(handle, buffer, sizeof buffer, &got, nullptr);
        return std::string(buffer, got);
    }

private:
    HANDLE handle;
};

// A file that another program keeps open for a tenth of a second, and lets nobody rename or remove meanwhile.
class BrieflyHeldFile {
public:
    explicit BrieflyHeldFile(const std::wstring& path)
        : held(std::make_unique<HeldFile>(path, FILE_SHARE_READ | FILE_SHARE_WRITE)), holder([this] {
              Sleep(100);
              held.reset();
          }) {}
    ~BrieflyHeldFile() { holder.join(); }
    BrieflyHeldFile(const BrieflyHeldFile&) = delete;
    BrieflyHeldFile& operator=(const BrieflyHeldFile&) = delete;

private:
    std::unique_ptr<HeldFile> held;
    std::thread holder;
};

}  // namespace

// The number of the file on its disk: a file that is written over keeps it, one that is replaced does not.
static uint64_t FileNumber(const std::wstring& path) {
    const HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(file != INVALID_HANDLE_VALUE);
    BY_HANDLE_FILE_INFORMATION information{};
    REQUIRE(GetFileInformationByHandle(file, &information));
    CloseHandle(file);
    return uint64_t{information.nFileIndexHigh} << 32 | information.nFileIndexLow;
}

static std::string Bytes(const std::wstring& path) {
    std::string bytes;
    REQUIRE(ReadWholeFile(path, bytes));
    return bytes;
}

static std::vector<std::wstring> Names(const std::wstring& folder) {
    std::vector<std::wstring> names;
    for (const FolderEntry& entry : EntriesOf(folder)) names.push_back(entry.name);
    return names;
}

static bool IsReparsePoint(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT);
}

using NameList = std::vector<std::wstring>;

TEST_CASE("a written file reads back byte for byte") {
    const TestFolder folder;
    std::string large(3 << 20, '\0');
    for (size_t i = 0; i < large.size(); ++i) large[i] = static_cast<char>(i * 7 + i / 251);
    for (const std::string& bytes : {std::string(), std::string("a\0b\r\n\x1A", 6), large}) {
        REQUIRE(WriteWholeFile(folder / L"file.bin", bytes));
        CHECK(Bytes(folder / L"file.bin") == bytes);
        CHECK(Names(folder.Path()) == NameList{L"file.bin"});
    }
}

TEST_CASE("a shorter text replaces a longer one whole") {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"a.txt", "a long first text"));
    REQUIRE(WriteWholeFile(folder / L"a.txt", "short"));
    CHECK(Bytes(folder / L"a.txt") == "short");
}

TEST_CASE("a reader sees the whole old file or the whole new one") {
    const TestFolder folder;
    const std::wstring path = folder / L"scene.scene";
    REQUIRE(WriteWholeFile(path, "old"));
    const HeldFile reader(path, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);

    CHECK(WriteWholeFile(path, "new and longer"));

    const std::string seen = reader.ReadFromStart();
    CHECK((seen == "old" || seen == "new and longer"));
    CHECK(Bytes(path) == "new and longer");
    CHECK(Names(folder.Path()) == NameList{L"scene.scene"});
}

TEST_CASE("a file held open by a program that lets others write is written in place") {
    const TestFolder folder;
    const std::wstring path = folder / L"scene.scene";
    for (const std::string bytes : {"new", "new and much longer than before"}) {
        REQUIRE(WriteWholeFile(path, "the old bytes"));
        const HeldFile holder(path, FILE_SHARE_READ | FILE_SHARE_WRITE);

        CHECK(WriteWholeFile(path, bytes));

        CHECK(holder.ReadFromStart() == bytes);
        CHECK(Names(folder.Path()) == NameList{L"scene.scene"});
    }
}

TEST_CASE("a file that a scanner holds for a moment is still replaced in one step") {
    const TestFolder folder;
    const std::wstring path = folder / L"scene.scene";
    REQUIRE(WriteWholeFile(path, "old"));
    const uint64_t before = FileNumber(path);
    {
        const BrieflyHeldFile scanner(path);
        CHECK(WriteWholeFile(path, "new"));
    }
    CHECK(Bytes(path) == "new");
    CHECK(FileNumber(path) != before);
    CHECK(Names(folder.Path()) == NameList{L"scene.scene"});
}

TEST_CASE("a temporary file that a scanner holds for a moment is still renamed, or removed") {
    const TestFolder folder;
    const std::wstring target = folder / L"scene.scene", temporary = folder / L"~zel.tmp";
    REQUIRE(WriteWholeFile(target, "old"));
    REQUIRE(WriteWholeFile(temporary, "new"));
    {
        const BrieflyHeldFile scanner(temporary);
        CHECK(RenameOver(temporary, target));
    }
    CHECK(Bytes(target) == "new");
    {
        const BrieflyHeldFile scanner(target);
        CHECK(RemoveHeldFile(target));
    }
    CHECK(Names(folder.Path()).empty());
}

TEST_CASE("only errors that may pass are tried again") {
    for (const DWORD error : {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION}) {
        CHECK(MayPass(error));
    }
    for (const DWORD error : {ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_DISK_FULL,
                              ERROR_WRITE_PROTECT, ERROR_NOT_SAME_DEVICE}) {
        CHECK_FALSE(MayPass(error));
    }
}

TEST_CASE("a flush that the file system does not know is no failure") {
    CHECK(IsUnknownToFileSystem(ERROR_INVALID_FUNCTION));
    CHECK(IsUnknownToFileSystem(ERROR_NOT_SUPPORTED));
    for (const DWORD error : {ERROR_DISK_FULL, ERROR_ACCESS_DENIED, ERROR_WRITE_FAULT, ERROR_CRC}) {
        CHECK_FALSE(IsUnknownToFileSystem(error));
    }
}

TEST_CASE("a write in place that cannot be finished puts the old bytes back") {
    const TestFolder folder;
    const std::wstring path = folder / L"scene.scene";
    REQUIRE(WriteWholeFile(path, "the old bytes"));
    const HeldFile holder(path, FILE_SHARE_READ | FILE_SHARE_WRITE);
    // A file in use as memory cannot become shorter: this fails after the new bytes have been written.
    const HANDLE mapping = CreateFileMappingW(holder.Get(), nullptr, PAGE_READONLY, 0, 0, nullptr);
    REQUIRE(mapping != nullptr);
    const void* view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
    REQUIRE(view != nullptr);

    CHECK_FALSE(WriteWholeFile(path, "new"));

    CHECK(holder.ReadFromStart() == "the old bytes");
    CHECK(Names(folder.Path()) == NameList{L"scene.scene"});
    UnmapViewOfFile(view);
    CloseHandle(mapping);
}

TEST_CASE("a file held open by a program that lets nobody write stays as it was") {
    const TestFolder folder;
    const std::wstring path = folder / L"scene.scene";
    REQUIRE(WriteWholeFile(path, "old"));
    const HeldFile holder(path, FILE_SHARE_READ);

    CHECK_FALSE(WriteWholeFile(path, "new"));

    CHECK(holder.ReadFromStart() == "old");
    CHECK(Names(folder.Path()) == NameList{L"scene.scene"});
}

TEST_CASE("a read-only file is not overwritten") {
    const TestFolder folder;
    const std::wstring path = folder / L"kept.txt";
    REQUIRE(WriteWholeFile(path, "old"));
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);

    CHECK_FALSE(WriteWholeFile(path, "new"));

    CHECK(Bytes(path) == "old");
    CHECK(Names(folder.Path()) == NameList{L"kept.txt"});
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_CASE("a hidden file stays hidden when it is saved") {
    const TestFolder folder;
    const std::wstring path = folder / L"hidden.txt";
    REQUIRE(WriteWholeFile(path, "old"));
    REQUIRE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN));

    CHECK(WriteWholeFile(path, "new"));

    CHECK(Bytes(path) == "new");
    CHECK((GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
}

TEST_CASE("nothing is written where there is no folder, or where a folder stands") {
    const TestFolder folder;
    CHECK_FALSE(WriteWholeFile(folder / L"missing\\a.txt", "text"));
    CHECK(Names(folder.Path()).empty());
    REQUIRE(MakeFolders(folder / L"sub"));
    CHECK_FALSE(WriteWholeFile(folder / L"sub", "text"));
    CHECK_FALSE(WriteWholeFile(L"", "text"));
    CHECK(Names(folder.Path()) == NameList{L"sub"});
    CHECK(Names(folder / L"sub").empty());
}

TEST_CASE("a file with the longest possible name is saved twice") {
    const TestFolder folder;
    const std::wstring path = folder / (std::wstring(251, L'n') + L".txt");
    CHECK(WriteWholeFile(path, "one"));
    CHECK(WriteWholeFile(path, "two"));
    CHECK(Bytes(path) == "two");
    CHECK(EntriesOf(folder.Path()).size() == 1);
}

// As a save of the process names it.
static std::wstring LeftoverOf(DWORD process, const std::wstring& rest = L"_0.tmp") {
    return L"~zel" + std::to_wstring(process) + rest;
}

TEST_CASE("a successful save removes what saves of ended programs left behind, and nothing else") {
    const TestFolder folder;
    const DWORD own = GetCurrentProcessId();
    constexpr DWORD kNobody = 0xFFFFFFFC;
    const NameList others{LeftoverOf(own, L"_0.whole"),
                          LeftoverOf(own, L"_0.tmp.txt"),
                          LeftoverOf(own, L"_.tmp"),
                          LeftoverOf(own, L"_0_0.tmp"),
                          L"a.txt",
                          L"~zel.tmp",
                          L"~zel99999999999999999999_0.tmp",
                          L"~zelda_0.tmp"};
    for (const std::wstring& name : others) REQUIRE(WriteWholeFile(folder / name, "kept"));
    for (const DWORD process : {own, kNobody}) {
        REQUIRE(CopyWholeFile(folder / L"a.txt", folder / LeftoverOf(process)));
        REQUIRE(CopyWholeFile(folder / L"a.txt", folder / LeftoverOf(process, L"_17.tmp")));
    }
    CHECK(WriteWholeFile(folder / L"a.txt", "new"));
    CHECK(Bytes(folder / L"a.txt") == "new");
    NameList sorted = others;
    std::ranges::sort(sorted);
    CHECK(Names(folder.Path()) == sorted);
}

TEST_CASE("a temporary file of a program that runs stays, and so does one that is open") {
    const TestFolder folder;
    PROCESS_INFORMATION other{};
    STARTUPINFOW start{.cb = sizeof start};
    std::wstring command = L"cmd.exe /c pause";  // waits for a key that never comes
    REQUIRE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE, nullptr,
                           nullptr, &start, &other));
    const std::wstring theirs = folder / LeftoverOf(other.dwProcessId);
    REQUIRE(WriteWholeFile(theirs, "in use"));
    CHECK(WriteWholeFile(folder / L"a.txt", "one"));
    CHECK(Bytes(theirs) == "in use");

    REQUIRE(TerminateProcess(other.hProcess, 0));
    REQUIRE(WaitForSingleObject(other.hProcess, 10'000) == WAIT_OBJECT_0);
    CHECK(
        WriteWholeFile(folder / L"a.txt", "two"));  // the process has ended, though it can still be asked for
    CHECK(Names(folder.Path()) == NameList{L"a.txt"});
    CloseHandle(other.hThread);
    CloseHandle(other.hProcess);

    REQUIRE(CopyWholeFile(folder / L"a.txt", theirs));
    const HeldFile holder(theirs, 0);
    CHECK(WriteWholeFile(folder / L"a.txt", "three"));
    CHECK(Names(folder.Path()) == NameList{L"a.txt", theirs.substr(theirs.rfind(L'\\') + 1)});
}

TEST_CASE("paths far beyond 260 characters work like short ones") {
    const TestFolder folder;
    std::wstring deep = folder.Path();
    while (deep.size() < 600) deep += L"\\a folder with a rather long name of forty";
    REQUIRE(MakeFolders(deep));
    CHECK(KindOfPath(deep) == PathKind::Folder);

    const std::wstring file = deep + L"\\first.txt", copy = deep + L"\\second.txt",
                       moved = deep + L"\\third.txt";
    CHECK(WriteWholeFile(file, "text"));
    CHECK(WriteWholeFile(file, "text again"));
    CHECK(Bytes(file) == "text again");
    CHECK(CopyWholeFile(file, copy));
    CHECK(RenamePath(copy, moved));
    CHECK(Names(deep) == NameList{L"first.txt", L"third.txt"});
    CHECK(RemoveFile(file));
    CHECK(RemoveFile(moved));
    while (deep != folder.Path()) {
        CHECK(RemoveEmptyFolder(deep));
        CHECK(KindOfPath(deep) == PathKind::Missing);
        deep.resize(deep.rfind(L'\\'));
    }
}

TEST_CASE("reading fails for anything but a file") {
    const TestFolder folder;
    for (const std::wstring& path :
         {folder / L"missing", folder.Path(), std::wstring(), std::wstring(L"NUL")}) {
        std::string bytes = "before";
        CHECK_FALSE(ReadWholeFile(path, bytes));
        CHECK(bytes.empty());
    }
}

TEST_CASE("what stands at a path is missing, a file or a folder") {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"a.txt", ""));
    CHECK(KindOfPath(folder / L"a.txt") == PathKind::File);
    CHECK(KindOfPath(folder.Path()) == PathKind::Folder);
    CHECK(KindOfPath(folder / L"b.txt") == PathKind::Missing);
    CHECK(KindOfPath(folder / L"a.txt\\b") == PathKind::Missing);
    CHECK(KindOfPath(folder / L"missing\\b.txt") == PathKind::Missing);
    for (const wchar_t* name : {L"a?b", L"a*b", L"a|b", L"a<b", L"a\"b"}) {
        CHECK(KindOfPath(folder / name) == PathKind::Missing);
    }
    CHECK(KindOfPath(folder / std::wstring(300, L'n')) == PathKind::Missing);
    CHECK(KindOfPath(L"Q:\\no\\such\\drive") == PathKind::Missing);
    CHECK(KindOfPath(L"") == PathKind::Missing);
}

TEST_CASE("a copy overwrites its target, and fails without a source") {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"from.txt", "new"));
    REQUIRE(WriteWholeFile(folder / L"to.txt", "old and longer"));
    CHECK(CopyWholeFile(folder / L"from.txt", folder / L"to.txt"));
    CHECK(Bytes(folder / L"to.txt") == "new");
    CHECK_FALSE(CopyWholeFile(folder / L"missing.txt", folder / L"to.txt"));
    CHECK_FALSE(CopyWholeFile(folder.Path(), folder / L"copy"));
    CHECK(Bytes(folder / L"to.txt") == "new");
}

TEST_CASE("a file is not copied onto itself, and the copy of a read-only one is read-only") {
    const TestFolder folder;
    const std::wstring from = folder / L"from", kept = folder / L"kept", to = folder / L"to";
    REQUIRE(WriteWholeFile(from, "new"));
    REQUIRE(WriteWholeFile(kept, "old"));
    CHECK_FALSE(CopyWholeFile(from, from));
    CHECK(Bytes(from) == "new");

    REQUIRE(SetFileAttributesW(kept.c_str(), FILE_ATTRIBUTE_READONLY));
    CHECK(CopyWholeFile(kept, to));
    CHECK_FALSE(WriteWholeFile(to, "x"));
    CHECK(Bytes(to) == "old");
    for (const std::wstring& path : {kept, to}) SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_CASE("a rename never overwrites, and may change only the letter case") {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"a.txt", "a"));
    REQUIRE(WriteWholeFile(folder / L"b.txt", "b"));
    CHECK_FALSE(RenamePath(folder / L"a.txt", folder / L"b.txt"));
    CHECK(Bytes(folder / L"b.txt") == "b");
    CHECK(RenamePath(folder / L"a.txt", folder / L"A.txt"));
    CHECK(Bytes(folder / L"A.txt") == "a");
    CHECK(EntriesOf(folder.Path()).size() == 2);

    REQUIRE(MakeFolders(folder / L"old\\inner"));
    CHECK(RenamePath(folder / L"old", folder / L"new"));
    CHECK(KindOfPath(folder / L"new\\inner") == PathKind::Folder);
    CHECK_FALSE(RenamePath(folder / L"missing", folder / L"c"));
}

TEST_CASE("only empty folders are removed") {
    const TestFolder folder;
    REQUIRE(MakeFolders(folder / L"full"));
    REQUIRE(WriteWholeFile(folder / L"full\\a.txt", "a"));
    CHECK_FALSE(RemoveEmptyFolder(folder / L"full"));
    CHECK(RemoveFile(folder / L"full\\a.txt"));
    CHECK_FALSE(RemoveFile(folder / L"full\\a.txt"));
    CHECK_FALSE(RemoveFile(folder / L"full"));
    CHECK(RemoveEmptyFolder(folder / L"full"));
    CHECK(EntriesOf(folder.Path()).empty());
}

TEST_CASE("folders are made with their parents, and stand already the second time") {
    const TestFolder folder;
    for (int32_t time = 0; time < 2; ++time) {
        CHECK(MakeFolders(folder / L"a\\b/c"));
        CHECK(MakeFolders(folder / L"d\\e\\"));
        CHECK(KindOfPath(folder / L"a\\b\\c") == PathKind::Folder);
        CHECK(KindOfPath(folder / L"d\\e") == PathKind::Folder);
    }
    REQUIRE(WriteWholeFile(folder / L"file", ""));
    CHECK_FALSE(MakeFolders(folder / L"file"));
    CHECK_FALSE(MakeFolders(folder / L"file\\sub"));
    CHECK_FALSE(MakeFolders(L""));
}

TEST_CASE("a folder is listed by name, capitals before small letters, without itself and its parent") {
    const TestFolder folder;
    for (const wchar_t* name : {L"b.txt", L"\x017Elut\xFD.txt", L"C.txt", L"a"}) {
        REQUIRE(WriteWholeFile(folder / name, ""));
    }
    REQUIRE(MakeFolders(folder / L"B"));
    const std::vector<FolderEntry> expected{
        {L"B", true}, {L"C.txt", false}, {L"a", false}, {L"b.txt", false}, {L"\x017Elut\xFD.txt", false}};
    CHECK(EntriesOf(folder.Path()) == expected);
    CHECK(EntriesOf(folder.Path() + L"\\") == expected);
    CHECK(EntriesOf(folder / L"missing").empty());
    CHECK(EntriesOf(folder / L"b.txt").empty());
    CHECK(EntriesOf(L"").empty());
}

TEST_CASE("a link to a folder is told apart from a folder, and saving through a link keeps it") {
    const TestFolder folder;
    constexpr DWORD kUnprivileged = 2;  // allowed to everybody in developer mode
    REQUIRE(MakeFolders(folder / L"target"));
    REQUIRE(WriteWholeFile(folder / L"target\\a.txt", "old"));
    const std::wstring link = folder / L"link", fileLink = folder / L"b.txt";
    CreateSymbolicLinkW(link.c_str(), (folder / L"target").c_str(),
                        SYMBOLIC_LINK_FLAG_DIRECTORY | kUnprivileged);
    CreateSymbolicLinkW(fileLink.c_str(), (folder / L"target\\a.txt").c_str(), kUnprivileged);
    if (!IsReparsePoint(link) || !IsReparsePoint(fileLink)) {
        MESSAGE("skipped: this system lets the test make no links");
        return;
    }
    CHECK(EntriesOf(folder.Path()) ==
          std::vector<FolderEntry>{{L"b.txt", false, true}, {L"link", true, true}, {L"target", true, false}});
    CHECK(WriteWholeFile(fileLink, "new"));
    CHECK(Bytes(folder / L"target\\a.txt") == "new");
    CHECK(IsReparsePoint(fileLink));
}

TEST_CASE("an absolute path has no dots, and is left alone when it would be too long") {
    CHECK(AbsolutePath(L"C:\\a\\.\\b\\..\\c") == L"C:\\a\\c");
    CHECK(AbsolutePath(L"C:/a/b") == L"C:\\a\\b");
    CHECK(AbsolutePath(L"") == L"");
    const std::wstring longest = L"C:\\" + std::wstring(256, L'x');
    REQUIRE(longest.size() == 259);
    CHECK(AbsolutePath(longest + L"\\..\\y") == L"C:\\y");
    CHECK(AbsolutePath(L"C:\\.\\" + std::wstring(256, L'x')) == longest);
    CHECK(AbsolutePath(L"C:\\.\\" + std::wstring(257, L'x')) == L"C:\\.\\" + std::wstring(257, L'x'));
}

TEST_CASE("a read-only file or folder goes once it is writable") {
    const TestFolder folder;
    REQUIRE(WriteWholeFile(folder / L"file", "bytes"));
    REQUIRE(MakeFolders(folder / L"folder"));
    CHECK_FALSE(MakeWritable(folder / L"file"));  // it is
    CHECK_FALSE(MakeWritable(folder / L"missing"));
    for (const wchar_t* name : {L"file", L"folder"}) {
        REQUIRE(SetFileAttributesW((folder / name).c_str(), FILE_ATTRIBUTE_READONLY));
    }
    CHECK_FALSE(RemoveFile(folder / L"file"));
    CHECK(MakeWritable(folder / L"file"));
    CHECK(RemoveFile(folder / L"file"));
    // Not every system keeps the mark for a folder.
    const DWORD attributes = GetFileAttributesW((folder / L"folder").c_str());
    CHECK(MakeWritable(folder / L"folder") == ((attributes & FILE_ATTRIBUTE_READONLY) != 0));
    CHECK(RemoveEmptyFolder(folder / L"folder"));
}

TEST_CASE("a server, and a drive that is not there, may answer late; the system's drive answers at once") {
    wchar_t system[MAX_PATH] = {};
    REQUIRE(GetSystemDirectoryW(system, MAX_PATH) > 3);
    CHECK_FALSE(MayAnswerLate(system));
    CHECK(MayAnswerLate(L"\\\\server\\share\\Game"));
    CHECK(MayAnswerLate(L"\\\\server"));
    CHECK_FALSE(MayAnswerLate(L""));

    const DWORD drives = GetLogicalDrives();
    wchar_t letter = L'A';
    while (letter <= L'Z' && (drives >> (letter - L'A') & 1)) ++letter;
    REQUIRE(letter <= L'Z');
    CHECK(MayAnswerLate(std::wstring(1, letter) + L":\\Game"));
}

TEST_CASE("work aside runs on another thread while this one goes on") {
    const HANDLE mayEnd = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const HANDLE hasEnded = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    DWORD thread = 0;
    RunAside([=, &thread] {
        WaitForSingleObject(mayEnd, INFINITE);  // would wait for ever on this thread
        thread = GetCurrentThreadId();
        SetEvent(hasEnded);
    });
    SetEvent(mayEnd);
    REQUIRE(WaitForSingleObject(hasEnded, 60'000) == WAIT_OBJECT_0);
    CHECK(thread != GetCurrentThreadId());
    CloseHandle(mayEnd);
    CloseHandle(hasEnded);
}

TEST_CASE("a copy reports its progress, and a cancelled one leaves nothing") {
    const TestFolder folder;
    constexpr int64_t kSize = 5'000'000;
    REQUIRE(WriteWholeFile(folder / L"from", std::string(kSize, 'x')));
    int64_t last = -1, whole = 0;
    const auto goesOn = [&](int64_t done, int64_t total) {
        CHECK(done >= last);
        last = done;
        whole = total;
        return true;
    };
    CHECK(CopyWholeFile(folder / L"from", folder / L"to", goesOn));
    CHECK(std::filesystem::file_size(folder / L"to") == kSize);
    if (last < 0) {
        MESSAGE("skipped: this system's copies tell nothing while they run");
        return;
    }
    CHECK(last == kSize);
    CHECK(whole == kSize);
    CHECK_FALSE(CopyWholeFile(folder / L"from", folder / L"other", [](int64_t, int64_t) { return false; }));
    CHECK(KindOfPath(folder / L"other") == PathKind::Missing);
}
