// The scene's rasterization once more, in the plainest words: every pixel of every triangle by itself.
#pragma once

#include "render/draw_mesh.h"

// Draws into the frame buffer what DrawMesh draws, without rows, spans, vectors or kept vertices.
void DrawMeshPlainly(const Mesh& mesh, const MeshDraw& draw);
