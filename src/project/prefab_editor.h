// Editing a prefab on its own, in the place of the scene.
#pragma once

#include <string>

// Keeps scene, undo history, selection and camera aside and shows the prefab's objects instead. Another
// screen is left first. On failure, or when the user stays there, nothing else changes but the message. On
// success a game stops.
void OpenPrefabEditor(const std::wstring& path);

// Writes the objects shown into the prefab's file.
void SavePrefabEditor();

// Goes back to the Scene editor, after a question when there are unsaved changes. False when the prefab stays
// open: the user cancelled, or saving failed. Nothing to do on another screen.
bool ClosePrefabEditor();

// Makes a new prefab in the folder of the Files panel out of the selected object and all below it.
void SavePrefabFromSelection();
