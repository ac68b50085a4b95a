#include "project/files_menus.h"

#include "editor/popup_menu.h"
#include "project/asset_commands.h"
#include "project/prefab_editor.h"
#include "scene/name_entry.h"
#include "scene/status.h"
#include "state/editor_state.h"

static void Open(const MenuChoice& choice) { OpenAsset(choice.menu.item); }
static void Duplicate(const MenuChoice& choice) { DuplicateAsset(choice.menu.item); }
static void Delete(const MenuChoice& choice) { DeleteAsset(choice.menu.item); }

static void Rename(const MenuChoice& choice) {
    const auto item = static_cast<size_t>(choice.menu.item);
    if (item >= editorState.fileEntries.size()) return;
    StartFileRename(choice.menu.item, editorState.fileEntries[item].name);
}

constexpr MenuItem kItemItems[] = {
    {34, L"Otevrit", Open},
    {62, L"Prejmenovat", Rename},
    {90, L"Duplikovat", Duplicate},
    {118, L"Odstranit", Delete},
};

// clang-format off
constexpr MenuItem kCreateItems[] = {
    {34,  L"Vytvorit slozku",    [](const MenuChoice&) { CreateFolderAsset(); }},
    {62,  L"Vytvorit script",    [](const MenuChoice&) { CreateScriptAsset(); }},
    {90,  L"Vytvorit scene",     [](const MenuChoice&) { CreateSceneAsset(); }},
    {118, L"Vytvorit blueprint", [](const MenuChoice&) { CreateBlueprintAsset(); }},
    {146, L"Vytvorit prefab",    [](const MenuChoice&) { SavePrefabFromSelection(); }},
};
// clang-format on

constexpr MenuTable kItemMenu{.kind = MenuKind::FilesItem,
                              .title = L"Soubor",
                              .width = 168,
                              .height = 150,
                              .keptRight = 178,
                              .keptBelow = 160,
                              .cutAt = kMenuCut,
                              .items = kItemItems};

constexpr MenuTable kCreateMenu{.kind = MenuKind::FilesCreate,
                                .title = L"Files",
                                .width = 194,
                                .height = 178,
                                .keptRight = 204,
                                .keptBelow = 188,
                                .cutAt = kMenuCut,
                                .items = kCreateItems};

void OpenFilesMenu(int32_t item, Point pointer, const EditorLayout& layout) {
    const bool isAboutItem = item >= 0;
    OpenMenu(isAboutItem ? kItemMenu : kCreateMenu, item, pointer, MenuAreaOf(layout));
    SetStatus(isAboutItem ? L"Otevreno menu polozky projektu."
                          : L"Otevreno Files menu pro vytvoreni nove polozky.");
}

void DrawFilesMenus(const EditorLayout& layout) {
    DrawMenu(kItemMenu, MenuAreaOf(layout));
    DrawMenu(kCreateMenu, MenuAreaOf(layout));
}

bool ClickFilesMenus(Point pointer, const EditorLayout& layout) {
    return ClickMenu(kItemMenu, pointer, MenuAreaOf(layout)) ||
           ClickMenu(kCreateMenu, pointer, MenuAreaOf(layout));
}
