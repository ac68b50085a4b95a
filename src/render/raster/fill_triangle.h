// Single triangles on the screen, whose colours are known.
#pragma once

#include "render/raster/surface.h"
#include "state/texture_image.h"

#include <array>

// How a texture colours.
struct TextureFill {
    const TextureImage* texture = nullptr;  // never null; without texels it shows as white
    bool repeat = false;
    uint32_t tint = 0;     // 0x00BBGGRR, 0 for none
    float brightness = 1;  // limited when it is applied
};

// Fill the pixels of the surface's viewport whose centres lie inside, edges included, where the triangle
// is strictly nearer than what was drawn. Both windings are filled. Nothing without an area.
void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color, Surface& surface);
void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill, Surface& surface);

// The same for the faces of a mesh that were found to have an area and a box. All boxes lie within `covered`.
void FillFaces(const MeshToDraw& mesh, const Rect& covered, SimdLevel level, Surface& surface);

// Twice the signed area, square pixels: positive where the corners turn clockwise on the screen.
float AreaOf(const std::array<ScreenCorner, 3>& corners);

// True where a triangle covers the pixel's centre, edges included, and lies strictly before `depth`, which
// then becomes the triangle's depth there.
bool CoversPixel(const std::array<ScreenCorner, 3>& corners, Point pixel, float& depth);

TextureSource SourceOf(const TextureImage& image, bool repeat, uint32_t tint);
