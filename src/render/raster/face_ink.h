// What colours a face: its light, its tint and its texture. The shading is one formula, written for one face
// here and for many together in the kernels, with the same bits. The ink of a face is found lazily, when the
// first of its pixels has passed the depth test.
#pragma once

#include "render/raster/mesh_to_draw.h"

#include <array>

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

// A face in world space.
struct FaceInWorld {
    std::array<Vec3, 3> corners{};
    Vec3 normal{};  // unit
    Vec3 toEye{};   // unit, from the first corner
};

FaceInWorld PlaceFace(const MeshVertex* vertices, const MeshTriangle& triangle, const MeshDraw& draw);

// How a face stands to eye and light. Kernels find the same, bit for bit, for many faces together.
FaceLight LightOfFace(const MeshVertex* vertices, const MeshTriangle& triangle, const MeshDraw& draw);

AxisScales WorldScales(const Matrix4& world);

// Projects the object-space position along the axis that the face mostly looks along.
TexturePoint TextureCoordinates(Vec3 position, Vec3 normal, const AxisScales& scales, bool repeat);

// The ink of a face of the mesh, see FindFaceInk: false for one that turns its back to the eye.
bool FindFlatInk(const MeshToDraw& mesh, size_t face, FaceInk& ink);
bool FindTexturedInk(const MeshToDraw& mesh, size_t face, FaceInk& ink);

// Hands on the ink that the mesh already has.
bool FindKnownInk(const MeshToDraw& mesh, size_t face, FaceInk& ink);
