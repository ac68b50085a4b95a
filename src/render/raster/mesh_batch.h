// Many meshes of one scene.
#pragma once

#include "render/raster/surface.h"

#include <span>

// The number of meshes from which their order is looked at.
constexpr size_t kFewestToSort = 16;

// Gives the pixels and depths that drawing one after the other gives. Of many meshes the nearest are drawn
// first: what they hide costs little then. None of them is selected.
// Invisible ones had better be left out before: see IsInvisible.
void DrawMeshes(std::span<const MeshInstance> instances, Surface& surface);
