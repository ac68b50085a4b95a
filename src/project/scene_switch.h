// Leaving what is open for another screen or scene, and opening another scene of the project.
#pragma once

#include <string>

// Asks whether the open scene shall be saved first, and saves it on Yes. False when the switch must not
// happen: the user cancelled, or saving failed; the status message says which.
bool AskSaveBeforeSceneSwitch();

// The same where the objects of the open scene are not those last loaded or saved, before it is left for
// another project or the Project Hub. True without a question when nothing would be lost.
bool AskSaveOfChangedScene();

// Opens a scene file, after that question when it is not the open one. A game stops first. Another scene
// empties the undo history; loading the open one again is one more step of it. On failure, or when the user
// cancels, the open scene stays.
void OpenSceneFile(const std::wstring& path);

// Goes back to the Scene editor: a Blueprint with unsaved changes is saved, a prefab with unsaved changes is
// asked about. False when the user wants to stay there.
bool LeaveOtherScreens();
