// Models in Wavefront OBJ files, and how other files name a mesh of the library.
#pragma once

#include "state/mesh.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

// Reads a model, centred and scaled into the cube of edge 2 around the origin, with white vertices. Faces are
// cut into fans of triangles. A vertex line without three readable coordinates is ignored, and so are face
// indices that name no vertex read so far; a coordinate that is not finite is 0. Lines are read in
// pieces of 1023 bytes. False, with `mesh` as it was, when the file cannot be read, has no triangle, or
// memory does not suffice for it.
bool ReadObjFile(const std::wstring& path, Mesh& mesh);

// Indices into the mesh library by the full path of the model; -1 for one that cannot be loaded.
using KnownModels = std::unordered_map<std::wstring, int32_t>;

// The models that are in the mesh library now.
KnownModels ModelsInLibrary();

// The index of the model in the mesh library; a file that is there already is not read again. -1 when it
// cannot be loaded, with the status message saying so.
int32_t LoadObjIntoLibrary(const std::wstring& path);

// Like LoadObjIntoLibrary above, for many models in a row: `known` starts as ModelsInLibrary() and records
// each model that was loaded or failed, so that no file is read twice.
int32_t LoadObjIntoLibrary(const std::wstring& path, KnownModels& known);

// The index into the mesh library. A "file:" model is loaded if it is not there yet; -1 when it cannot be.
// Any other text gives the Cube: a damaged reference shows a cube instead of nothing.
int32_t MeshIndexFromReference(std::wstring_view reference);

// Like MeshIndexFromReference above, but reuses `known` between references.
int32_t MeshIndexFromReference(std::wstring_view reference, KnownModels& known);

// "file:" with the path relative to the project for an imported mesh; "builtin:Cube" for -1 and for every
// index that names no mesh.
std::wstring MeshReferenceFromIndex(int32_t meshIndex);
