// Prefab files, and placing a prefab in the open scene. A file is a header line, then the object lines of one
// tree, its root first.
#pragma once

#include "base/vec3.h"
#include "state/game_object.h"

#include <cstdint>
#include <span>
#include <string>

// Reads the objects of a prefab as a scene's are read, and loads the models and images that they name. A file
// without objects gives none. False, with no objects, when the file cannot be read or memory does not
// suffice.
bool LoadPrefab(const std::wstring& path, Scene& objects);

// Writes a prefab, and makes the folder of `path` first. A parent index that names none of the objects is
// written as -1. False, with the old file as it was, when it cannot be written.
bool WritePrefab(const std::wstring& path, std::span<const GameObject> objects);

// An object of a scene and all below it, as a prefab holds them: the root first and without a parent, each
// object followed by its children in scene order, parent indices into this list. `root` names an object.
Scene CollectPrefab(std::span<const GameObject> scene, int32_t root);

// The same objects as a prefab holds them: every object followed by its children, the roots in their order. A
// parent index outside the list makes a root. A list in that order is unchanged. Objects in a cycle of
// parents come last.
Scene InPrefabOrder(std::span<const GameObject> list);

// For the user: one undo step, and the root becomes the selection. It becomes a child of `parent`, at its
// parent's place; when `parent` names no object, a root 4 units before the editor's camera. It is named after
// the file. A file without objects adds nothing, but is a step and a success. False, with a message, when the
// file cannot be read.
bool InstantiatePrefab(const std::wstring& path, int32_t parent);

// For a running game: the root stands at `position`, without an undo step, and the selection stays. False,
// with a message, when the file cannot be read; a success says nothing.
bool SpawnPrefab(const std::wstring& path, Vec3 position);
