// Draws the meshes of a scene, the nearest first if that pays.
#pragma once

#include "render/raster/surface.h"

#include <span>

// Fewer meshes than this are drawn as they stand.
constexpr size_t kFewestToSort = 16;

// Gives the same pixels and depths as drawing one after the other, but draws the nearest of many meshes
// first: what they hide then costs little. None of them may be selected. Leaving out those that IsInvisible
// names beforehand spares sorting them.
void DrawMeshes(std::span<const MeshInstance> instances, Surface& surface);
