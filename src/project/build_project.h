// Building the game.
#pragma once

// Asks for a folder and writes a new one in it with a copy of the project and of this program as
// "ZelGame.exe", which plays it. The open project goes on as it was. A build that fails leaves nothing
// behind; only without the program it stays as a project.
void BuildProject();
