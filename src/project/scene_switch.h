// Leaving the open scene or screen for another one, with the questions that this needs, and opening another
// scene of the project.
#pragma once

#include <string>

// Asks whether to save the open scene, and saves it on Yes. False when the user cancelled or saving failed;
// the status message says which.
bool AskSaveBeforeSceneSwitch();

// Like AskSaveBeforeSceneSwitch, but asks only if the open scene has unsaved changes. Called before leaving
// for another project or the Project Hub.
bool AskSaveOfChangedScene();

// Opens a scene file; asks AskSaveBeforeSceneSwitch first unless it is the open one. A game stops before.
// Another scene empties the undo history; loading the open one again is one more step of it. On failure, or
// if the user cancels, the open scene stays.
void OpenSceneFile(const std::wstring& path);

// Goes back to the Scene editor: saves the changes of a Blueprint, asks about those of a prefab. False when
// the user stays there.
bool LeaveOtherScreens();
