// The scene's rasterization once more, in the plainest words: every pixel of every triangle by itself.
#pragma once

#include "render/raster/draw_mesh.h"
#include "render/raster/fill_triangle.h"

// Draws into the frame buffer what DrawMesh draws, without rows, spans, vectors or kept vertices.
void DrawMeshPlainly(const Mesh& mesh, const MeshDraw& draw);

// Fill what FillTriangle fills, from the definition alone: nothing of the program's own filling, tinting,
// lighting or sampling is called.
void FillTrianglePlainly(const std::array<ScreenCorner, 3>& corners, Pixel color);
void FillTrianglePlainly(const std::array<ScreenCorner, 3>& corners,
                         const std::array<TexturePoint, 3>& points, const TextureFill& fill);
