#include "scene/clipboard.h"

#include "scene/selection.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <utility>

constexpr float kPasteOffset = 0.6f;  // world units along x and z

void copySelected() {
    if (!SelectionIsValid()) {
        SetStatus(L"Ctrl+C: neni vybrany objekt.");
        return;
    }
    editorState.clipboardObject = SelectedObject();
    SetStatus(L"Ctrl+C: objekt zkopirovan: " + SelectedObject().name);
}

void pasteObject() {
    if (!editorState.clipboardObject) {
        SetStatus(L"Ctrl+V: schranky objektu je prazdna.");
        return;
    }
    pushUndo("Paste object");

    GameObject copy = *editorState.clipboardObject;
    copy.name += L"_Paste";
    if (!IsObjectIndex(copy.parentIndex)) copy.parentIndex = -1;
    copy.position.x += kPasteOffset;
    copy.position.z += kPasteOffset;
    copy.velocityY = 0;
    copy.velocity = {};
    AppendAndSelect(std::move(copy));

    SetStatus(L"Ctrl+V: objekt vlozen do sceny.");
}
