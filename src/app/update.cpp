#include "app/update.h"

#include "scene/editor_camera.h"
#include "scene/keyboard_transform.h"
#include "state/editor_state.h"

// The Project Hub, outside the game, and the Blueprint editor take the keys for themselves.
static bool FullScreenPageIsShown() {
    return !editorState.runtimeMode &&
           (editorState.hubVisible || editorState.screen == Screen::BlueprintEditor);
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
