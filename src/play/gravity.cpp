#include "play/gravity.h"

#include "play/collision.h"
#include "play/drag.h"
#include "state/editor_state.h"

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
