// Text without regard to upper and lower case, as the system compares the names of its files: unit by unit,
// the same for every user and in every language.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Each unit as its capital letter. Only a letter that is the small letter of its capital has one here: the
// dotless i is no I, and the final sigma no sigma. Nothing changes in length, and surrogates stay.
std::wstring UpperCase(std::wstring text);

// Below 0, 0 or above 0: by the UTF-16 units of the capital letters.
int32_t CompareWithoutCase(std::wstring_view a, std::wstring_view b);

bool SameWithoutCase(std::wstring_view a, std::wstring_view b);

// The order of names in a list: without regard to case, and by their units where they differ in case only.
bool NameComesBefore(std::wstring_view a, std::wstring_view b);
