#include "platform/windows/file_calls.h"

#include <algorithm>
#include <new>
#include <stdexcept>

constexpr size_t kLongestOrdinaryPath = 247;     // characters: a folder leaves room for a short name in it
constexpr size_t kPieceBytes = size_t{1} << 26;  // one call's share: a call counts in 32 bits
constexpr DWORD kPauses[] = {10, 20, 40, 60, 80, 90};  // milliseconds between one try and the next

static std::wstring FullPath(const std::wstring& path) {
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (size == 0) return {};
    std::wstring full(size, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), size, full.data(), nullptr);
    full.resize(length < size ? length : 0);
    return full;
}

std::wstring SystemPath(const std::wstring& path) {
    const std::wstring full = FullPath(path);
    if (full.size() <= kLongestOrdinaryPath) return path;
    if (full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) return path;
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

// False when there is no memory for a file of that size.
static bool Reserve(std::string& bytes, size_t size) {
    try {
        bytes.resize(size);
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
    return true;
}

bool ReadAllBytes(HANDLE file, std::string& bytes) {
    bytes.clear();
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size) || !Reserve(bytes, static_cast<size_t>(size.QuadPart))) return false;

    size_t filled = 0;
    while (filled < bytes.size()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size() - filled, kPieceBytes));
        DWORD got = 0;
        if (!ReadFile(file, bytes.data() + filled, wanted, &got, nullptr)) {
            bytes.clear();
            return false;
        }
        if (got == 0) break;  // another program cut the file short meanwhile
        filled += got;
    }
    bytes.resize(filled);
    return true;
}

bool WriteAllBytes(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kPieceBytes));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), wanted, &written, nullptr) || written == 0) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

bool FlushToDisk(HANDLE file) { return FlushFileBuffers(file) || IsUnknownToFileSystem(GetLastError()); }

// Makes the call until it succeeds or fails for good. It returns false and sets the last error when it fails.
template <typename Call>
static bool TryAgain(Call call) {
    for (const DWORD pause : kPauses) {
        if (call()) return true;
        if (!MayPass(GetLastError())) return false;
        Sleep(pause);
    }
    return call();
}

bool RenameOver(const std::wstring& from, const std::wstring& target) {
    constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return TryAgain([&] { return MoveFileExW(from.c_str(), target.c_str(), kFlags) != 0; });
}

bool RemoveHeldFile(const std::wstring& path) {
    return TryAgain([&path] { return DeleteFileW(path.c_str()) != 0; });
}
