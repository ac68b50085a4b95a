#include "base/text_units.h"

#include <cstdint>
#include <utility>

constexpr uint32_t kDeleteCharacter = 127;

static bool IsControl(wchar_t unit) {
    const auto code = static_cast<uint32_t>(unit);
    return code < 32 || code == kDeleteCharacter;
}

// The system reports a character beyond 16 bits as two units, one event each. The first half waits until the
// second one comes; anything else in between drops it, so a text never holds half of a character. The limit
// counts units, and a pair that would pass it is dropped as a whole.
void AppendTyped(wchar_t unit, size_t limit, wchar_t& half, std::wstring& text) {
    const wchar_t first = std::exchange(half, wchar_t{0});
    if (IsFirstHalf(unit)) {
        half = unit;
        return;
    }
    if (IsControl(unit) || (IsSecondHalf(unit) && first == 0)) return;

    std::wstring character(1, unit);
    if (IsSecondHalf(unit)) character.insert(0, 1, first);
    if (text.size() + character.size() <= limit) text += character;
}

void EraseLastCharacter(std::wstring& text) {
    if (text.empty()) return;
    const bool isPair = text.size() >= 2 && IsSecondHalf(text.back()) && IsFirstHalf(text[text.size() - 2]);
    text.resize(text.size() - (isPair ? 2 : 1));
}

std::wstring TrimSpaces(const std::wstring& text) {
    const size_t begin = text.find_first_not_of(L' ');
    if (begin == std::wstring::npos) return {};
    return text.substr(begin, text.find_last_not_of(L' ') - begin + 1);
}
