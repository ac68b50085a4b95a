// Comparing text without regard to case, as the system compares file names: unit by unit, the same for every
// user and in every language.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Turns each unit into its capital letter. A letter counts only if it is also the small letter of that
// capital: the dotless i does not become I, nor the final sigma a capital sigma. The length stays, and so do
// surrogates.
std::wstring UpperCase(std::wstring text);

// Below 0, 0 or above 0, by the UTF-16 units of the capital letters.
int32_t CompareWithoutCase(std::wstring_view a, std::wstring_view b);

bool SameWithoutCase(std::wstring_view a, std::wstring_view b);

// The order of names in a list: without regard to case; by their units if they differ in case only.
bool NameComesBefore(std::wstring_view a, std::wstring_view b);
