// Scene files: a header line, then one object line per object of the scene.
#pragma once

#include "state/editor_state.h"

#include <string>

// Writes the open scene, and makes the folder of `path` first. False, with the old file as it was, when it
// cannot be written.
bool SaveScene(const std::wstring& path);

// True when the objects of the open scene are those that were last loaded or saved, whatever its file looks
// like.
bool SceneIsSaved();

// Makes the open scene the one that was last saved, as saving and loading do.
void MarkSceneSaved();

// Replaces the open scene, the mesh library and the textures by what the file names; a file without objects
// gives the default scene with its samples. Lines that store no object are skipped, the header among them.
// The default scene's selection stays, limited to the objects there. False, with the old scene as it was,
// when the file cannot be read or memory does not suffice for it.
bool LoadScene(const std::wstring& path);

// Like LoadScene, and hands out the content that it replaced. `replaced` is unchanged on failure.
bool LoadScene(const std::wstring& path, SceneContent& replaced);
