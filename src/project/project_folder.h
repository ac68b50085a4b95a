// Which project is open, and what a project folder holds.
#pragma once

#include <string>

// Makes `folder` the project folder, and its Files folder the one that the Files panel shows.
void SetProjectFolder(const std::wstring& folder);

// Makes the folders that every project has, where they are missing: Files, and in it "imported", "scripts"
// and "Scenes". False when one cannot be made.
bool MakeProjectFolders();

// Leaves everything that belongs to the project that was open: Project Hub, a playing game, what the user was
// in the middle of, undo history, selected file. Scene and paths stay for the caller to replace. The program
// that started as the game stays it.
void LeaveOpenProject();

void ShowTitle(const std::wstring& title);

// The window's title for the open project.
void ShowProjectTitle();

// The name that a copy or a build of the open project is given: the last component of its folder as a file
// name, "ZelEngineProject" when nothing of it remains.
std::wstring ProjectFileName();

// The file of the open scene; Scenes\Main.scene becomes it when there is none.
const std::wstring& CurrentScenePath();
