// Saving the open project: in its place, as a copy in another folder, and as a game to give away.
#pragma once

// Saves the scene to its file and a copy of it to the project file, and says how that went. Refused in Play
// mode, whose changes are not kept.
void SaveProject();

// Asks for a folder, copies the project into a new folder in it, and continues with the copy. If anything
// fails or the user cancels, the open project stays open and nothing new remains.
void SaveProjectAs();

// Asks for a folder and makes a new one in it with the project and a copy of the program, which is the game
// there. The open project stays as it is. If the project cannot be written or the user cancels, nothing new
// remains.
void BuildProject();
