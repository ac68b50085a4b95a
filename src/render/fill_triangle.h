// Triangles on the screen.
#pragma once

#include "render/fill_row.h"
#include "render/projection.h"

#include <array>

// Texture coordinates of a corner.
struct TexturePoint {
    float u = 0, v = 0;
};

// Fill the pixels of the frame buffer's viewport whose centres lie inside, edges included, where the triangle
// is strictly nearer than what was drawn. Both windings are filled. Nothing without an area.
void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color);
void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill);

// Where the edges of a triangle cross the rows.
struct ColumnBounds {
    std::array<double, 3> startX{}, startY{};  // where edge i begins, pixels
    std::array<double, 3> slope{};             // columns per row
    std::array<int32_t, 3> side{};  // 1: covered pixels lie right of the edge, -1: left, 0: it is level
};

ColumnBounds BoundColumns(const TriangleSetup& setup);

// The columns of a row that the triangle may cover, within left .. right (exclusive): at least every covered
// pixel, and little more. Empty when none can be.
struct ColumnRange {
    int32_t left = 0, right = 0;
};
ColumnRange CoveredColumns(const ColumnBounds& bounds, int32_t y, ColumnRange within);
