// Creating and opening projects, and starting as the game of one.
#pragma once

#include <string>

// Asks for a folder and makes a new project in it: the default scene with its samples, or for the empty
// template without them, a script for a player, and the folders that every project has. The
// folder is a new one while one of its hundred names is free. When it cannot be written, the project that was
// open stays.
void CreateProject(bool empty);

// Asks for a folder and opens the project in it, also from its Files folder.
void OpenProjectDialog();

// What has become of a project that was to be opened.
enum class Opening {
    Opened,
    NoProject,  // the folder holds none
    Refused,    // the user does not want to leave what is open
};

// Opens the project in `folder`. What is open stays as it was unless it has been opened. A project without a
// readable "project.zel" gets the default scene; a main scene that it already has is kept beside it under a
// new name.
Opening OpenProject(const std::wstring& folder);

// True when a "project.zel" lies beside the executable: its project is then loaded and plays. To be called
// once, before the window opens. A project that cannot be read plays the scene that is there.
bool DetectRuntimeProject();
