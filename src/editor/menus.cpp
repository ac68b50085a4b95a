#include "editor/menus.h"

#include "editor/popup_menu.h"
#include "scene/commands.h"
#include "scene/name_entry.h"
#include "scene/selection.h"
#include "state/editor_state.h"

#include <algorithm>

// The menu's object, or the last one when the scene has become shorter while the menu was open.
static void SelectMenuObject(int32_t object) {
    editorState.selectedIndex = std::min(object, static_cast<int32_t>(editorState.scene.size()) - 1);
}

static void CreateChild(int32_t) { addChild(editorState.selectedIndex); }

static void Rename(int32_t) {
    if (SelectionIsValid()) StartObjectRename(editorState.selectedIndex);
}

static void Duplicate(int32_t) { duplicateSelected(); }
static void Delete(int32_t) { deleteSelected(); }

constexpr MenuItem kObjectItems[] = {
    {L"Create Child", CreateChild},
    {L"Rename", Rename},
    {L"Duplicate", Duplicate},
    {L"Delete", Delete},
};

constexpr MenuItem kCreateItems[] = {
    {L"Object", [](int32_t) { addCube(); }},   {L"Entity", [](int32_t) { addEntity(); }},
    {L"Camera", [](int32_t) { addCamera(); }}, {L"Light", [](int32_t) { addLight(); }},
    {L"Plane", [](int32_t) { addPlane(); }},   {L"Text", [](int32_t) { addText(); }},
};

constexpr MenuTable kObjectMenu{.state = &EditorState::objectMenu,
                                .title = L"Hierarchy",
                                .openMessage = L"Otevreno menu objektu v Hierarchy.",
                                .width = 178,
                                .height = 150,
                                .keptRight = 188,
                                .keptBelow = 160,
                                .firstItem = 34,
                                .choose = SelectMenuObject,
                                .closesBesideItems = true,
                                .takesPressOutside = false,
                                .items = kObjectItems};

constexpr MenuTable kCreateMenu{.state = &EditorState::createMenu,
                                .title = L"Vytvorit",
                                .openMessage = L"Otevreno Create menu.",
                                .width = 170,
                                .height = 206,
                                .keptRight = 180,
                                .keptBelow = 188,
                                .firstItem = 32,  // two pixels above where it is drawn
                                .closesBesideItems = false,
                                .takesPressOutside = true,
                                .items = kCreateItems};

void OpenObjectMenu(int32_t object, Point pointer, const EditorLayout& layout) {
    editorState.selectedIndex = object;
    OpenMenu(kObjectMenu, object, pointer, layout);
}

void OpenCreateMenu(Point pointer, const EditorLayout& layout) { OpenMenu(kCreateMenu, -1, pointer, layout); }

void DrawMenus(const EditorLayout& layout) {
    DrawMenu(kObjectMenu, layout);
    DrawMenu(kCreateMenu, layout);
}

bool ClickMenus(Point pointer) { return ClickMenu(kObjectMenu, pointer) || ClickMenu(kCreateMenu, pointer); }
