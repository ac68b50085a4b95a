#include "play/animation.h"

#include "state/editor_state.h"

#include <cmath>

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
