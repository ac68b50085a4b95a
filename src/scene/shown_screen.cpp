#include "scene/shown_screen.h"

#include "state/editor_state.h"

// The runtime and the Hub lie over whatever was chosen before.
Shown ShownScreen() {
    if (editorState.runtimeMode) return Shown::Game;
    if (editorState.hubVisible) return Shown::Hub;
    switch (editorState.screen) {
        case Screen::BlueprintEditor: return Shown::Blueprint;
        case Screen::PrefabEditor: return Shown::Prefab;
        case Screen::SceneEditor: break;
    }
    return Shown::SceneEditor;
}
