// Saving the open project.
#pragma once

// True, with a message, while a game plays in the editor: its changes are not kept.
bool RefuseSaveInPlayMode();

// Saves the scene into its file and a copy of it into the project file, and says how that went. Refused in
// Play mode, whose changes are not kept.
void SaveProject();
