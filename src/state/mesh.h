// Geometry: coloured vertices and the triangles between them.
#pragma once

#include "base/color.h"
#include "base/matrix4.h"
#include "base/vec3.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct MeshVertex {
    Vec3 position{};  // object space
    Pixel color{};

    friend constexpr bool operator==(const MeshVertex&, const MeshVertex&) = default;
};

// Three vertex indices. The front is the side towards which (p1 - p0) x (p2 - p0) points.
using MeshTriangle = std::array<int32_t, 3>;

// A box around all vertices, in object space.
struct MeshBounds {
    Vec4 centre{};    // w is 1
    Vec4 halfSize{};  // w is 0
};

// Nobody looks into one: its place in memory tells meshes apart.
struct MeshMark {};

// What drawing asks of a mesh again and again, all in object space. See MeasureMesh in
// render/raster/mesh_measures.h.
struct MeshMeasures {
    // The planes of the triangles, by triangle, followed by zeros up to a multiple of sixteen: the normals
    // (p1 - p0) x (p2 - p0), and their products with a point of the plane.
    std::vector<float> normalX{}, normalY{}, normalZ{}, offset{};
    MeshBounds bounds{};
    float reach = 0;        // no vertex is farther from the origin
    float longestEdge = 0;  // no edge of a triangle is longer
    // The same for copies of a mesh and for no other mesh, as long as somebody holds it. Null: not measured.
    std::shared_ptr<const MeshMark> identity{};
};

struct Mesh {
    std::vector<MeshVertex> vertices{};
    std::vector<MeshTriangle> triangles{};  // every index is a valid vertex index
    MeshMeasures measures{};                // without: the mesh is drawn the same, but more slowly
};

// A mesh of the library that the objects of a scene refer to by index.
struct MeshAsset {
    Mesh mesh{};
    std::wstring name{};    // as the Inspector shows it
    std::wstring source{};  // full path of the model file; empty for a built-in mesh
};
