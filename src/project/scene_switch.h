// Leaving what is open for another screen or scene, and opening another scene of the project.
#pragma once

#include <string>

// Asks whether to save the open scene first, and saves it on Yes. False when the user cancelled or saving
// failed; the status message says which.
bool AskSaveBeforeSceneSwitch();

// Like AskSaveBeforeSceneSwitch, but asks only when the open scene has unsaved changes. Called before it is
// left for another project or the Project Hub.
bool AskSaveOfChangedScene();

// Opens a scene file, after that question when it is not the open one. A game stops first. Another scene
// empties the undo history; loading the open one again is one more step of it. On failure, or when the user
// cancels, the open scene stays.
void OpenSceneFile(const std::wstring& path);

// Goes back to the Scene editor: a Blueprint with unsaved changes is saved, a prefab with unsaved changes is
// asked about. False when the user wants to stay there.
bool LeaveOtherScreens();
