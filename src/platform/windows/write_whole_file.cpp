#include "platform/files.h"
#include "platform/windows/file_calls.h"

#include <windows.h>

#include <cstdint>
#include <new>
#include <string>
#include <string_view>

constexpr int32_t kTemporaryNames = 100;  // tried before giving up
constexpr std::wstring_view kPrefix = L"~zel";
constexpr std::wstring_view kTemporary = L".tmp";
constexpr std::wstring_view kWhole = L".whole";
constexpr size_t kLongestId = 10;  // digits of a process id
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

namespace {

// How far the new bytes came in a file beside the target.
enum class Copy {
    NotAllowed,  // the folder takes no new file
    Failed,      // the disk did not take all of it
    Safe,        // complete, and down to the disk
};

// What the target holds after it was written in place.
enum class Target { Old, New, Damaged };

}  // namespace

// --- The file beside the target that a save goes into first

// With the separator; empty for the working folder.
static std::wstring FolderOf(const std::wstring& target) {
    return target.substr(0, target.find_last_of(L"\\/:") + 1);
}

static std::wstring NameBeside(const std::wstring& target, int32_t attempt, std::wstring_view extension) {
    std::wstring path = FolderOf(target);
    path += kPrefix;
    path += std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(attempt);
    path += extension;
    return path;
}

// Holds a part of the new bytes, or all of them while the target is still the old file: always free to go.
// The name tells the process. Its length does not depend on the target's, so that a file with the longest
// possible name has room beside it too. `attempt` tells apart what would have the same name.
static std::wstring TemporaryName(const std::wstring& target, int32_t attempt) {
    return NameBeside(target, attempt, kTemporary);
}

// Renames a complete temporary file, so that nobody takes it for a leftover while the target is written over:
// it may become the only whole file. False, with the file as it was, when that fails.
static bool KeepTemporaryFile(const std::wstring& target, std::wstring& temporary) {
    for (int32_t attempt = 0; attempt < kTemporaryNames; ++attempt) {
        const std::wstring kept = SystemPath(NameBeside(target, attempt, kWhole));
        if (MoveFileW(temporary.c_str(), kept.c_str())) {
            temporary = kept;
            return true;
        }
        if (GetLastError() != ERROR_ALREADY_EXISTS) return false;
    }
    return false;
}

// Takes the digits that `text` begins with off its front.
static std::wstring_view TakeDigits(std::wstring_view& text) {
    const size_t end = text.find_first_not_of(L"0123456789");
    const std::wstring_view digits = text.substr(0, end);
    text.remove_prefix(digits.size());
    return digits;
}

// The process that a temporary file of this name belongs to; 0 for any other name.
static DWORD OwnerOf(std::wstring_view name) {
    if (!name.starts_with(kPrefix) || !name.ends_with(kTemporary)) return 0;
    name.remove_prefix(kPrefix.size());
    name.remove_suffix(kTemporary.size());
    const std::wstring_view id = TakeDigits(name);
    if (id.empty() || id.size() > kLongestId || !name.starts_with(L'_')) return 0;
    name.remove_prefix(1);
    if (TakeDigits(name).empty() || !name.empty()) return 0;
    return static_cast<DWORD>(std::stoull(std::wstring(id)));
}

static bool IsRunning(DWORD process) {
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (handle == nullptr) return GetLastError() != ERROR_INVALID_PARAMETER;
    const bool isRunning = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return isRunning;
}

