// The pop-up menu that is open, as tests ask for it.
#pragma once

#include "scene/interaction.h"
#include "state/editor_state.h"

// One far outside every window when none is open.
inline PopupMenu OpenMenuState() {
    return editorState.menu.value_or(PopupMenu{.corner{-9999, -9999}, .openedAt{}, .item = -9999});
}
