// The box that an object occupies in the world.
#pragma once

#include "base/box.h"
#include "scene/transform.h"
#include "state/game_object.h"

#include <cstdint>

// Stand in place of the index of a mesh.
constexpr int32_t kCubeShape = -1, kUnknownShape = -2;

// The extent of an object's shape after rotation and scale. It is cached so that a shape that only moves is
// not transformed again, and is valid as long as the mesh library stays the same.
struct TurnedShape {
    Vec3 rotation{}, scale{};      // of an object without parent
    Matrix4 world{};               // of one with parents; its translation does not matter
    Box extent{};                  // around the shape, seen from the translation
    int32_t mesh = kUnknownShape;  // index of its mesh, kCubeShape for the cube in place of one
    bool isOfRoot = false;
};

// The box around an object's mesh, or around a cube of edge 2 if it has no Shape or no mesh. Every side is
// at least 0.04 long, even for flat planes. `index` names an object of the open scene.
Box WorldBox(int32_t index);

// The same box, bit for bit, from what is cached about the object's parents and its shape. Brings both
// caches up to date.
Box WorldBox(int32_t index, WorldMatrices& worlds, TurnedShape& shape);
