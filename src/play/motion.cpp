#include "play/motion.h"

#include "base/limit.h"
#include "play/collision.h"
#include "scene/interaction.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cmath>

float KeptByDrag(float drag, float dt) { return std::max(1 - dt * Limit(drag, 0.0f, 5.0f), 0.0f); }

// ---- The player's keys.

constexpr float kSpeed = 4.0f;        // world units per second; no Rigidbody gets faster either
constexpr float kForce = 22.0f;       // world units per second squared at mass 1
constexpr float kLeastMass = 0.1f;    // lighter ones count as this
constexpr float kLeastInput = 1e-4f;  // shorter input counts as none

// Where the keys lead, in the horizontal plane. Two keys at once give a longer vector.
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

// Force, drag, limit, in this order: the limit must come last, or a strong push would exceed it for a frame.
// The vertical speed belongs to gravity and is left alone.
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

// ---- Gravity. The speed changes first and moves the object after that. Landing sets it to 0
// (MoveWithCollision), so a resting object falls by one frame's speed in every frame and is pushed back out.
// So nothing has to keep track of which objects rest.

static bool Falls(const GameObject& object) {
    return object.active && (object.hasGravitation || object.hasRigidbody) && !object.isEntity &&
           !object.isCamera && !object.isLight;
}

// Returns the new vertical speed.
static float SpeedUp(GameObject& object, float dt) {
    if (!object.hasRigidbody) return object.velocityY -= dt * object.gravityStrength;
    object.velocity.y -= dt * object.gravityStrength;
    return object.velocity.y *= KeptByDrag(object.drag, dt);
}

void GravityStep(int32_t index, float dt, WorldBoxes& boxes) {
    GameObject& object = editorState.scene[index];
    if (!Falls(object)) return;
    const float speed = SpeedUp(object, dt);
    MoveWithCollision(index, {0, dt * speed, 0}, boxes);
    if (object.hasRigidbody) object.velocityY = object.velocity.y;
}

// ---- Animations. They set the transform without asking what is in the way, so animated objects go through
// walls.

constexpr float kPulseRate = 3.0f;      // radians per second at speed 1
constexpr float kPulseHeight = 0.08f;   // of the scale
constexpr float kBounceRate = 4.0f;     // likewise
constexpr float kBounceHeight = 0.01f;  // world units per frame

void AnimationStep(int32_t index, float dt, WorldBoxes& boxes) {
    GameObject& object = editorState.scene[index];
    if (!object.hasAnimation) return;

    const float speed = object.animationSpeed, time = editorState.animationTime;
    switch (object.animationType) {
        case 0: object.rotation.y += speed * dt; break;
        case 1: {
            // Overwritten, not multiplied: a pulsing object always pulses around 1.
            const float scale = std::sin(speed * time * kPulseRate) * kPulseHeight + 1.0f;
            object.scale = {scale, scale, scale};
            break;
        }
        case 2:
            // Not multiplied by dt: a bounce moves the same distance in every frame.
            object.position.y += std::sin(speed * time * kBounceRate) * kBounceHeight;
            break;
        default: return;
    }
    ObjectMoved(index, boxes);
}
