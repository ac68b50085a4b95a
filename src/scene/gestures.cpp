#include "scene/gestures.h"

#include "scene/editor_state.h"

void EndGestures() {
    editorState.gizmoDrag = {};
    editorState.keyboardTransform = false;
    editorState.hierarchyDrag = {};
    editorState.objectMenu = {};
    editorState.nameEntry = {};
    editorState.numberEntry = {};
    editorState.typedHalf = 0;
}
