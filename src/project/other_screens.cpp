#include "project/other_screens.h"

#include "blueprint/blueprint_editor.h"
#include "project/prefab_editor.h"
#include "scene/editor_state.h"

bool LeaveOtherScreens() {
    CloseBlueprintEditor();
    ClosePrefabEditor();
    return editorState.screen == Screen::SceneEditor;
}
