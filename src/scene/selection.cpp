#include "scene/selection.h"

#include "state/editor_state.h"

#include <cassert>
#include <utility>

bool IsObjectIndex(int32_t index) {
    return index >= 0 && index < static_cast<int32_t>(editorState.scene.size());
}

bool SelectionIsValid() { return IsObjectIndex(editorState.selectedIndex); }

GameObject& SelectedObject() {
    assert(SelectionIsValid());
    return editorState.scene[editorState.selectedIndex];
}

void AppendAndSelect(GameObject object) {
    editorState.selectedIndex = static_cast<int32_t>(editorState.scene.size());
    editorState.scene.push_back(std::move(object));
}
