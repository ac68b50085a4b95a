// Filling triangles on the screen: single ones whose colours are known, and the faces of a mesh.
#pragma once

#include "render/raster/surface.h"
#include "state/texture_image.h"

#include <array>

// How a texture colours a triangle.
struct TextureFill {
    const TextureImage* texture = nullptr;  // never null; without texels it shows as white
    bool repeat = false;
    uint32_t tint = 0;     // 0x00BBGGRR, 0 for none
    float brightness = 1;  // limited when it is applied
};

// Fills the pixels of the surface's viewport whose centres lie inside, edges included, if the triangle is
// strictly nearer than what was drawn there. Both windings are filled. A triangle without an area fills
// nothing.
void FillTriangle(const std::array<ScreenCorner, 3>& corners, Pixel color, Surface& surface);
void FillTriangle(const std::array<ScreenCorner, 3>& corners, const std::array<TexturePoint, 3>& points,
                  const TextureFill& fill, Surface& surface);

// Likewise for the faces of a mesh that the scan has left, with their area and box. All boxes lie within
// `covered`.
void FillFaces(const MeshToDraw& mesh, const Rect& covered, SimdLevel level, Surface& surface);

// Twice the signed area, square pixels: positive if the corners turn clockwise on the screen.
float AreaOf(const std::array<ScreenCorner, 3>& corners);

// True when a triangle covers the centre of the pixel, edges included, and is strictly nearer than
// `depth`, which then becomes the triangle's depth there.
bool CoversPixel(const std::array<ScreenCorner, 3>& corners, Point pixel, float& depth);

TextureSource SourceOf(const TextureImage& image, bool repeat, uint32_t tint);
