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

// The same for a triangle that has an area and covers nothing of the viewport outside `box`, which is not
// empty and lies inside it. The depths there must be prepared, and are changed afterwards: see depth_tiles.h.
void FillTriangle(const std::array<ScreenCorner, 3>& corners, const Rect& box, const FlatFill& fill);
void FillTriangle(const std::array<ScreenCorner, 3>& corners, const Rect& box,
                  const std::array<TexturePoint, 3>& points, const TextureFill& fill);
void FillTriangles(const FlatFaces& flat);
