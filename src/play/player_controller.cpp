#include "play/player_controller.h"

#include "play/collision.h"
#include "play/drag.h"
#include "scene/held_keys.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cmath>

constexpr float kSpeed = 4.0f;        // world units per second; no Rigidbody gets faster either
constexpr float kForce = 22.0f;       // world units per second squared at mass 1
constexpr float kLeastMass = 0.1f;    // lighter ones count as this
constexpr float kLeastInput = 1e-4f;  // shorter directions are none

// Where the keys lead: in the plane, not of unit length.
static Vec3 InputDirection(float yaw) {
    const Vec3 ahead = Normalise({std::sin(yaw), 0, std::cos(yaw)});
    const Vec3 right = Normalise({std::cos(yaw), 0, -std::sin(yaw)});
    return ahead * KeyAxis('W', 'S') + right * KeyAxis('D', 'A');
}

static void LimitSpeed(Vec3& velocity) {
    const float speed = std::sqrt(velocity.x * velocity.x + velocity.z * velocity.z);
    if (!(speed > kSpeed)) return;
    velocity.x *= kSpeed / speed;
    velocity.z *= kSpeed / speed;
}

static void PushBody(Vec3 input, float dt, GameObject& object) {
    if (Length(input) > kLeastInput) {
        const Vec3 direction = Normalise(input);
        const float perMass = 1 / std::max(kLeastMass, object.mass);
        object.velocity.x += direction.x * kForce * perMass * dt;
        object.velocity.z += direction.z * kForce * perMass * dt;
    }
    const float kept = KeptByDrag(object.drag, dt);
    object.velocity.x *= kept;
    object.velocity.z *= kept;
    LimitSpeed(object.velocity);
}

void PlayerControllerStep(int32_t index, float dt, WorldBoxes& boxes) {
    GameObject& object = editorState.scene[index];
    const Vec3 input = InputDirection(object.rotation.y);
    if (object.hasRigidbody) {
        PushBody(input, dt, object);
        MoveWithCollision(index, {object.velocity.x * dt, 0, object.velocity.z * dt}, boxes);
    } else if (Length(input) > kLeastInput) {
        MoveWithCollision(index, Normalise(input) * kSpeed * dt, boxes);
    }
}
