// Pop-up menus: their look, their places, and what a press on one does. What is in a menu is a table.
#pragma once

#include "base/rect.h"
#include "editor/theme.h"
#include "state/editor_state.h"

#include <cstdint>
#include <span>

// The client area that a menu lies in, in pixels.
struct MenuArea {
    int32_t width = 0, height = 0;
};

// That of a screen, from its layout.
template <typename Layout>
MenuArea MenuAreaOf(const Layout& layout) {
    return {layout.width, layout.height};
}

// What an item is told when it is chosen. The menu is closed by then.
struct MenuChoice {
    PopupMenu menu{};
    MenuArea area{};
};

struct MenuItem {
    int32_t top = 0;  // pixels below the menu's top
    const wchar_t* label = L"";
    void (*run)(const MenuChoice& choice) = nullptr;
    int32_t height = 24;
    TextColor color = kMenuText;
};

// What a press inside a menu does where there is no item. A press on an item closes the menu and runs it.
enum class PressBesideItems {
    StaysOpen,
    Closes,            // in the title too
    ClosesBelowTitle,  // the title, 34 pixels high, takes it and stays
};

constexpr int32_t kMenuCut = 6;  // MenuTable::cutAt of the editor's menus

struct MenuTable {
    MenuKind kind{};
    const wchar_t* title = L"";
    int32_t titleTop = 8, titleHeight = 15;  // pixels; the height is the font's
    TextColor titleColor = kMenuTitle;
    int32_t textTop = 4;  // of an item's label, pixels below the item's top
    int32_t width = 0, height = 0;
    // Where the whole menu lies. Null: at the corner that opening chose.
    Rect (*box)(Point corner, const MenuArea& area) = nullptr;
    int32_t keptRight = 0,
            keptBelow = 0;        // pixels that opening leaves right of and below the corner; 0 for any place
    int32_t cutAt = 0;            // pixels before the window's right and bottom edges where its drawing ends
    int32_t pressAbove = 0;       // how far above its drawn top an item takes a press, pixels
    bool pressOnBoxOnly = false;  // else an item takes presses across the menu, with the gap below it
    PressBesideItems beside = PressBesideItems::ClosesBelowTitle;
    bool takesPressOutside = false;  // which closes it in any case; else the press goes on to what lies there
    void (*choose)(const MenuChoice& choice) =
        nullptr;  // runs before an item, and for a press that closes beside them
    std::span<const MenuItem> items{};
};

// Opens the menu with its corner at the pointer, moved into the window, and closes any other one. `item` is
// what the menu is about, -1 for nothing.
void OpenMenu(const MenuTable& menu, int32_t item, Point pointer, const MenuArea& area);

// Nothing while it is closed.
void DrawMenu(const MenuTable& menu, const MenuArea& area);

// Runs the item under the pointer, closes the menu, or both. True when the press goes no further.
bool ClickMenu(const MenuTable& menu, Point pointer, const MenuArea& area);

// The box of an item in a menu that lies at `box`, cut where the menu ends.
Rect MenuItemRect(const MenuItem& item, const Rect& box);
