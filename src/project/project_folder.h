// Which project is open, and what a project folder holds.
#pragma once

#include <string>

// Makes `folder` the project folder, and its Files folder the one that the Files panel shows.
void SetProjectFolder(const std::wstring& folder);

// Makes the folders that every project has, where they are missing: Files, and in it "imported", "scripts"
// and "Scenes". False when one cannot be made.
bool MakeProjectFolders();

// Ends everything that belongs to the open project: Project Hub, a playing game, gestures and entries, undo
// history, selected asset. The caller replaces scene and paths. A program that started as the game stays the
// game.
void LeaveOpenProject();

void ShowTitle(const std::wstring& title);

// The window's title for the open project.
void ShowProjectTitle();

// The name for a copy or a build of the open project: the last component of its folder, cleaned as a file
// name, or "ZelEngineProject" if that leaves nothing.
std::wstring ProjectFileName();

// The file of the open scene. Sets it to Scenes\Main.scene first if there is none.
const std::wstring& CurrentScenePath();
