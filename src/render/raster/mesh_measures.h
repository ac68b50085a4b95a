// Measures a mesh once, so that no frame has to.
#pragma once

#include "state/mesh.h"

// Call it when a mesh is complete. From then on the mesh has an identity, which its copies share.
void MeasureMesh(Mesh& mesh);

// The mesh must have vertices.
MeshBounds BoundsOf(const Mesh& mesh);
