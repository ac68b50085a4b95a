// The list of all files and folders of the open project.
#pragma once

#include "state/asset_entry.h"

#include <string>

// The kind of a file by its extension, in any case.
AssetKind AssetKindOf(const std::wstring& path);

// The entry for a file or folder at `path`.
AssetEntry AssetEntryFor(const std::wstring& path, bool isFolder);

// Makes the project's folders if they are missing, and lists everything in its Files folder: each folder
// before its content, and the content of one folder by name. Links are left out. The selected file stays
// selected if it is still there. Ends a drag of a file and closes the menu of a file.
void RefreshAssetList();

// Adds what now stands at `path` to the list and selects it. An entry whose path differs in case only is
// kept and selected.
void AddNewAsset(const std::wstring& path, bool isFolder);

// Lists the files anew if a save has put other versions beside its file; see formats/other_writers.h.
void ListOtherVersions();
