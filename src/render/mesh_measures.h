// What drawing asks of a mesh again and again, found out once.
#pragma once

#include "state/mesh.h"

// To be called when a mesh is complete.
void MeasureMesh(Mesh& mesh);

// Of a mesh with vertices.
MeshBounds BoundsOf(const Mesh& mesh);
