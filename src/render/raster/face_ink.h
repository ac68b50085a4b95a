// What colours a face: its light, and its texture coordinates. Found late, for faces of which a pixel shows.
#pragma once

#include "render/raster/mesh_to_draw.h"

#include <array>

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
