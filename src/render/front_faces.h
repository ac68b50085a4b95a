// Which faces of a mesh may turn their fronts to the eye, by their planes in object space.
#pragma once

#include "render/cpu_features.h"
#include "render/matrix4.h"
#include "render/mesh.h"

#include <cstdint>
#include <vector>

// The eye as the faces of a mesh see it.
struct EyeInObject {
    Vec3 position{};   // object space
    float inside = 1;  // -1 where the matrix turns the mesh inside out
    // By the length of a face's normal farther behind its plane than this, no rounding brings the eye before
    // it. One bound for all faces: beside a long edge small faces are hardly ever left out.
    float certainty = 0;
    bool isUsable = false;  // false: nothing is known of any face
};

EyeInObject FindEye(const Mesh& mesh, const Matrix4& world, Vec3 eye);

// The indices of the faces that may turn to the eye, in their order; all of them when nothing is known. `out`
// is replaced. Every level gives the same.
void FindFrontFaces(const Mesh& mesh, const EyeInObject& eye, SimdLevel level, std::vector<uint32_t>& out);
