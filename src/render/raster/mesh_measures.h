// What drawing asks of a mesh again and again, found out once.
#pragma once

#include "state/mesh.h"

// To be called when a mesh is complete. From then on it has an identity, which its copies share.
void MeasureMesh(Mesh& mesh);

// Of a mesh with vertices.
MeshBounds BoundsOf(const Mesh& mesh);
