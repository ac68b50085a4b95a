#include "platform/windows/recycle_bin.h"

#include "platform/windows/file_calls.h"
#include "platform/windows/system_library.h"

#include <shellapi.h>

#include <string_view>
#include <vector>

constexpr uint64_t kMegabyte = 1'048'576;
constexpr wchar_t kVolumes[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\BitBucket\\Volume\\";
constexpr wchar_t kRules[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer";

// Links count as nothing: the bin takes the link and not what it leads to.
static uint64_t BytesIn(const std::wstring& folder) {
    uint64_t bytes = 0;
    std::vector<std::wstring> waiting{folder};
    while (!waiting.empty()) {
        const std::wstring current = std::move(waiting.back());
        waiting.pop_back();
        WIN32_FIND_DATAW found{};
        const HANDLE search = FindFirstFileW(SystemPath(current + L"\\*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) continue;
        do {
            const bool isFolder = found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY;
            const bool isLink = found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT;
            if (!isFolder) bytes += uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
            if (isFolder && !isLink && !IsItselfOrParent(found.cFileName))
                waiting.push_back(current + L"\\" + found.cFileName);
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    return bytes;
}

// A number of the user's settings. False when there is none.
static bool ReadSetting(const std::wstring& key, const wchar_t* name, DWORD& value) {
    LONG(WINAPI * getValue)(HKEY, LPCWSTR, LPCWSTR, DWORD, LPDWORD, PVOID, LPDWORD) = nullptr;
    FindFunction(LoadSystemLibrary(L"advapi32.dll"), "RegGetValueW", getValue);
    DWORD size = sizeof value;
    return getValue && getValue(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value,
                                &size) == ERROR_SUCCESS;
}

// The settings of the bin of one volume lie under the volume's number, "{...}".
static void ReadBinSettings(const std::wstring& root, RecycleFacts& facts) {
    DWORD value = 0;
    if (ReadSetting(kRules, L"NoRecycleFiles", value)) facts.isSwitchedOff = value != 0;

    wchar_t volume[64] = {};
    if (!GetVolumeNameForVolumeMountPointW(root.c_str(), volume, 64)) return;
    const std::wstring_view name = volume;
    const size_t begin = name.find(L'{'), end = name.find(L'}');
    if (begin == std::wstring_view::npos || end == std::wstring_view::npos) return;
    const std::wstring key = kVolumes + std::wstring(name.substr(begin, end + 1 - begin));
    if (ReadSetting(key, L"NukeOnDelete", value) && value != 0) facts.isSwitchedOff = true;
    if (ReadSetting(key, L"MaxCapacity", value)) facts.largestBytes = value * kMegabyte;
}

// Whether the bin would really take the folder has to be known beforehand: a folder that is too large, or on
// a drive without a bin, is deleted for good by the same call, and that is not what the user agreed to.
RecycleFacts FindRecycleFacts(const std::wstring& folder) {
    RecycleFacts facts;
    std::wstring root(folder.size() + 2, L'\0');
    if (!GetVolumePathNameW(folder.c_str(), root.data(), static_cast<DWORD>(root.size()))) return facts;
    root.resize(root.find(L'\0'));

    facts.driveKind = GetDriveTypeW(root.c_str());
    SHQUERYRBINFO content{.cbSize = sizeof content};
    facts.binAnswers = SUCCEEDED(SHQueryRecycleBinW(root.c_str(), &content));
    ReadBinSettings(root, facts);
    facts.folderBytes = BytesIn(folder);
    return facts;
}
