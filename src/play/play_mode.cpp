#include "play/play_mode.h"

#include "play/score.h"
#include "scene/editor_camera.h"
#include "scene/gestures.h"
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

static bool IsEditingScene() {
    return !editorState.playMode && !editorState.runtimeMode && editorState.screen == Screen::SceneEditor;
}

void StartPlayMode() {
    if (!IsEditingScene()) return;
    editorState.playSnapshot = editorState.scene;
    editorState.playSnapshotState = {
        .taken = true, .animationTime = editorState.animationTime, .undoSteps = editorState.undoSteps};
    editorState.playCamera = EditorCamera();
    editorState.playSelection = editorState.selectedIndex;

    ResetGameState();
    EndGestures();
    editorState.playMode = true;
    SetStatus(L"Play mode zapnuty: stav sceny byl ulozen.");
}

void StopPlayMode() {
    if (!editorState.playMode) return;
    editorState.playMode = false;
    EndGestures();
    if (!editorState.playSnapshotState.taken) {
        SetStatus(L"Edit mode zapnuty.");
        return;
    }
    editorState.scene = std::exchange(editorState.playSnapshot, {});
    PlaySnapshotState before = std::exchange(editorState.playSnapshotState, {});
    editorState.animationTime = before.animationTime;
    // Steps of the game would bring its objects back into the scene.
    editorState.undoSteps = std::move(before.undoSteps);
    PlaceEditorCamera(editorState.playCamera);
    const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
    editorState.selectedIndex = std::min(std::max(editorState.playSelection, 0), last);
    SetStatus(L"Edit mode zapnuty: scena obnovena do stavu pred spustenim hry.");
}
