#include "editor/popup_menu.h"

#include "render/frame_buffer.h"
#include "scene/interaction.h"

#include <algorithm>

constexpr int32_t kTitlePress = 34;       // pixels of a menu's top that belong to its title
constexpr int32_t kItemPitch = 28;        // from one item to the next
constexpr int32_t kMargin = 8;            // between an item and the box
constexpr int32_t kLeastItemHeight = 18;  // what a label needs

// The menu that is open, when it is this one.
static const PopupMenu* Opened(const MenuTable& menu) {
    return MenuIsOpen(menu.kind) ? &*editorState.menu : nullptr;
}

// Where the menu lies now: the corner is kept, the box is worked out from it again, because the window may
// have changed its size while the menu was open.
static Rect BoxOf(const MenuTable& menu, Point corner, const MenuArea& area) {
    if (menu.box) return menu.box(corner, area);
    return {corner.x, corner.y, corner.x + menu.width, corner.y + menu.height};
}

// At the pointer, moved back into the window as far as the menu's table wants it to be.
void OpenMenu(const MenuTable& menu, int32_t item, Point pointer, const MenuArea& area) {
    const auto place = [](int32_t position, int32_t room, int32_t kept) {
        return kept > 0 ? std::clamp(position, 0, std::max(room - kept, 0)) : position;
    };
    const Point corner{place(pointer.x, area.width, menu.keptRight),
                       place(pointer.y, area.height, menu.keptBelow)};
    editorState.menu = {.kind = menu.kind, .corner = corner, .openedAt = pointer, .item = item};
}

Rect MenuItemRect(const MenuItem& item, const Rect& box) {
    const int32_t top = box.top + item.top;
    return {box.left + kMargin, top, box.right - kMargin, std::min(top + item.height, box.bottom)};
}

// The item under the pointer is lit up, once the pointer has moved: a menu opens under it.
static bool IsLit(const Rect& place, const PopupMenu& opened) {
    return editorState.pointer != opened.openedAt && Contains(place, editorState.pointer);
}

static void DrawItem(const MenuItem& item, const MenuTable& menu, const Rect& place, bool isLit) {
    DrawPanelBox(place, isLit ? kLitFill : kMenuItemFill, isLit ? kLitEdge : kMenuItemEdge);
    DrawText(place.left + kMargin, place.top + menu.textTop, item.label, item.color, 14, kSemiBold);
}

// A menu that does not fit is cut at the window's edge, and its items end where no label would fit any more.
// Their places are worked out from the whole box, as a click does.
void DrawMenu(const MenuTable& menu, const MenuArea& area) {
    const PopupMenu* opened = Opened(menu);
    if (!opened) return;
    const Rect whole = BoxOf(menu, opened->corner, area);
    Rect box = whole;
    if (menu.cutAt > 0) {
        box.right = std::min(box.right, area.width - menu.cutAt);
        box.bottom = std::min(box.bottom, area.height - menu.cutAt);
    }
    if (Width(box) <= 0 || Height(box) <= 0) return;
    DrawPanelBox(box, kMenuFill, kMenuLightEdge);
    DrawText(box.left + 12, box.top + menu.titleTop, menu.title, menu.titleColor, menu.titleHeight,
             kSemiBold);
    for (const MenuItem& item : menu.items) {
        const Rect place = MenuItemRect(item, {box.left, whole.top, box.right, whole.bottom});
        if (Height(place) < kLeastItemHeight) return;
        DrawItem(item, menu, place, IsLit(place, *opened));
    }
}

static const MenuItem* ItemAt(const MenuTable& menu, const Rect& box, Point pointer) {
    for (const MenuItem& item : menu.items) {
        const int32_t top = box.top + item.top - menu.pressAbove;
        const Rect row{box.left, top, box.right, top + kItemPitch};
        if (Contains(menu.pressOnBoxOnly ? MenuItemRect(item, box) : row, pointer)) return &item;
    }
    return nullptr;
}

// What a press does depends on where it falls: outside it closes the menu, on the title it does nothing, on
// an item it closes the menu and runs the item, beside the items it does what the menu's table says. The menu
// is closed before the item runs, because the item may open another menu, an entry or a dialog.
bool ClickMenu(const MenuTable& menu, Point pointer, const MenuArea& area) {
    if (!Opened(menu)) return false;
    const MenuChoice choice{*Opened(menu), area};

    const Rect box = BoxOf(menu, choice.menu.corner, area);
    if (!Contains(box, pointer)) {
        CloseMenu();
        return menu.takesPressOutside;
    }
    const bool onTitle = pointer.y - box.top < kTitlePress;
    if (onTitle && menu.beside != PressBesideItems::Closes) return true;

    const MenuItem* item = ItemAt(menu, box, pointer);
    if (!item && menu.beside == PressBesideItems::StaysOpen) return true;
    CloseMenu();
    if (menu.choose) menu.choose(choice);
    if (item) item->run(choice);
    return true;
}
