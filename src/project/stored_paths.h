// Every path that the program holds of the open project, in one place: state, libraries, objects.
#pragma once

#include <string>

// Points every path that is `from` or lies below it to the same place under `to`: the Files panel's folder,
// the open scene, Blueprint and prefab, with its name, the sources of models and textures, and what objects
// refer to, also in the undo history, the clipboard and whatever is kept aside. Compared as IsAtOrBelow does.
void MoveStoredPaths(const std::wstring& from, const std::wstring& to);
