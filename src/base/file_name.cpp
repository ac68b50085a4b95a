#include "base/file_name.h"

#include "base/letter_case.h"
#include "base/typed_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>

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
