#include "scene/file_name.h"

#include "scene/typed_text.h"

#include <string_view>

constexpr std::wstring_view kForbiddenCharacters = L"\\/:*?\"<>|";

std::wstring SanitizeFileName(std::wstring name) {
    for (wchar_t& c : name) {
        if (kForbiddenCharacters.find(c) != std::wstring_view::npos) c = L'_';
    }
    return TrimSpaces(name);
}
