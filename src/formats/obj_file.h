// Models in Wavefront OBJ files: their vertices and faces.
#pragma once

#include "state/mesh.h"

#include <cstdint>
#include <string>
#include <unordered_map>

// Reads a model, centred and scaled into the cube of edge 2 around the origin, with white vertices. Faces are
// cut into fans of triangles. A vertex line whose three coordinates cannot be read counts as absent, and so
// do face indices that name no vertex read so far; a coordinate that is not finite is 0. Lines are read in
// pieces of 1023 bytes. False, with `mesh` as it was, when the file cannot be read, has no triangle, or
// memory does not suffice for it.
bool ReadObjFile(const std::wstring& path, Mesh& mesh);

// Indices into the mesh library by the full path of the model; -1 for one that cannot be loaded.
using KnownModels = std::unordered_map<std::wstring, int32_t>;

// Those in the mesh library now.
KnownModels ModelsInLibrary();

// The index of the model in the mesh library; a file that is there already is not read again. -1 when it
// cannot be loaded, with the status message saying so.
int32_t LoadObjIntoLibrary(const std::wstring& path);

// The same for one of many models that are loaded in a row: asks `known`, which began as ModelsInLibrary(),
// and remembers there what it has loaded and what cannot be, so that no file is read twice.
int32_t LoadObjIntoLibrary(const std::wstring& path, KnownModels& known);
