#include "scene/editor_camera.h"

#include "base/limit.h"
#include "platform/window.h"
#include "render/raster/camera.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "scene/transform.h"
#include "state/editor_state.h"

constexpr float kMaxPitch = 1.1f;       // radians
constexpr float kMouseTurn = 0.0065f;   // radians per pixel
constexpr float kKeyTurn = 1.75f;       // radians per second
constexpr float kFlySpeed = 4.4f;       // world units per second
constexpr float kFocusDistance = 4.0f;  // world units
constexpr float kFocusHeight = 1.4f;

static void Turn(float yaw, float pitch) {
    editorState.camera.yaw += yaw;
    editorState.camera.pitch = Limit(editorState.camera.pitch + pitch, -kMaxPitch, kMaxPitch);
}

Vec3 InFrontOfEditorCamera(float distance) {
    return editorState.camera.position +
           CameraForward(editorState.camera.yaw, editorState.camera.pitch) * distance;
}

void LookWithMouse(int32_t dx, int32_t dy) {
    Turn(static_cast<float>(dx) * kMouseTurn, -(static_cast<float>(dy) * kMouseTurn));
}

// Flies level with the ground, wherever the camera looks: W with a camera that looks down does not dive.
// Space and Shift go up and down. Two keys together are no faster than one.
void FlyWithKeys(float dt) {
    Turn(KeyAxis(kKeyRight, kKeyLeft) * (kKeyTurn * dt), KeyAxis(kKeyUp, kKeyDown) * (kKeyTurn * dt));

    const Vec3 forward = CameraForward(editorState.camera.yaw, editorState.camera.pitch);
    const Vec3 ahead = Normalise({forward.x, 0, forward.z});
    const Vec3 right = Normalise({ahead.z, 0, -ahead.x});
    const Vec3 move =
        ahead * KeyAxis('W', 'S') + right * KeyAxis('D', 'A') + Vec3{0, 1, 0} * KeyAxis(kKeySpace, kKeyShift);
    editorState.camera.position = editorState.camera.position + Normalise(move) * (kFlySpeed * dt);
}

// Moves the camera and does not turn it, so the user keeps the direction that was chosen.
void FocusOnObject(int32_t index) {
    const Vec3 target = WorldPosition(editorState.scene, index);
    const Vec3 forward = CameraForward(editorState.camera.yaw, editorState.camera.pitch);
    editorState.camera.position = {target.x - kFocusDistance * forward.x, target.y + kFocusHeight,
                                   target.z - kFocusDistance * forward.z};
    SetStatus(L"Kamera priblizena na vybrany objekt.");
}
