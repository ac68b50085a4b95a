// Which project is open.
#pragma once

#include <string>

// Makes `folder` the project folder, and its Files folder the one that the Files panel shows.
void SetProjectFolder(const std::wstring& folder);
