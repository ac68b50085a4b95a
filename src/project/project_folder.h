// Which project is open, and what a project folder holds.
#pragma once

#include <string>

// Makes `folder` the folder of the open project, and its Files folder the one that the Files panel shows.
void SetProjectFolder(const std::wstring& folder);

// Makes the folders that every project has if they are missing: Files, and in it "imported", "scripts" and
// "Scenes". False when one cannot be made.
bool MakeProjectFolders();

// Ends everything that belongs to the open project or the Hub: a playing game, gestures, entries, undo
// history. The caller replaces scene and paths. A program that started as the game stays the game.
void LeaveOpenProject();

void ShowTitle(const std::wstring& title);

// Shows the title of the open project in the window.
void ShowProjectTitle();

// The name for a copy or a build of the open project: the name of its folder, cleaned as a file name, or
// "ZelEngineProject" if nothing is left of it.
std::wstring ProjectFileName();

// The file of the open scene. Sets it to Scenes\Main.scene first if there is none.
const std::wstring& CurrentScenePath();
