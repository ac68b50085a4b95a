// What colours a face: its light, its tint and its texture. There is one formula for shading. It is
// written for one face here and for many faces in the kernels, and both give the same bits. The ink of a
// face is found lazily, when the first of its pixels has passed the depth test.
#pragma once

#include "render/raster/mesh_to_draw.h"

#include <array>

// Brightness stays within these when it is applied.
constexpr float kDarkest = 0.22f;
constexpr float kBrightest = 1.6f;

// How bright a face looks to the eye, not yet limited. `normal`, `toEye` and `light` are unit vectors;
// `roughness` and `gloss` run from 0 to 1. The highlight also shines on faces that are turned away from
// the light.
float FaceBrightness(Vec3 normal, Vec3 toEye, Vec3 light, float roughness, float gloss);

// Like FaceBrightness, from two cosines: of the angle between the normal and the light, and of the angle
// between the normal and the direction half way from light to eye.
float Brightness(float lightCosine, float halfwayCosine, float roughness, float gloss);

// The average of both, byte by byte, rounded down. An object colour keeps red in its low byte and is paired
// with the pixel's low byte all the same. A tint of 0 leaves the colour.
Pixel Tinted(Pixel color, uint32_t tint);

// Each channel times the limited brightness, at most 255, truncated.
Pixel Lit(Pixel color, float brightness);

// A face in world space.
struct FaceInWorld {
    std::array<Vec3, 3> corners{};
    Vec3 normal{};  // unit
    Vec3 toEye{};   // unit, from the first corner
};

FaceInWorld PlaceFace(const MeshVertex* vertices, const MeshTriangle& triangle, const MeshDraw& draw);

// The cosines of a face with eye and light. The kernels compute the same bits for many faces at once.
FaceLight LightOfFace(const MeshVertex* vertices, const MeshTriangle& triangle, const MeshDraw& draw);

AxisScales WorldScales(const Matrix4& world);

// Texture coordinates of a position in object space, projected along the axis that the face mostly looks
// along.
TexturePoint TextureCoordinates(Vec3 position, Vec3 normal, const AxisScales& scales, bool repeat);

// The ink of a face of the mesh, see FindFaceInk: false for one that turns its back to the eye.
bool FindFlatInk(const MeshToDraw& mesh, size_t face, FaceInk& ink);
bool FindTexturedInk(const MeshToDraw& mesh, size_t face, FaceInk& ink);

// Hands on `knownInk` of the mesh.
bool FindKnownInk(const MeshToDraw& mesh, size_t face, FaceInk& ink);
