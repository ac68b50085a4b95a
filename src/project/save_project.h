// Saving the open project: where it is, as a copy under another folder, and as a game to be given away.
#pragma once

// Saves the scene into its file and a copy of it into the project file, and says how that went. Refused in
// Play mode, whose changes are not kept.
void SaveProject();

// Asks for a folder, copies the project into a new one in it, and goes on with the copy. When anything fails,
// or the user cancels the copying, the open project stays the one that it was and nothing new remains.
void SaveProjectAs();

// Asks for a folder and makes a new one in it that holds the project and a copy of the program, which is the
// game there. The open project stays as it is. When the project cannot be written, or the user cancels,
// nothing new remains.
void BuildProject();
