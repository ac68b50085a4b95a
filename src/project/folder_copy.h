// Listing, copying and removing folders with everything in them.
#pragma once

#include "platform/files.h"
#include "scene/long_work.h"

#include <string>
#include <vector>

// Everything below a folder, as paths relative to it. A folder stands before its content.
struct FolderTree {
    std::vector<std::wstring> folders{};
    std::vector<std::wstring> files{};
};

// Lists everything below `folder`. Links are left out, so that nothing outside is reached. False, with
// `tree` unchanged, when a folder cannot be listed.
bool ListFolderTree(const std::wstring& folder, FolderTree& tree);

// Copies `from` with everything in it to `to`. `to` may lie in `from`: only what was there before is copied.
// `work` counts the files. False when anything could not be listed, made or copied, or the work was
// cancelled; if `to` did not exist before, it is removed again.
bool CopyFolder(const std::wstring& from, const std::wstring& to, LongWork& work);

// Copies a file to a free path. False when that fails or `goesOn` ends it; nothing of the copy remains.
bool CopyToFreePath(const std::wstring& from, const std::wstring& to, const CopyGoesOn& goesOn);

// Removes a folder with everything in it, read-only files included, as far as the disk allows. A folder that
// holds a link stays.
void RemoveFolderTree(const std::wstring& folder);

// `name` in `parent`; if it exists, the first free one of name_01 .. name_99; name_New if all of them exist.
// Makes nothing.
std::wstring MakeUniqueFolder(const std::wstring& parent, const std::wstring& name);
