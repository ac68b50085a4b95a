// The vertices of one mesh on their way to the screen, each transformed once.
#pragma once

#include "render/cpu_features.h"
#include "render/matrix4.h"
#include "render/mesh.h"
#include "render/projection.h"
#include "render/rect.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Where a vertex lies on the screen. Sixteen bytes, so that it is one load.
struct ScreenPlace {
    float x = 0, y = 0;  // pixels
    float depth = 0;     // 0 near .. 1 far
    float unused = 0;
};

// By vertex, in records of the size of one load.
struct MeshVertices {
    std::vector<Vec4> world{};               // w is 0
    std::vector<ScreenCorner> corners{};     // only where visible
    std::vector<uint8_t> visible{};          // 1 where the projection accepted the vertex
    std::vector<uint8_t> beyondNearPlane{};  // 1 where clip z >= 0
    std::vector<ScreenPlace> places{};       // as in `corners` where both hold, else not a number
    bool arePlain = false;                   // all of them: then the places lie within these
    float left = 0, top = 0, right = 0, bottom = 0;

    Vec3 World(size_t i) const { return {world[i].x, world[i].y, world[i].z}; }
    bool IsPlain(size_t i) const { return visible[i] && beyondNearPlane[i]; }
};

// How the vertices of a mesh are transformed: to the world, then to the screen.
struct VertexTransform {
    Matrix4 world{};
    Matrix4 viewProjection{};
    Rect viewport{};
};

// Replaces what `out` holds; its memory is used again. Every level gives the same bits.
void TransformVertices(const Mesh& mesh, const VertexTransform& transform, SimdLevel level,
                       MeshVertices& out);
