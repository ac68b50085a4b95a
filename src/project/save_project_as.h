// Saving the open project into a folder of its own.
#pragma once

// Asks for a folder, copies the project into a new one in it, and goes on with the copy. When anything fails,
// the open project stays the one that it was and nothing new remains.
void SaveProjectAs();
