#include "platform/folders.h"

#include <windows.h>

#include <knownfolders.h>
#include <objbase.h>
#include <shlobj.h>

constexpr DWORD kLongestPath = 32768;  // characters with the end: no path of the system is longer

// The call does not tell how much room it wants; a path that fills the buffer was cut.
std::wstring GetExecutablePath() {
    for (DWORD size = MAX_PATH; size <= kLongestPath; size *= 2) {
        std::wstring path(size, L'\0');
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), size);
        if (length == 0) return {};
        if (length == size) continue;  // cut off
        path.resize(length);
        return path;
    }
    return {};
}

std::wstring LocalDataFolder() {
    PWSTR found = nullptr;
    std::wstring path;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &found))) path = found;
    CoTaskMemFree(found);  // also after a failure
    return path;
}

std::wstring WorkingFolder() {
    std::wstring path(kLongestPath, L'\0');
    const DWORD length = GetCurrentDirectoryW(kLongestPath, path.data());
    path.resize(length < kLongestPath ? length : 0);
    return path;
}
