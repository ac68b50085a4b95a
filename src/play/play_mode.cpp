#include "play/play_mode.h"

#include "play/collect.h"
#include "play/motion.h"
#include "play/play_pass.h"
#include "play/spawner.h"
#include "scene/interaction.h"
#include "scene/scripts.h"
#include "scene/selection.h"
#include "scene/shown_screen.h"
#include "scene/snapshots.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <utility>

void ResetGameState() {
    for (GameObject& object : editorState.scene) {
        object.velocityY = 0;
        object.velocity = {};
    }
    editorState.animationTime = 0;
    editorState.score = 0;
    ShowScore();
}

static bool IsEditingScene() { return !editorState.playMode && ShownScreen() == Shown::SceneEditor; }

// A game plays in the edited scene itself. What it may change is put aside first and comes back as a whole,
// so stopping a game undoes whatever it has done, without knowing what that was.
void StartPlayMode() {
    if (!IsEditingScene()) return;
    editorState.sceneBeforePlay = KeepScene();

    ResetGameState();
    ForgetObjectIndices();
    editorState.playMode = true;
    SetStatus(L"Play mode zapnuty: stav sceny byl ulozen.");
}

void StopPlayMode() {
    if (!editorState.playMode) return;
    editorState.playMode = false;
    ForgetObjectIndices();
    if (!editorState.sceneBeforePlay) {
        SetStatus(L"Edit mode zapnuty.");
        return;
    }
    PutSceneBack(editorState.sceneBeforePlay);
    const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
    editorState.selectedIndex = std::min(std::max(editorState.selectedIndex, 0), last);
    SetStatus(L"Edit mode zapnuty: scena obnovena do stavu pred spustenim hry.");
}

static void StepObject(int32_t index, float dt, PlayPass& pass) {
    if (HasScript(editorState.scene[index], kPlayerController)) PlayerControllerStep(index, dt, pass.boxes);
    if (HasScript(editorState.scene[index], kCollectOnTouch)) CollectOnTouchStep(index, pass);
    GravityStep(index, dt, pass.boxes);
    AnimationStep(index, dt, pass.boxes);
    if (HasScript(editorState.scene[index], kPlanePrefabSpawner)) SpawnerStep(index, pass);
}

// One frame of the game. There is no fixed time step and no list of contacts: objects act one after the
// other, and each meets the others where they stand at that moment. So the result depends on the order of
// the scene, and no cache or search may change that order. The pass looks up names, prefabs and boxes once.
// Objects are fetched by index for each action, because a spawner may make the list of objects grow and
// move.
void PlayStep(float dt, PlayCache& cache) {
    PlayPass pass{.boxes = std::move(cache.boxes)};
    StartPass(pass.boxes);
    pass.objectsBefore = static_cast<int32_t>(editorState.scene.size());
    for (int32_t index = 0; IsObjectIndex(index); ++index) StepObject(index, dt, pass);
    cache.boxes = std::move(pass.boxes);
}
