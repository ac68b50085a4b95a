// What moves an object: gravity, the player's keys, ready-made animations.
#pragma once

#include "play/world_boxes.h"

#include <cstdint>

// In all of these `dt` is in seconds and `index` names an object.

// Moves an object with the script PlayerController by W, S, A and D, ahead and sideways as it is turned about
// y: at 4 units per second, or with a Rigidbody by a force that its mass weighs against, up to that speed.
void PlayerControllerStep(int32_t index, float dt, WorldBoxes& boxes);

// The fall of an active object with Gravitation or a Rigidbody: speeds it up downwards, lets its drag slow
// it, and moves it until it lands. Entities, cameras and lights do not fall.
void GravityStep(int32_t index, float dt, WorldBoxes& boxes);

// Turns, pulses or bounces an object with an animation, active or not.
void AnimationStep(int32_t index, float dt, WorldBoxes& boxes);

// The share of its speed that an object keeps over `dt` seconds. `drag` per second, limited to 0 .. 5.
float KeptByDrag(float drag, float dt);
