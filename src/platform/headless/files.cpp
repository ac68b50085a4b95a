#include "platform/files.h"

#include "base/path_text.h"
#include "platform/headless/fault_injection.h"
#include "platform/headless/native_path.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

constexpr size_t kLongestFullPath = 259;  // units
constexpr fs::perms kWritable = fs::perms::owner_write;

// By the permission itself: whoever runs the tests may be allowed more.
static bool IsReadOnly(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::exists(status) && (status.permissions() & kWritable) == fs::perms::none;
}

// The order of UTF-16 units also where a unit is a whole character: those beyond 0xFFFF come before
// 0xE000 .. 0xFFFF.
static bool ComesBefore(const FolderEntry& a, const FolderEntry& b) {
    const auto key = [](wchar_t c) -> uint32_t {
        const auto unit = static_cast<uint32_t>(c);
        if constexpr (sizeof(wchar_t) == 2) return unit;
        return unit >= 0xE000 && unit <= 0xFFFF ? unit + 0x200000 : unit;
    };
    return std::lexicographical_compare(a.name.begin(), a.name.end(), b.name.begin(), b.name.end(),
                                        [key](wchar_t x, wchar_t y) { return key(x) < key(y); });
}

static bool IsOnServer(const std::wstring& path) {
    const std::wstring root = RootOf(path);
    return root.size() > 1 && IsSeparator(root.front());
}

bool MayAnswerLate(const std::wstring& path) {
    return IsOnServer(path) || IsAtOrBelow(path, fileFaults.lateDrive);
}

PathKind KindOfPath(const std::wstring& path) {
    if (path.empty()) return PathKind::Missing;
    if (MayAnswerLate(path)) ++fileFaults.lateQuestions;
    if (!TakeFileStep()) return PathKind::Unknown;
    std::error_code error;
    const fs::file_status status = fs::status(NativePath(path), error);
    if (fs::is_directory(status)) return PathKind::Folder;
    if (fs::exists(status)) return PathKind::File;
    return error == std::errc::permission_denied ? PathKind::Unknown : PathKind::Missing;
}

bool ReadFileFacts(const std::wstring& path, FileFacts& facts) {
    if (path.empty() || !TakeFileStep()) return false;
    std::error_code error;
    const auto bytes = fs::file_size(NativePath(path), error);
    if (error) return false;
    const auto written = fs::last_write_time(NativePath(path), error);
    if (error) return false;
    facts = {static_cast<int64_t>(bytes), static_cast<int64_t>(written.time_since_epoch().count())};
    return true;
}

bool RenamePath(const std::wstring& from, const std::wstring& to) {
    if (from.empty() || to.empty() || KindOfPath(to) != PathKind::Missing || !TakeFileStep()) return false;
    std::error_code error;
    fs::rename(NativePath(from), NativePath(to), error);
    return !error;
}

bool RemoveFile(const std::wstring& path) {
    if (KindOfPath(path) != PathKind::File || !TakeFileStep() || IsReadOnly(NativePath(path))) return false;
    std::error_code error;
    return fs::remove(NativePath(path), error) && !error;
}

bool RemoveEmptyFolder(const std::wstring& path) {
    if (KindOfPath(path) != PathKind::Folder || !TakeFileStep()) return false;
    std::error_code error;
    return fs::remove(NativePath(path), error) && !error;
}

bool MakeWritable(const std::wstring& path) {
    if (path.empty() || !TakeFileStep() || !IsReadOnly(NativePath(path))) return false;
    std::error_code error;
    fs::permissions(NativePath(path), kWritable, fs::perm_options::add, error);
    return !error;
}

bool MakeFolders(const std::wstring& path) {
    if (path.empty() || !TakeFileStep()) return false;
    std::error_code error;
    fs::create_directories(NativePath(path), error);
    return fs::is_directory(NativePath(path), error);
}

bool ListFolder(const std::wstring& path, std::vector<FolderEntry>& entries) {
    entries.clear();
    if (path.empty() || !TakeFileStep()) return false;
    std::vector<FolderEntry> found;
    try {  // what reports by an error code may not throw, and ends the program where there is no memory
        for (const fs::directory_entry& entry : fs::directory_iterator(NativePath(path))) {
            std::error_code ignored;
            found.push_back({ProgramPath(entry.path().filename()), entry.is_directory(ignored),
                             entry.is_symlink(ignored)});
        }
    } catch (const fs::filesystem_error&) {
        return false;
    }
    std::ranges::sort(found, ComesBefore);
    entries = std::move(found);
    return true;
}

// Paths of a drive ("C:\...") are full already, as they are on the program's own system.
static bool HasDrive(const std::wstring& path) {
    return path.size() >= 3 && path[1] == L':' && IsSeparator(path[2]);
}

// Nothing leads above the root, that of a drive included.
static std::wstring NormalPath(const std::wstring& path, std::error_code& error) {
    if (IsOnServer(path)) return L'\\' + ProgramPath(TranslatedPath(path.substr(1)).lexically_normal());
    if (!HasDrive(path)) return ProgramPath(fs::absolute(NativePath(path), error).lexically_normal());
    return path.substr(0, 2) + ProgramPath(TranslatedPath(path.substr(2)).lexically_normal());
}

std::wstring AbsolutePath(const std::wstring& path) {
    if (path.empty()) return path;
    std::error_code error;
    std::wstring full = NormalPath(path, error);
    if (error) return path;
    // What ends with "." or ".." has become a folder with a separator behind it.
    if (!IsSeparator(path.back()) && full.size() > 3 && full.back() == L'\\') full.pop_back();
    return full.size() > kLongestFullPath ? path : full;
}
