// What moves an object: the player's keys, gravity, ready-made animations.
#pragma once

#include "play/world_boxes.h"

#include <cstdint>

// In all of these `dt` is in seconds and `index` names an object.

// Moves an object with the script PlayerController by W, S, A and D, relative to its rotation about y.
// Without a Rigidbody it moves at 4 units per second; with one, a force speeds it up to at most that, the
// more slowly the larger its mass.
void PlayerControllerStep(int32_t index, float dt, WorldBoxes& boxes);

// Lets an active object with Gravitation or a Rigidbody fall: speeds it up, lets its drag slow it down, and
// moves it until it lands. Entities, cameras and lights do not fall.
void GravityStep(int32_t index, float dt, WorldBoxes& boxes);

// Turns, pulses or bounces an object with an animation, active or not.
void AnimationStep(int32_t index, float dt, WorldBoxes& boxes);

// The share of its speed that an object keeps over `dt` seconds. `drag` per second, limited to 0 .. 5.
float KeptByDrag(float drag, float dt);
