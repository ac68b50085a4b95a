// Many meshes of one scene.
#pragma once

#include "render/raster/draw_mesh.h"

#include <span>

struct MeshInstance {
    const Mesh* mesh = nullptr;
    MeshDraw draw{};  // not selected
};

// The number of meshes from which their order is looked at.
constexpr size_t kFewestToSort = 16;

// Gives the pixels and depths that drawing one after the other gives. Of many meshes the nearest are drawn
// first: what they hide costs little then.
void DrawMeshes(std::span<const MeshInstance> instances);
