#include "play/play_update.h"

#include "play/animation.h"
#include "play/collect.h"
#include "play/gravity.h"
#include "play/play_pass.h"
#include "play/player_controller.h"
#include "play/spawner.h"
#include "scene/editor_camera.h"
#include "scene/gameplay_scripts.h"
#include "scene/keyboard_transform.h"
#include "scene/selection.h"
#include "state/editor_state.h"

#include <utility>

// The Project Hub, outside the game, and the Blueprint editor take the keys for themselves.
static bool FullScreenPageIsShown() {
    return !editorState.runtimeMode &&
           (editorState.hubVisible || editorState.screen == Screen::BlueprintEditor);
}

static void UpdateObject(int32_t index, float dt, PlayPass& pass) {
    if (HasScript(editorState.scene[index], kPlayerController)) PlayerControllerStep(index, dt, pass.boxes);
    if (HasScript(editorState.scene[index], kCollectOnTouch)) CollectOnTouchStep(index, pass);
    GravityStep(index, dt, pass.boxes);
    AnimationStep(index, dt, pass.boxes);
    if (HasScript(editorState.scene[index], kPlanePrefabSpawner)) SpawnerStep(index, pass);
}

// `kept` holds what the boxes of the last frame are good for in the next.
static void UpdateObjects(float dt, WorldBoxes& kept) {
    PlayPass pass{.boxes = std::move(kept)};
    StartPass(pass.boxes);
    pass.objectsBefore = static_cast<int32_t>(editorState.scene.size());
    for (int32_t index = 0; IsObjectIndex(index); ++index) UpdateObject(index, dt, pass);
    kept = std::move(pass.boxes);
}

void UpdatePlay(float dt) {
    if (FullScreenPageIsShown()) {
        editorState.animationTime += dt;
        return;
    }
    FlyWithKeys(dt);
    KeyboardTransformStep(dt);
    editorState.animationTime += dt;
    static WorldBoxes kept;
    if (editorState.playMode) {
        UpdateObjects(dt, kept);
    } else {
        kept = {};
    }
}
