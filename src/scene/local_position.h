// Where a place in the world lies for a parent's children.
#pragma once

#include "state/game_object.h"

#include <cstdint>
#include <span>

// The local position that puts a child of `parentIndex` at `worldPosition`. Under a parent that flattens
// space the distance from the parent; without a parent in the scene the world position itself.
Vec3 LocalPositionUnder(std::span<const GameObject> scene, int32_t parentIndex, Vec3 worldPosition);