static void RemoveFreeFiles(const std::wstring& target) {
    const std::wstring folder = FolderOf(target);
    WIN32_FIND_DATAW found{};
    const std::wstring pattern = folder + std::wstring(kPrefix) + L"*";
    const HANDLE search = FindFirstFileW(SystemPath(pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    try {
        do {
            const DWORD owner = OwnerOf(found.cFileName);
            const bool isFree = owner != 0 && (owner == GetCurrentProcessId() || !IsRunning(owner));
            if (isFree) DeleteFileW(SystemPath(folder + found.cFileName).c_str());
        } while (FindNextFileW(search, &found));
    } catch (const std::bad_alloc&) {  // the others stay for the next save
    }
    FindClose(search);
}

// Removes the temporary files in the target's folder that belong to this process, which is not using any, or
// to none that runs.
static void RemoveLeftovers(const std::wstring& target) {
    try {
        RemoveFreeFiles(target);
    } catch (const std::bad_alloc&) {  // they stay for the next save
    }
}

// --- The target

static bool SetFileSize(HANDLE file, int64_t size) {
    LARGE_INTEGER position{};
    position.QuadPart = size;
    return SetFilePointerEx(file, position, nullptr, FILE_BEGIN) && SetEndOfFile(file);
}

static bool GoToStart(HANDLE file) { return SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_BEGIN); }

// What a link at `path` leads to, so that a save replaces the file and not the link.
static std::wstring FollowLink(const std::wstring& path) {
    const FileHandle file(CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file.IsOpen()) return path;
    const DWORD size = GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
    std::wstring target(size, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file.Get(), target.data(), size, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= size) return path;
    target.resize(length);
    return target;
}

// The new bytes in a file beside the target, down to the disk.
static Copy WriteTemporaryFile(const std::wstring& target, DWORD attributes, std::string_view bytes,
                               std::wstring& path) {
    for (int32_t attempt = 0; attempt < kTemporaryNames; ++attempt) {
        path = SystemPath(TemporaryName(target, attempt));
        FileHandle file(
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr));
        if (!file.IsOpen()) {
            const DWORD reason = GetLastError();
            if (reason == ERROR_FILE_EXISTS) continue;
            const bool diskIsFull = reason == ERROR_DISK_FULL || reason == ERROR_HANDLE_DISK_FULL;
            return diskIsFull ? Copy::Failed : Copy::NotAllowed;
        }
        const bool isSafe = WriteAllBytes(file.Get(), bytes) && FlushToDisk(file.Get());
        file.Close();
        if (isSafe) return Copy::Safe;
        RemoveHeldFile(path);
        return Copy::Failed;
    }
    return Copy::NotAllowed;
}

// Writes from the file's start, and ends the file there.
static bool Fill(HANDLE file, std::string_view bytes) {
    return GoToStart(file) && WriteAllBytes(file, bytes) &&
           SetFileSize(file, static_cast<int64_t>(bytes.size())) && FlushToDisk(file);
}

// Overwrites a file that another program keeps open and lets others write to.
static Target OverwriteInPlace(const std::wstring& target, std::string_view bytes) {
    const FileHandle file(CreateFileW(target.c_str(), GENERIC_READ | GENERIC_WRITE, kShareAll, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    std::string oldBytes;
    if (!file.IsOpen() || !ReadAllBytes(file.Get(), oldBytes)) return Target::Old;

    // Grown first: a full disk is found before anything is overwritten.
    const bool hasRoom =
        bytes.size() <= oldBytes.size() || SetFileSize(file.Get(), static_cast<int64_t>(bytes.size()));
    if (hasRoom && Fill(file.Get(), bytes)) return Target::New;
    return Fill(file.Get(), oldBytes) ? Target::Old : Target::Damaged;
}

// The way of a save: the new bytes go into a temporary file beside the target and down to the disk, then one
// rename puts them in place. Only if the rename is refused, or the folder takes no temporary file, is the
// target written over, while the complete bytes stay beside it. The order matters: at every moment at least
// one whole file is there, the old one or the new one. A disk without room for the temporary file ends the
// save before the target is touched.
bool WriteWholeFile(const std::wstring& path, std::string_view bytes) {
    std::wstring target = SystemPath(path);
    DWORD attributes = GetFileAttributesW(target.c_str());
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    if (exists && (attributes & FILE_ATTRIBUTE_REPARSE_POINT)) {
        target = FollowLink(target);
        attributes = GetFileAttributesW(target.c_str());
    }
    if (exists && (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY))) return false;

    constexpr DWORD kKept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const DWORD newAttributes = exists && (attributes & kKept) ? attributes & kKept : FILE_ATTRIBUTE_NORMAL;
    std::wstring temporary;
    const Copy copy = WriteTemporaryFile(target, newAttributes, bytes, temporary);
    if (copy == Copy::Failed) return false;  // what has no room for a copy is not overwritten
    if (copy == Copy::Safe && RenameOver(temporary, target)) {
        RemoveLeftovers(target);
        return true;
    }

    const bool mayOverwrite = exists && (copy != Copy::Safe || KeepTemporaryFile(target, temporary));
    const Target result = mayOverwrite ? OverwriteInPlace(target, bytes) : Target::Old;
    // Kept while the target holds a part: then it is the only whole file.
    if (copy == Copy::Safe && result != Target::Damaged) RemoveHeldFile(temporary);
    if (result == Target::New) RemoveLeftovers(target);
    return result == Target::New;
}
