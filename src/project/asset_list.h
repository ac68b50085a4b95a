// The list of all files and folders of the open project.
#pragma once

#include "state/asset_entry.h"

#include <string>

// By the extension, in upper or lower case. For files; folders have none.
AssetKind AssetKindOf(const std::wstring& path);

// A file or folder that stands at `path`.
AssetEntry AssetEntryFor(const std::wstring& path, bool isFolder);

// Makes the project's folders where they are missing and lists what lies in its Files folder, each folder
// before what is in it and everything in one folder by name. Links are left out. The selected file stays
// selected while it is there; a drag and a menu that are about a file end.
void RefreshAssetList();

// Lists what now stands at `path` in the Files panel and selects it. What stood there in upper or lower case
// keeps its entry.
void AddNewAsset(const std::wstring& path, bool isFolder);

// Lists the other versions that a save has put beside its file; see formats/other_writers.h.
void ListOtherVersions();
