#include "scene/kept_scene.h"

#include <cassert>
#include <utility>

KeptScene KeepScene() {
    return {.scene = editorState.scene,
            .selectedIndex = editorState.selectedIndex,
            .camera = editorState.camera,
            .animationTime = editorState.animationTime,
            .undoSteps = editorState.undoSteps,
            .sceneVersion = editorState.sceneVersion};
}

// The history comes back too: steps of what was shown meanwhile would bring its objects into the scene.
void PutSceneBack(std::optional<KeptScene>& kept) {
    assert(kept);
    editorState.scene = std::move(kept->scene);
    editorState.selectedIndex = kept->selectedIndex;
    editorState.camera = kept->camera;
    editorState.animationTime = kept->animationTime;
    editorState.undoSteps = std::move(kept->undoSteps);
    editorState.sceneVersion = kept->sceneVersion;
    kept.reset();
}
