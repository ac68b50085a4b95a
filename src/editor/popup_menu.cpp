#include "editor/popup_menu.h"

#include "editor/theme.h"
#include "render/frame_buffer.h"
#include "render/panel_box.h"
#include "scene/status.h"
#include "scene/text_entry.h"

#include <algorithm>

constexpr int32_t kTitleHeight = 34;  // pixels
constexpr int32_t kItemPitch = 28, kItemHeight = 24;
constexpr int32_t kMargin = 8;      // between an item and the box
constexpr int32_t kWindowEdge = 6;  // kept free right of and below the box

void OpenMenu(const MenuTable& menu, int32_t item, Point pointer, const EditorLayout& layout) {
    CloseMenus();
    const Point corner{std::clamp(pointer.x, 0, std::max(layout.width - menu.keptRight, 0)),
                       std::clamp(pointer.y, 0, std::max(layout.height - menu.keptBelow, 0))};
    editorState.*menu.state = {.open = true, .corner = corner, .item = item};
    SetStatus(menu.openMessage);
}

void DrawMenu(const MenuTable& menu, const EditorLayout& layout) {
    const PopupMenu& state = editorState.*menu.state;
    if (!state.open) return;
    const auto [left, top] = state.corner;
    const int32_t right = std::min(layout.width - kWindowEdge, left + menu.width);
    const int32_t bottom = std::min(layout.height - kWindowEdge, top + menu.height);
    DrawPanelBox({left, top, right, bottom}, kMenuFill, kMenuLightEdge);
    DrawText(left + 12, top + 8, menu.title, kMenuTitle, 15, kSemiBold);

    int32_t y = top + kTitleHeight;
    for (const MenuItem& item : menu.items) {
        DrawPanelBox({left + kMargin, y, right - kMargin, y + kItemHeight}, kMenuItemFill, kMenuItemEdge);
        DrawText(left + 16, y + 4, item.label, kMenuText, 14, kSemiBold);
        y += kItemPitch;
    }
}

bool ClickMenu(const MenuTable& menu, Point pointer) {
    const PopupMenu pressed = editorState.*menu.state;
    if (!pressed.open) return false;

    const auto [left, top] = pressed.corner;
    if (!Contains({left, top, left + menu.width, top + menu.height}, pointer)) {
        editorState.*menu.state = {};
        return menu.takesPressOutside;
    }
    const int32_t below = pointer.y - top;
    if (below < kTitleHeight) return true;

    const auto item = static_cast<size_t>((below - menu.firstItem) / kItemPitch);
    const bool isItem = item < menu.items.size();
    if (!isItem && !menu.closesBesideItems) return true;
    editorState.*menu.state = {};
    if (menu.choose) menu.choose(pressed.item);
    if (isItem) menu.items[item].run(pressed.item);
    return true;
}
