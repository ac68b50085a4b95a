// Copying folders with all that is in them.
#pragma once

#include "platform/files.h"
#include "scene/long_work.h"

#include <string>
#include <vector>

// What lies below a folder, as paths relative to it. A folder stands before what is in it.
struct FolderTree {
    std::vector<std::wstring> folders{};
    std::vector<std::wstring> files{};
};

// Lists everything below `folder`. Links to files and folders are left out, so that nothing outside is
// reached. False, with `tree` unchanged, when a folder cannot be listed.
bool ListFolderTree(const std::wstring& folder, FolderTree& tree);

// Copies `from` with everything in it to `to`, which is made. `to` may lie in `from`: what is copied is what
// stood there before. `work` counts the files. False when anything could not be listed, made or copied, or
// the work was cancelled; a new folder is then removed again.
bool CopyFolder(const std::wstring& from, const std::wstring& to, LongWork& work);

// Copies a file to a path that is free. False when that fails or `goesOn` ends it; no part of it remains.
bool CopyToFreePath(const std::wstring& from, const std::wstring& to, const CopyGoesOn& goesOn);

// Removes a folder with everything in it, read-only files too, as far as it lets itself be removed. A folder
// with a link in it stays.
void RemoveFolderTree(const std::wstring& folder);

// `name` in `parent`, or where something of that name exists the first free one of name_01 .. name_99;
// name_New when all of them exist.
std::wstring MakeUniqueFolder(const std::wstring& parent, const std::wstring& name);
