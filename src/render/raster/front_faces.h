// Which faces of a mesh may turn their fronts to the eye, by their planes in object space.
#pragma once

#include "base/matrix4.h"
#include "render/raster/simd_level.h"
#include "state/mesh.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

// The eye as the faces of a mesh see it.
struct EyeInObject {
    Vec3 position{};   // object space
    float inside = 1;  // -1 where the matrix turns the mesh inside out
    // By the length of a face's normal farther behind its plane than this, no rounding brings the eye before
    // it. One bound for all faces: beside a long edge small faces are hardly ever left out.
    float certainty = 0;
    // A face is hidden where the eye is higher before its plane than this: see hidden_faces.h.
    float hiddenFrom = std::numeric_limits<float>::infinity();
    bool isUsable = false;  // false: nothing is known of any face
};

EyeInObject FindEye(const Mesh& mesh, const Matrix4& world, Vec3 eye);

// Gives how many faces may turn to the eye, and may be seen; their indices are the first of `out`, in their
// order, and all faces when nothing is known. Every level gives the same.
size_t FindFrontFaces(const Mesh& mesh, const EyeInObject& eye, SimdLevel level, std::vector<uint32_t>& out);
