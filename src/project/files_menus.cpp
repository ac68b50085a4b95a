#include "project/files_menus.h"

#include "editor/popup_menu.h"
#include "project/asset_commands.h"
#include "project/asset_creation.h"
#include "project/prefab_editor.h"
#include "scene/name_entry.h"
#include "state/editor_state.h"

static void Rename(int32_t item) {
    if (item < 0 || static_cast<size_t>(item) >= editorState.fileEntries.size()) return;
    StartFileRename(item, editorState.fileEntries[static_cast<size_t>(item)].name);
}

constexpr MenuItem kItemItems[] = {
    {L"Otevrit", OpenAsset},
    {L"Prejmenovat", Rename},
    {L"Duplikovat", DuplicateAsset},
    {L"Odstranit", DeleteAsset},
};

constexpr MenuItem kCreateItems[] = {
    {L"Vytvorit slozku", [](int32_t) { CreateFolderAsset(); }},
    {L"Vytvorit script", [](int32_t) { CreateScriptAsset(); }},
    {L"Vytvorit scene", [](int32_t) { CreateSceneAsset(); }},
    {L"Vytvorit blueprint", [](int32_t) { CreateBlueprintAsset(); }},
    {L"Vytvorit prefab", [](int32_t) { SavePrefabFromSelection(); }},
};

constexpr MenuTable kItemMenu{.state = &EditorState::filesItemMenu,
                              .title = L"Soubor",
                              .openMessage = L"Otevreno menu polozky projektu.",
                              .width = 168,
                              .height = 150,
                              .keptRight = 178,
                              .keptBelow = 160,
                              .items = kItemItems};

constexpr MenuTable kCreateMenu{.state = &EditorState::filesCreateMenu,
                                .title = L"Files",
                                .openMessage = L"Otevreno Files menu pro vytvoreni nove polozky.",
                                .width = 194,
                                .height = 178,
                                .keptRight = 204,
                                .keptBelow = 188,
                                .items = kCreateItems};

void OpenFilesMenu(int32_t item, Point pointer, const EditorLayout& layout) {
    OpenMenu(item >= 0 ? kItemMenu : kCreateMenu, item, pointer, layout);
}

void DrawFilesMenus(const EditorLayout& layout) {
    DrawMenu(kItemMenu, layout);
    DrawMenu(kCreateMenu, layout);
}

bool ClickFilesMenus(Point pointer) {
    return ClickMenu(kItemMenu, pointer) || ClickMenu(kCreateMenu, pointer);
}
