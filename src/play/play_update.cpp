#include "play/play_update.h"

#include "scene/editor_camera.h"
#include "scene/editor_state.h"

// The Project Hub, outside the game, and the Blueprint editor take the keys for themselves.
static bool FullScreenPageIsShown() {
    return !editorState.runtimeMode &&
           (editorState.hubVisible || editorState.screen == Screen::BlueprintEditor);
}

void UpdatePlay(float dt) {
    if (!FullScreenPageIsShown()) FlyWithKeys(dt);
    editorState.animationTime += dt;
}
