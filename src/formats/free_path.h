// Names that are free for a new file or folder.
#pragma once

#include <cstdint>
#include <string>

// `name` in `folder` with the first free number from _01 or `first` on, and the extension. Empty when none is
// free, so that nothing can be made there.
std::wstring FirstFreePath(const std::wstring& folder, const std::wstring& name,
                           const std::wstring& extension, int32_t first = 1);

// The name as it is where it is free, else with the first free number.
std::wstring FreePath(const std::wstring& folder, const std::wstring& name, const std::wstring& extension);
