// Paths in the form that the system takes.
#pragma once

#include <string>

// `path` as it is, or, when its full form is too long for the system's ordinary calls, its full form with the
// prefix that lifts their limit.
std::wstring SystemPath(const std::wstring& path);
