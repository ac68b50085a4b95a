// Taking projects off the Hub's list, and off the disk.
#pragma once

#include <cstdint>
#include <string>

// Called once per frame of the Hub: asks the disk about the entries that LoadRecentProjects left open, one
// after the other and aside, so that nobody waits for a drive or server that does not answer. What is no
// project leaves the list; what cannot be reached stays, with the answer Silent. True when an answer has
// come.
bool CheckListedProjects();

// Asks about one entry now, after it could not be opened, and does the same with the answer.
void TakeOffListIfGone(const std::wstring& path);

// The folder stays. `index` is a valid index into EditorState::recentProjects, here and below.
void RemoveProjectFromList(int32_t index);

// Moves the project's folder into the recycle bin, after a question.
void DeleteProjectFromDisk(int32_t index);

// False when it is no folder, when the program runs from within it (the status message says so), or when the
// system refuses.
bool MoveFolderToRecycleBin(const std::wstring& path);
