// Creating and opening projects, and starting as the game of one.
#pragma once

#include <string>

// Asks for a folder and creates a project in a new one below it: the default scene, with its samples unless
// `empty`, a script for a player, and the folders that every project has. The folder is new unless all
// hundred names are taken. If the project cannot be written, the open one stays.
void CreateProject(bool empty);

// Asks for a folder and opens the project in it; its Files folder may be chosen too.
void OpenProjectDialog();

// The outcome of opening a project.
enum class Opening {
    Opened,
    NoProject,  // the folder holds none
    Refused,    // the user does not want to leave what is open
};

// Opens the project in `folder`. With any answer but Opened, what is open stays as it is. A project without
// a readable "project.zel" gets the default scene; a main scene that it already has is kept beside it under
// a new name.
Opening OpenProject(const std::wstring& folder);

// If a "project.zel" lies beside the executable, loads its project, starts playing and returns true. Called
// once, before the window opens. If the project cannot be read, the default scene plays.
bool DetectRuntimeProject();
