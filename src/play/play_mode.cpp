#include "play/play_mode.h"

#include "play/score.h"
#include "scene/editor_state.h"

void ResetGameState() {
    for (GameObject& object : editorState.scene) {
        object.velocityY = 0;
        object.velocity = {};
    }
    editorState.animationTime = 0;
    editorState.score = 0;
    ShowScore();
}
