#include "platform/headless/native_path.h"

#include "platform/headless/fault_injection.h"

#include <algorithm>
#include <cstdint>
#include <exception>

namespace fs = std::filesystem;

constexpr bool kIsWide = sizeof(fs::path::value_type) > 1;  // the machine's paths are UTF-16 with `\`
constexpr wchar_t kReplacement = L'\xFFFD';

static bool IsNameUnit(wchar_t c) {
    if (c == 0) return false;
    if constexpr (sizeof(wchar_t) == 2) return true;
    const auto unit = static_cast<uint32_t>(c);
    return unit <= 0x10FFFF && (unit < 0xD800 || unit > 0xDFFF);
}

// For a name that is not valid in the machine's encoding: its ASCII part.
static std::wstring PlainPart(const fs::path& path) {
    std::wstring text;
    for (const auto c : path.native()) {
        const bool isPlain = c > 0 && c < 0x7F;
        text += isPlain ? static_cast<wchar_t>(c) : kReplacement;
    }
    return text;
}

fs::path NativePath(const std::wstring& path) {
    fs::path native = TranslatedPath(path);
    if (path.empty() || native.is_absolute() || folderAnswers.workingFolder.empty()) return native;
    return TranslatedPath(folderAnswers.workingFolder) / native;
}

fs::path TranslatedPath(std::wstring path) {
    std::replace_if(
        path.begin(), path.end(), [](wchar_t c) { return !IsNameUnit(c); }, kReplacement);
    if constexpr (kIsWide) return fs::path(path);
    std::replace(path.begin(), path.end(), L'\\', L'/');
    // Characters become UTF-8; wide text would go through the locale.
    return fs::path(std::u32string(path.begin(), path.end()));
}

std::wstring ProgramPath(const fs::path& path) {
    std::wstring text;
    try {
        if constexpr (kIsWide) {
            text = path.wstring();
        } else {
            const std::u32string characters = path.u32string();
            text.assign(characters.begin(), characters.end());
        }
    } catch (const std::exception&) {
        text = PlainPart(path);
    }
    std::replace(text.begin(), text.end(), L'/', L'\\');
    return text;
}
