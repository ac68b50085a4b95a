// Every path that the program holds of the open project, in one place: state, libraries, objects.
#pragma once

#include <string>

// Points every path that is `from` or lies below it to the same place under `to`. These are the list of
// files and the folder shown, the open scene, Blueprint and prefab, the sources of models and textures, and
// what objects refer to, in the scene, the undo history, the clipboard and in scenes that are kept aside.
// Compares as IsAtOrBelow does.
void MoveStoredPaths(const std::wstring& from, const std::wstring& to);
