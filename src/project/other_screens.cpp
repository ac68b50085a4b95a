#include "project/other_screens.h"

#include "project/prefab_editor.h"
#include "scene/editor_state.h"

bool LeaveOtherScreens() {
    if (editorState.screen == Screen::PrefabEditor) ClosePrefabEditor();
    return editorState.screen == Screen::SceneEditor;
}
