// The look and the rules that pop-up menus share. What is in a menu, and what its items run, is a table.
#pragma once

#include "base/rect.h"
#include "editor/layout.h"
#include "state/editor_state.h"

#include <cstdint>
#include <span>

struct MenuItem {
    const wchar_t* label = L"";
    void (*run)(int32_t item) = nullptr;  // gets PopupMenu::item; the menu is closed by then
};

struct MenuTable {
    PopupMenu EditorState::*state = nullptr;
    const wchar_t* title = L"";
    const wchar_t* openMessage = L"";
    int32_t width = 0, height = 0;           // pixels; drawn smaller where the window ends, hit as a whole
    int32_t keptRight = 0, keptBelow = 0;    // pixels that opening leaves right of and below the corner
    int32_t firstItem = 34;                  // pixels below the top where the press on the first item begins
    void (*choose)(int32_t item) = nullptr;  // runs before an item, and for a press that closes beside them
    bool closesBesideItems = true;           // by a press inside that hits no item; the title never closes
    bool takesPressOutside = false;  // which closes it in any case; else the press goes on to what lies there
    std::span<const MenuItem> items{};
};

// Opens the menu with its corner at the pointer, moved into the window, and closes every other one. `item` is
// what the menu is about, -1 for nothing.
void OpenMenu(const MenuTable& menu, int32_t item, Point pointer, const EditorLayout& layout);

// Nothing while it is closed.
void DrawMenu(const MenuTable& menu, const EditorLayout& layout);

// Runs the item under the pointer, closes the menu, or both. True when the press goes no further.
bool ClickMenu(const MenuTable& menu, Point pointer);
