// How the drag of a Rigidbody slows it.
#pragma once

// The share of its speed that an object keeps over `dt` seconds. `drag` per second, limited to 0 .. 5.
float KeptByDrag(float drag, float dt);
