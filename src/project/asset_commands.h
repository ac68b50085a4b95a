// What a user does with the files and folders of the project: opening, renaming, duplicating, deleting,
// making new ones, and taking in files from outside. An index that names no entry of the list does nothing.
#pragma once

#include <cstdint>
#include <span>
#include <string>

// Shows the parent of the folder that the Files panel shows, down to the project's Files folder.
void FilesGoUp();

// Shows a folder, opens a scene, a Blueprint or a prefab in its editor, and anything else with the system.
void OpenAsset(int32_t index);

// Gives a new name within the same folder, and lets everything follow that refers to the old one. A file
// keeps its extension when `typed` has none; another one makes it a file of another kind. `typed` has no
// forbidden characters.
void RenameAsset(int32_t index, const std::wstring& typed);

// Copies a file beside itself, or makes an empty folder beside a folder.
void DuplicateAsset(int32_t index);

// Deletes a file, or a folder that is empty. The entry leaves the list in any case.
void DeleteAsset(int32_t index);

// Each makes one and says so, or says that it could not be made.
void CreateSceneAsset();
void CreateScriptAsset();
void CreateBlueprintAsset();
void CreateFolderAsset();

// Copies files into the folder that the Files panel shows, over files of the same name; models are placed in
// the scene too, where it is shown. Folders, and what cannot be copied, are not counted in the message.
void ImportDroppedFiles(std::span<const std::wstring> paths);
