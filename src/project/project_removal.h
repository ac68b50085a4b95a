// Taking projects off the Hub's list, and off the disk.
#pragma once

#include <cstdint>
#include <string>

// The folder stays. `index` is a valid index into EditorState::recentProjects, here and below.
void RemoveProjectFromList(int32_t index);

// Moves the project's folder into the recycle bin, after a question.
void DeleteProjectFromDisk(int32_t index);

// False when it is no folder, when the program runs from within it (the status message says so), or when the
// system refuses.
bool MoveFolderToRecycleBin(const std::wstring& path);
