// The file beside a target that a save goes into first, and what saves that were broken off have left of
// them.
#pragma once

#include <cstdint>
#include <string>

constexpr int32_t kTemporaryNames = 100;  // tried before giving up

// Holds a part of the new bytes, or all of them while the target is still the old file: always free to go.
// The name tells the process. Its length does not depend on the target's, so that a file with the longest
// possible name has room beside it too. `attempt` tells apart what would have the same name.
std::wstring TemporaryName(const std::wstring& target, int32_t attempt);

// Renames a complete temporary file, so that nobody takes it for a leftover while the target is written over:
// it may become the only whole file. False, with the file as it was, when that fails.
bool KeepTemporaryFile(const std::wstring& target, std::wstring& temporary);

// Removes the temporary files in the target's folder that belong to this process, which is not using any, or
// to none that runs.
void RemoveLeftovers(const std::wstring& target);
