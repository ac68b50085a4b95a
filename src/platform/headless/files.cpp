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
// `root` and the components of `rest` behind it, with "." and ".." resolved: nothing leads above the root.
// Not std::filesystem's own, which can lose a component when memory fails, and gives another path without a
// word.
static std::wstring Resolved(std::wstring_view root, std::wstring_view rest) {
    std::wstring full(root);
    for (size_t begin = 0; begin < rest.size();) {
        const size_t end = std::min(rest.find_first_of(L"\\/", begin), rest.size());
        const std::wstring_view component = rest.substr(begin, end - begin);
        begin = end + 1;
        if (component == L"..") {
            full.resize(std::max(
                full.find_last_of(L'\\') == std::wstring::npos ? 0 : full.find_last_of(L'\\'), root.size()));
        } else if (!component.empty() && component != L".") {
            if (full.empty() || full.back() != L'\\') full += L'\\';
            full += component;
        }
    }
    const bool isFolder = full.size() == root.size() || IsSeparator(rest.back());
    if (isFolder && (full.empty() || full.back() != L'\\')) full += L'\\';
    return full;
}

std::wstring AbsolutePath(const std::wstring& path) {
    if (path.empty()) return path;
    std::wstring whole = path;
    if (!IsOnServer(path) && !HasDrive(path)) {
        std::error_code error;
        whole = ProgramPath(fs::absolute(NativePath(path), error));
        if (error) return path;
    }
    const size_t root = IsOnServer(whole) || HasDrive(whole) ? 2 : 0;
    std::wstring full = Resolved(whole.substr(0, root), whole.substr(root));
    return full.size() > kLongestFullPath ? path : full;
}
