#include "base/path_text.h"

#include "base/letter_case.h"
#include "base/text_units.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>

// Where the last component begins.
static size_t ComponentStart(std::wstring_view path) {
    const size_t separator = path.find_last_of(L"\\/");
    return separator == std::wstring_view::npos ? 0 : separator + 1;
}

// Where the extension begins; the path's length without one.
static size_t ExtensionStart(std::wstring_view path) {
    const size_t dot = path.find_last_of(L'.');
    if (dot == std::wstring_view::npos || dot < ComponentStart(path)) return path.size();
    return dot;
}

std::wstring LastComponent(std::wstring_view path) { return std::wstring(path.substr(ComponentStart(path))); }

std::wstring ParentFolder(std::wstring_view path) {
    const size_t start = ComponentStart(path);
    if (start == 0) return {};
    const size_t separator = start - 1;
    const bool isRoot = separator == 0 || path[separator - 1] == L':';
    return std::wstring(path.substr(0, isRoot ? start : separator));
}

// Where the root of a share ends: after the name of the server, the name of the share, and one separator.
static size_t ShareEnd(std::wstring_view path) {
    const size_t server = path.find_first_of(L"\\/", 2);
    if (server == std::wstring_view::npos) return path.size();
    const size_t share = path.find_first_of(L"\\/", server + 1);
    return share == std::wstring_view::npos ? path.size() : share + 1;
}

std::wstring RootOf(std::wstring_view path) {
    if (path.size() >= 3 && path[1] == L':' && IsSeparator(path[2])) return std::wstring(path.substr(0, 3));
    if (path.empty() || !IsSeparator(path[0])) return {};
    const bool isOnServer = path.size() >= 3 && IsSeparator(path[1]) && !IsSeparator(path[2]);
    return std::wstring(path.substr(0, isOnServer ? ShareEnd(path) : 1));
}

std::wstring FileExtension(std::wstring_view path) { return std::wstring(path.substr(ExtensionStart(path))); }

std::wstring NameWithoutExtension(std::wstring_view path) {
    const size_t start = ComponentStart(path);
    return std::wstring(path.substr(start, ExtensionStart(path) - start));
}

std::wstring JoinPath(std::wstring_view folder, std::wstring_view stored) {
    if (stored.empty()) return std::wstring(folder);
    std::wstring path(folder);
    if (!path.empty() && !IsSeparator(path.back())) path += L'\\';
    path += stored;
    return path;
}

std::wstring RelativeTo(std::wstring_view path, std::wstring_view folder) {
    if (path == folder) return {};
    const bool isBelow =
        path.size() > folder.size() && path.starts_with(folder) && IsSeparator(path[folder.size()]);
    return std::wstring(isBelow ? path.substr(folder.size() + 1) : path);
}

// Both sides are brought to one separator and compared without regard to case. A separator must follow the
// folder, so that "C:\Game2" is not below "C:\Game"; a root brings its own.
bool IsAtOrBelow(std::wstring_view path, std::wstring_view folder) {
    if (folder.empty() || path.size() < folder.size()) return false;
    const auto withOneSeparator = [](std::wstring_view text) {
        std::wstring name(text);
        std::ranges::replace(name, L'/', L'\\');
        return name;
    };
    if (!SameWithoutCase(withOneSeparator(path.substr(0, folder.size())), withOneSeparator(folder)))
        return false;
    return path.size() == folder.size() || IsSeparator(folder.back()) || IsSeparator(path[folder.size()]);
}

constexpr std::wstring_view kForbiddenCharacters = L"\\/:*?\"<>|";

constexpr std::wstring_view kDevices[] = {L"CON", L"PRN", L"AUX", L"NUL"};
constexpr std::wstring_view kNumberedDevices[] = {L"COM", L"LPT"};  // with a digit from 1 on

static bool IsDeviceName(const std::wstring& name) {
    const std::wstring stem = TrimSpaces(UpperCase(name.substr(0, name.find(L'.'))));
    if (std::ranges::find(kDevices, stem) != std::end(kDevices)) return true;
    const bool isNumbered = stem.size() == 4 && stem[3] >= L'1' && stem[3] <= L'9';
    return isNumbered && std::ranges::find(kNumberedDevices, stem.substr(0, 3)) != std::end(kNumberedDevices);
}

std::wstring SanitizeFileName(std::wstring name) {
    for (wchar_t& c : name) {
        if (kForbiddenCharacters.find(c) != std::wstring_view::npos) c = L'_';
    }
    return TrimSpaces(name);
}

bool IsUsableFileName(const std::wstring& name) {
    if (name.empty() || name.back() == L'.' || name.back() == L' ') return false;
    const auto isControl = [](wchar_t c) { return static_cast<uint32_t>(c) < 32; };
    return std::ranges::none_of(name, isControl) && !IsDeviceName(name);
}
