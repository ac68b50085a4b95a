// Where the files of these sources lie.
#pragma once

#include <string>

// The path of a file or folder of the sources, "assets/light.png" for example.
std::wstring SourcePath(const std::wstring& path);
