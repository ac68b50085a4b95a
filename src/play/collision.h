// Moving an object until it bumps into others.
#pragma once

#include "play/world_boxes.h"

#include <cstdint>

// Moves an object by `displacement` in world units, added to its local position as it stands. An object with
// Collision that is no entity, camera or light moves in steps of at most 0.2 units, but in no more than 64
// steps. After each step along an axis it is pushed back out of the solid objects that it meets, in scene
// order, and loses its speed along that axis. Other objects pass through everything. Inactive objects and
// indices outside the scene are ignored.
void MoveWithCollision(int32_t index, Vec3 displacement, WorldBoxes& boxes);
