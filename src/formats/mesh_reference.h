// How files name a mesh: "builtin:" and a name, or "file:" and the path of a model.
#pragma once

#include "formats/obj_file.h"

#include <cstdint>
#include <string>
#include <string_view>

// The index into the mesh library. A "file:" model is loaded if it is not there yet; -1 when it cannot be.
// Any other text gives the Cube: a damaged reference shows a cube instead of nothing.
int32_t MeshIndexFromReference(std::wstring_view reference);

// The same for one of many references that are read in a row.
int32_t MeshIndexFromReference(std::wstring_view reference, KnownModels& known);

// "file:" with the path relative to the project for an imported mesh; "builtin:Cube" for -1 and for every
// index that names no mesh.
std::wstring MeshReferenceFromIndex(int32_t meshIndex);
