// Where the program stands, and where its user's data belongs.
#pragma once

#include <string>

// Full path of the running executable. Empty when it cannot be told.
std::wstring GetExecutablePath();

// The per-user folder for local application data. Empty when it cannot be told.
std::wstring LocalDataFolder();

// The folder of the process that relative paths start from.
std::wstring WorkingFolder();
