// How the faces of a mesh stand to the eye and to the light.
#pragma once

#include "render/draw_mesh.h"
#include "render/fill_rows.h"

#include <array>
#include <span>
#include <vector>

// A face in world space.
struct FaceInWorld {
    std::array<Vec3, 3> corners{};
    Vec3 normal{};  // unit
    Vec3 toEye{};   // unit, from the first corner
};

FaceInWorld PlaceFace(const Mesh& mesh, const MeshDraw& draw, const MeshTriangle& triangle);

// Cosines of angles to the face's normal. By face of a list.
struct FaceLight {
    float eye = 0;  // not above 0: the face turns its back to the eye
    float light = 0;
    float halfway = 0;  // between light and eye
};

FaceLight LightOfFace(const Mesh& mesh, const MeshDraw& draw, uint32_t triangle);

// The same for all faces of a list, eight at a time: only with SimdLevel::Avx2. Every bit is the same. `out`
// is replaced.
void FindLightsOfFaces(const Mesh& mesh, const MeshDraw& draw, std::span<const ScannedFace> faces,
                       std::vector<FaceLight>& out);
