#include "platform/windows/temporary_file.h"

#include "platform/windows/system_path.h"

#include <windows.h>

#include <new>
#include <string_view>

constexpr std::wstring_view kPrefix = L"~zel";
constexpr std::wstring_view kTemporary = L".tmp";
constexpr std::wstring_view kKept = L".whole";
constexpr size_t kLongestId = 10;  // digits of a process id

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

std::wstring TemporaryName(const std::wstring& target, int32_t attempt) {
    return NameBeside(target, attempt, kTemporary);
}

bool KeepTemporaryFile(const std::wstring& target, std::wstring& temporary) {
    for (int32_t attempt = 0; attempt < kTemporaryNames; ++attempt) {
        const std::wstring kept = SystemPath(NameBeside(target, attempt, kKept));
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

void RemoveLeftovers(const std::wstring& target) {
    try {
        RemoveFreeFiles(target);
    } catch (const std::bad_alloc&) {  // they stay for the next save
    }
}
