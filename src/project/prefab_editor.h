// Editing a prefab on its own, in place of the scene.
#pragma once

#include <string>

// Puts scene, undo history, selection and camera aside and shows the objects of the prefab instead. Leaves
// another screen first. If the user stays there, or on failure, nothing changes but the message. On success
// a game stops.
void OpenPrefabEditor(const std::wstring& path);

// Writes the objects shown into the prefab's file.
void SavePrefabEditor();

// Goes back to the Scene editor, after a question if there are unsaved changes. False when the prefab stays
// open, because the user cancelled or saving failed. Does nothing on another screen.
bool ClosePrefabEditor();

// Writes the selected object and everything below it to a new prefab in the folder of the Files panel.
void SavePrefabFromSelection();
