#include "scene/text_entry.h"

#include "scene/editor_state.h"

void CloseMenus() {
    editorState.createMenu = {};
    editorState.objectMenu = {};
    editorState.filesCreateMenu = {};
    editorState.filesItemMenu = {};
    editorState.projectMenu = {};
    editorState.addNodeMenu = {};
}

void CloseEntriesAndMenus() {
    CloseMenus();
    editorState.nameEntry = {};
    editorState.numberEntry = {};
    editorState.typedHalf = 0;
    editorState.componentSearchActive = false;
}
