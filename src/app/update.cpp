#include "app/update.h"

#include "scene/editor_camera.h"
#include "scene/keyboard_transform.h"
#include "scene/shown_screen.h"
#include "state/editor_state.h"

// The Project Hub, outside the game, and the Blueprint editor take the keys for themselves.
static bool FullScreenPageIsShown() {
    return ShownScreen() == Shown::Hub || ShownScreen() == Shown::Blueprint;
}

void UpdateFrame(float dt, PlayCache& cache) {
    if (FullScreenPageIsShown()) {
        editorState.animationTime += dt;
        return;
    }
    FlyWithKeys(dt);
    KeyboardTransformStep(dt);
    editorState.animationTime += dt;
    if (editorState.playMode) {
        PlayStep(dt, cache);
    } else {
        cache = {};
    }
}
