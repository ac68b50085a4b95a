// Moving an object until it bumps into others.
#pragma once

#include "play/world_boxes.h"

#include <cstdint>

// Moves an object by a way in world units, which is added to its local position as it stands. An object with
// Collision that is no entity, camera or light goes in steps of at most 0.2 units, and of a 64th of a way
// that is longer than 12.8; after each step along an axis it is pushed back out of the solid objects that it
// meets, in scene order, and loses its speed along that axis. Others pass through everything. Nothing happens
// to an inactive object or for an index outside the scene.
void MoveWithCollision(int32_t index, Vec3 displacement, WorldBoxes& boxes);
