#include "platform/windows/system_path.h"

#include <windows.h>

constexpr size_t kLongestOrdinaryPath = 247;  // characters: a folder leaves room for a short name in it

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
