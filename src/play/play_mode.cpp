#include "play/play_mode.h"

#include "play/collect.h"
#include "scene/interaction.h"
#include "scene/shown_screen.h"
#include "scene/snapshots.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>

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

// A game plays in the edited scene itself, so what it may change is put aside first and comes back whole:
// whatever a game does, stopping it undoes.
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
