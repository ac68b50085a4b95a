#include "editor/menus.h"

#include "editor/popup_menu.h"
#include "scene/commands.h"
#include "scene/name_entry.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>

// Selects the menu's object, or the last one if the scene has become shorter while the menu was open. The
// commands of the menu then work on the selection, like those of the keys.
static void SelectMenuObject(const MenuChoice& choice) {
    const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
    editorState.selectedIndex = std::min(choice.menu.item, last);
}

static void CreateChild(const MenuChoice&) { addChild(editorState.selectedIndex); }

static void Rename(const MenuChoice&) {
    if (SelectionIsValid()) StartObjectRename(editorState.selectedIndex);
}

static void Duplicate(const MenuChoice&) { duplicateSelected(); }
static void Delete(const MenuChoice&) { deleteSelected(); }

constexpr MenuItem kObjectItems[] = {
    {34, L"Create Child", CreateChild},
    {62, L"Rename", Rename},
    {90, L"Duplicate", Duplicate},
    {118, L"Delete", Delete},
};

// clang-format off
constexpr MenuItem kCreateItems[] = {
    {34,  L"Object", [](const MenuChoice&) { addCube(); }},
    {62,  L"Entity", [](const MenuChoice&) { addEntity(); }},
    {90,  L"Camera", [](const MenuChoice&) { addCamera(); }},
    {118, L"Light",  [](const MenuChoice&) { addLight(); }},
    {146, L"Plane",  [](const MenuChoice&) { addPlane(); }},
    {174, L"Text",   [](const MenuChoice&) { addText(); }},
};
// clang-format on

constexpr MenuTable kObjectMenu{.kind = MenuKind::Object,
                                .title = L"Hierarchy",
                                .width = 178,
                                .height = 150,
                                .keptRight = 188,
                                .keptBelow = 160,
                                .cutAt = kMenuCut,
                                .choose = SelectMenuObject,
                                .items = kObjectItems};

constexpr MenuTable kCreateMenu{.kind = MenuKind::Create,
                                .title = L"Vytvorit",
                                .width = 170,
                                .height = 206,
                                .keptRight = 180,
                                .keptBelow = 188,
                                .cutAt = kMenuCut,
                                .pressAbove = 2,
                                .beside = PressBesideItems::StaysOpen,
                                .takesPressOutside = true,
                                .items = kCreateItems};

void OpenObjectMenu(int32_t object, Point pointer, const EditorLayout& layout) {
    editorState.selectedIndex = object;
    OpenMenu(kObjectMenu, object, pointer, MenuAreaOf(layout));
    SetStatus(L"Otevreno menu objektu v Hierarchy.");
}

void OpenCreateMenu(Point pointer, const EditorLayout& layout) {
    OpenMenu(kCreateMenu, -1, pointer, MenuAreaOf(layout));
    SetStatus(L"Otevreno Create menu.");
}

void DrawMenus(const EditorLayout& layout) {
    DrawMenu(kObjectMenu, MenuAreaOf(layout));
    DrawMenu(kCreateMenu, MenuAreaOf(layout));
}

bool ClickMenus(Point pointer, const EditorLayout& layout) {
    return ClickMenu(kObjectMenu, pointer, MenuAreaOf(layout)) ||
           ClickMenu(kCreateMenu, pointer, MenuAreaOf(layout));
}
