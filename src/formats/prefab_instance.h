// Placing a prefab in the open scene: a copy of its objects, behind those that are there.
#pragma once

#include "base/vec3.h"

#include <cstdint>
#include <string>

// For the user: one undo step, and the root becomes the selection. It becomes a child of `parent`, at its
// parent's place; when `parent` names no object, a root 4 units before the editor's camera. It is named after
// the file. A file without objects adds nothing, but is a step and a success. False, with a message, when the
// file cannot be read.
bool InstantiatePrefab(const std::wstring& path, int32_t parent);

// For a running game: the root stands at `position`, without an undo step, and the selection stays. False,
// with a message, when the file cannot be read; a success says nothing.
bool SpawnPrefab(const std::wstring& path, Vec3 position);
