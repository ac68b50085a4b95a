// Texts as UTF-16 units: surrogate pairs, typing and erasing, and the spaces around a text.
#pragma once

#include <cstddef>
#include <string>

// The halves of a surrogate pair, in the order in which they stand.
constexpr bool IsFirstHalf(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsSecondHalf(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Appends the typed unit while `text` stays within `limit` units; control characters are dropped. The halves
// of a surrogate pair come one after the other: the first waits in `half` (0 when none waits), and both are
// appended together or not at all.
void AppendTyped(wchar_t unit, size_t limit, wchar_t& half, std::wstring& text);

// Removes the last character, both halves of a surrogate pair together. Nothing when empty.
void EraseLastCharacter(std::wstring& text);

// The text without the spaces at both ends. Tabs and other blanks stay.
std::wstring TrimSpaces(const std::wstring& text);
