#include "scene/text_entry.h"

#include "state/editor_state.h"

#include <algorithm>

constexpr PopupMenu EditorState::*kMenus[] = {
    &EditorState::createMenu,    &EditorState::objectMenu,  &EditorState::filesCreateMenu,
    &EditorState::filesItemMenu, &EditorState::projectMenu, &EditorState::addNodeMenu,
};

bool MenuIsOpen() {
    return std::ranges::any_of(kMenus, [](const auto menu) { return (editorState.*menu).open; });
}

void CloseMenus() {
    for (const auto menu : kMenus) editorState.*menu = {};
}

void CloseEntriesAndMenus() {
    CloseMenus();
    editorState.nameEntry = {};
    editorState.numberEntry = {};
    editorState.typedHalf = 0;
    editorState.componentSearchActive = false;
}
