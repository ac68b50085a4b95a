#include "platform/files.h"

#include "base/path_text.h"
#include "platform/windows/file_calls.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <new>

// Without its last part and the separators before it. Empty for a path of one part.
static std::wstring ParentOf(std::wstring path) {
    while (!path.empty() && IsSeparator(path.back())) path.pop_back();
    while (!path.empty() && !IsSeparator(path.back())) path.pop_back();
    while (!path.empty() && IsSeparator(path.back())) path.pop_back();
    return path;
}

// Cloud storage marks its files as reparse points too; only those that stand for another name are links.
static bool IsLink(const WIN32_FIND_DATAW& found) {
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) &&
           IsReparseTagNameSurrogate(found.dwReserved0);
}

// The errors that mean that nothing stands at a path. Any other leaves it open: the disk may just not answer.
static bool SaysMissing(DWORD error) {
    constexpr DWORD kMissing[] = {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND,    ERROR_INVALID_NAME,
                                  ERROR_BAD_PATHNAME,   ERROR_INVALID_PARAMETER, ERROR_FILENAME_EXCED_RANGE,
                                  ERROR_INVALID_DRIVE,  ERROR_NOT_READY,         ERROR_BAD_NETPATH,
                                  ERROR_BAD_NET_NAME,   ERROR_DIRECTORY,         ERROR_DELETE_PENDING};
    return std::ranges::find(kMissing, error) != std::end(kMissing);
}

PathKind KindOfPath(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(SystemPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return SaysMissing(GetLastError()) ? PathKind::Missing : PathKind::Unknown;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? PathKind::Folder : PathKind::File;
}

bool ReadFileFacts(const std::wstring& path, FileFacts& facts) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(SystemPath(path).c_str(), GetFileExInfoStandard, &data)) return false;
    if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return false;
    const auto join = [](DWORD high, DWORD low) { return static_cast<int64_t>(uint64_t{high} << 32 | low); };
    facts = {join(data.nFileSizeHigh, data.nFileSizeLow),
             join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime)};
    return true;
}

// A network drive that is not connected, too, tells its kind without asking its server.
bool MayAnswerLate(const std::wstring& path) {
    const std::wstring root = RootOf(AbsolutePath(path));
    if (root.empty()) return false;  // no disk will be asked
    if (IsSeparator(root.front())) return root.size() > 1;
    const UINT kind = GetDriveTypeW(root.c_str());
    return kind != DRIVE_FIXED && kind != DRIVE_RAMDISK;
}

bool ReadWholeFile(const std::wstring& path, std::string& bytes) {
    bytes.clear();
    const FileHandle file(CreateFileW(SystemPath(path).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.IsOpen() || GetFileType(file.Get()) != FILE_TYPE_DISK) return false;  // a device has no end
    return ReadAllBytes(file.Get(), bytes);
}

// The system called: no exception may leave by this way.
static DWORD CALLBACK AskGoesOn(LARGE_INTEGER total, LARGE_INTEGER done, LARGE_INTEGER, LARGE_INTEGER, DWORD,
                                DWORD, HANDLE, HANDLE, LPVOID goesOn) {
    try {
        const auto& asked = *static_cast<const CopyGoesOn*>(goesOn);
        return asked(done.QuadPart, total.QuadPart) ? PROGRESS_CONTINUE : PROGRESS_CANCEL;
    } catch (const std::bad_alloc&) {
        return PROGRESS_CANCEL;
    }
}

bool CopyWholeFile(const std::wstring& from, const std::wstring& to, const CopyGoesOn& goesOn) {
    CopyGoesOn asked = goesOn;
    return CopyFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), asked ? AskGoesOn : nullptr, &asked,
                       nullptr, 0);
}

bool RenamePath(const std::wstring& from, const std::wstring& to) {
    return MoveFileW(SystemPath(from).c_str(), SystemPath(to).c_str());
}

bool RemoveFile(const std::wstring& path) { return DeleteFileW(SystemPath(path).c_str()); }

bool RemoveEmptyFolder(const std::wstring& path) { return RemoveDirectoryW(SystemPath(path).c_str()); }

bool MakeWritable(const std::wstring& path) {
    const std::wstring systemPath = SystemPath(path);
    const DWORD attributes = GetFileAttributesW(systemPath.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_READONLY)) return false;
    return SetFileAttributesW(systemPath.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
}

// Goes up until a folder stands, then makes the missing ones downwards. Each is looked at afterwards, because
// what counts is that it is there, not who made it.
bool MakeFolders(const std::wstring& path) {
    std::vector<std::wstring> missing;  // the deepest first
    PathKind kind = KindOfPath(path);
    for (std::wstring folder = path; kind != PathKind::File && kind != PathKind::Folder;) {
        missing.push_back(folder);
        folder = ParentOf(folder);
        if (folder.empty()) break;
        kind = KindOfPath(folder);
    }
    if (kind == PathKind::File) return false;
    for (; !missing.empty(); missing.pop_back()) {
        CreateDirectoryW(SystemPath(missing.back()).c_str(), nullptr);
        if (KindOfPath(missing.back()) != PathKind::Folder)
            return false;  // another program may have been faster
    }
    return true;
}

// All or nothing: a list that broke off in the middle would make files look deleted. Sorted by name, because
// each file system lists in an order of its own.
bool ListFolder(const std::wstring& path, std::vector<FolderEntry>& entries) {
    entries.clear();
    if (path.empty()) return false;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(SystemPath(path + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return false;

    std::vector<FolderEntry> all;
    do {
        if (IsItselfOrParent(found.cFileName)) continue;
        const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        all.push_back({found.cFileName, isFolder, IsLink(found)});
    } while (FindNextFileW(search, &found));
    const bool isWhole = GetLastError() == ERROR_NO_MORE_FILES;
    FindClose(search);
    if (!isWhole) return false;

    std::ranges::sort(all, {}, &FolderEntry::name);
    entries = std::move(all);
    return true;
}

std::wstring AbsolutePath(const std::wstring& path) {
    wchar_t full[MAX_PATH] = {};
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
    return length == 0 || length >= MAX_PATH ? path : std::wstring(full, length);
}
