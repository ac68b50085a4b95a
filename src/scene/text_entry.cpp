#include "scene/text_entry.h"

#include "state/editor_state.h"

bool MenuIsOpen() { return editorState.menu.has_value(); }

bool MenuIsOpen(MenuKind kind) { return editorState.menu && editorState.menu->kind == kind; }

void CloseMenu() { editorState.menu.reset(); }

void CloseEntriesAndMenu() {
    CloseMenu();
    editorState.nameEntry = {};
    editorState.numberEntry = {};
    editorState.typedHalf = 0;
    editorState.componentSearchActive = false;
}
