// How a face looks: its light and its colours.
#pragma once

#include "base/color.h"
#include "base/vec3.h"
#include "state/texture_image.h"

#include <cstdint>

// Brightness stays within these when it is applied.
constexpr float kDarkest = 0.22f;
constexpr float kBrightest = 1.6f;

// The light that a face sends to the eye, not yet limited. `normal`, `toEye` and `light` are unit vectors;
// `roughness` and `gloss` run from 0 to 1. The highlight also shines on faces that are turned away from the
// light.
float FaceBrightness(Vec3 normal, Vec3 toEye, Vec3 light, float roughness, float gloss);

// The same by the cosines of the angles between the normal and the light, and between the normal and the
// middle of light and eye.
float Brightness(float lightCosine, float halfwayCosine, float roughness, float gloss);

// The average of both, byte by byte, rounded down. An object colour keeps red in its low byte and is paired
// with the pixel's low byte all the same. A tint of 0 leaves the colour.
Pixel Tinted(Pixel color, uint32_t tint);

// Each channel times the brightness, which is limited first, cut at 255 and truncated.
Pixel Lit(Pixel color, float brightness);

// The texel at (u, v), v upwards. Repeat takes the fractional parts, else both are limited to 0 .. 1. White
// without texels.
Pixel SampleTexture(const TextureImage& texture, float u, float v, bool repeat);
