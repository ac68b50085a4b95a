#include "scene/held_keys.h"

#include "state/editor_state.h"

bool KeyIsDown(uint32_t key) { return editorState.keyDown[key]; }

float KeyAxis(uint32_t positive, uint32_t negative) {
    return static_cast<float>(KeyIsDown(positive)) - static_cast<float>(KeyIsDown(negative));
}
