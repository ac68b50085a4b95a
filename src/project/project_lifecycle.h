// Creating and opening projects, and starting as the game of one.
#pragma once

#include <string>

// Asks for a folder and makes a new project in it: the default scene with its samples, or for the empty
// template without them, a script for a player, and the folders that every project has. The
// folder is new unless all hundred names are taken. If it cannot be written, the open project stays.
void CreateProject(bool empty);

// Asks for a folder and opens the project in it, also from its Files folder.
void OpenProjectDialog();

// The outcome of opening a project.
enum class Opening {
    Opened,
    NoProject,  // the folder holds none
    Refused,    // the user does not want to leave what is open
};

// Opens the project in `folder`. On any other answer than Opened, what is open stays as it is. A project
// without a readable "project.zel" gets the default scene; a main scene that it already has is kept beside it
// under a new name.
Opening OpenProject(const std::wstring& folder);

// True when a "project.zel" lies beside the executable: its project is then loaded and plays. To be called
// once, before the window opens. A project that cannot be read plays the scene that is there.
bool DetectRuntimeProject();
