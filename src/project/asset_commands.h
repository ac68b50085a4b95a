// What a user does with the files and folders of the project: open, rename, duplicate, delete, create, and
// import from outside. An index that names no entry of the list does nothing.
#pragma once

#include <cstdint>
#include <span>
#include <string>

// Shows the parent of the folder that the Files panel shows, down to the project's Files folder.
void FilesGoUp();

// Shows a folder, opens a scene, a Blueprint or a prefab in its editor, and anything else with the system.
void OpenAsset(int32_t index);

// Renames within the same folder, and points everything that refers to the old name to the new one. A file
// keeps its extension if `typed` has none; another extension makes it a file of another kind. `typed` has no
// forbidden characters.
void RenameAsset(int32_t index, const std::wstring& typed);

// Copies a file beside itself; for a folder makes an empty one beside it.
void DuplicateAsset(int32_t index);

// Deletes a file, or a folder that is empty. The entry leaves the list in any case.
void DeleteAsset(int32_t index);

// Each creates one and says so, or says that it could not be created.
void CreateSceneAsset();
void CreateScriptAsset();
void CreateBlueprintAsset();
void CreateFolderAsset();

// Copies files into the folder that the Files panel shows, over files of the same name. Models are also
// placed in the scene or prefab that is shown. Folders and files that cannot be copied are not counted in
// the message.
void ImportDroppedFiles(std::span<const std::wstring> paths);
