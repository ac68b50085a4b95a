// Paths in the form that the system takes, and names as it lists them.
#pragma once

#include <string>
#include <string_view>

// `path` as it is, or, when its full form is too long for the system's ordinary calls, its full form with the
// prefix that lifts their limit.
std::wstring SystemPath(const std::wstring& path);

// What the system lists in every folder beside its entries.
inline bool IsItselfOrParent(std::wstring_view name) { return name == L"." || name == L".."; }
