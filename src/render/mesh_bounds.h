// Whether a whole mesh lies beside the view.
#pragma once

#include "render/mesh.h"
#include "render/mesh_vertices.h"

// True when it is certain that no face of the mesh shows a pixel, because all of it lies beyond one side of
// the viewport or behind the eye. Says so with a wide margin: an eighth of the viewport.
bool IsBesideView(const Mesh& mesh, const VertexTransform& transform);
