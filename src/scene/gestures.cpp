#include "scene/gestures.h"

#include "platform/window.h"
#include "state/editor_state.h"

bool DragMayStart() { return !editorState.mouseLook.armed; }

void EndGestures() {
    if (editorState.gizmoDrag.axis != 0 || editorState.hierarchyDrag.pressed) ReleaseMouse();
    editorState.gizmoDrag = {};
    editorState.keyboardTransform = false;
    editorState.hierarchyDrag = {};
    editorState.objectMenu = {};
    editorState.nameEntry = {};
    editorState.numberEntry = {};
    editorState.typedHalf = 0;
    editorState.inspectedObject = -1;
    editorState.hierarchyRows.clear();
}
