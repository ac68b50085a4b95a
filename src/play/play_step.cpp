#include "play/play_step.h"

#include "play/collect.h"
#include "play/motion.h"
#include "play/play_pass.h"
#include "play/spawner.h"
#include "scene/scripts.h"
#include "scene/selection.h"
#include "state/editor_state.h"

#include <utility>

static void StepObject(int32_t index, float dt, PlayPass& pass) {
    if (HasScript(editorState.scene[index], kPlayerController)) PlayerControllerStep(index, dt, pass.boxes);
    if (HasScript(editorState.scene[index], kCollectOnTouch)) CollectOnTouchStep(index, pass);
    GravityStep(index, dt, pass.boxes);
    AnimationStep(index, dt, pass.boxes);
    if (HasScript(editorState.scene[index], kPlanePrefabSpawner)) SpawnerStep(index, pass);
}

// There is no fixed time step and no list of contacts. Objects act one after the other, and each meets the
// others where they stand at that moment, so the result depends on the scene's order and on nothing else. The
// pass looks up names, prefabs and boxes once; an object is fetched anew for each action, because a spawner
// may make the list of objects grow.
void PlayStep(float dt, PlayCache& cache) {
    PlayPass pass{.boxes = std::move(cache.boxes)};
    StartPass(pass.boxes);
    pass.objectsBefore = static_cast<int32_t>(editorState.scene.size());
    for (int32_t index = 0; IsObjectIndex(index); ++index) StepObject(index, dt, pass);
    cache.boxes = std::move(pass.boxes);
}
