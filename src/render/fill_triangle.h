// Triangles on the screen.
#pragma once

#include "render/fill_rows.h"
#include "render/projection.h"

#include <array>

// Fill the pixels of the frame buffer's viewport whose centres lie inside, edges included, where the triangle
// is strictly nearer than what was drawn. Both windings are filled. Nothing without an area.
void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color);
void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill);

// The same for triangles of a mesh that have an area. The depths in their boxes must be prepared, and are
// changed afterwards: see depth_tiles.h.
void FillTriangles(const MeshFaces& mesh, const FlatFill& fill);
void FillTriangles(const MeshFaces& mesh, const TexturedFill& fill);
