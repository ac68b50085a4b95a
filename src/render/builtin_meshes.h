// The seven meshes that every program start and every scene begins with.
#pragma once

#include "state/mesh.h"

#include <vector>

// Indices into the mesh library.
enum BuiltinMesh : int32_t {
    kCubeMesh,
    kPyramidMesh,
    kGroundMesh,
    kPlaneMesh,
    kSphereMesh,
    kCapsuleMesh,
    kCylinderMesh,
    kBuiltinMeshCount
};

// Display names by index; scene files refer to the meshes as "builtin:" and the name.
inline constexpr const wchar_t* kBuiltinMeshNames[kBuiltinMeshCount] = {
    L"Cube", L"Pyramid", L"Ground", L"Plane", L"Sphere", L"Capsule", L"Cylinder",
};

// In the order of BuiltinMesh. Solids are wound so that their fronts point outward.
std::vector<Mesh> BuildBuiltinMeshes();

// The same meshes with their names: the library that every scene begins with.
std::vector<MeshAsset> BuiltinMeshLibrary();

// The colour of a generated vertex: `height` -1.1 .. 1.1 (limited to it), `turn` the fraction of a full
// circle.
Pixel MeshGradientColor(float height, float turn);
