// New files and folders of the project, made in the folder that the Files panel shows.
#pragma once

#include <string>

// Each makes one and says so, or says that it could not be made.
void CreateSceneAsset();
void CreateScriptAsset();
void CreateBlueprintAsset();
void CreateFolderAsset();

// `name` in `folder` with the first free number from _01 on, and the extension. Empty when none is free, so
// that nothing can be made there.
std::wstring FirstFreePath(const std::wstring& folder, const std::wstring& name,
                           const std::wstring& extension);

// The name as it is where it is free, else with the first free number.
std::wstring FreePath(const std::wstring& folder, const std::wstring& name, const std::wstring& extension);

// Lists what now stands at `path` in the Files panel and selects it. What stood there in upper or lower case
// keeps its entry.
void AddNewAsset(const std::wstring& path, bool isFolder);
