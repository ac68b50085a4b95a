// What lies in a folder.
#pragma once

#include "platform/files.h"

#include <string>
#include <vector>

// Empty for a folder that cannot be listed.
inline std::vector<FolderEntry> EntriesOf(const std::wstring& folder) {
    std::vector<FolderEntry> entries;
    const bool isListed = ListFolder(folder, entries);
    return isListed ? entries : std::vector<FolderEntry>{};
}
