#include "blueprint/blueprint_mouse.h"

#include "blueprint/blueprint_editor.h"
#include "editor/popup_menu.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "state/editor_state.h"

static bool PressTopBar(Point pointer, const BlueprintLayout& layout) {
    const bool onScene = Contains(layout.sceneButton, pointer), onSave = Contains(layout.saveButton, pointer);
    if (!onScene && !onSave) return false;
    CloseMenu();
    if (onScene) {
        CloseBlueprintEditor();
    } else {
        SaveBlueprintEditor();
    }
    return true;
}

static void AddNode(const wchar_t* title, const MenuChoice& choice) {
    const BlueprintLayout layout = LayoutBlueprint(choice.area.width, choice.area.height);
    AddBlueprintNode(title, PlaceOfAddedNode(choice.menu.corner, layout));
}

constexpr MenuItem kAddNodeItems[] = {
    {36, L"Event", [](const MenuChoice& choice) { AddNode(L"Event", choice); }},
    {64, L"Print String", [](const MenuChoice& choice) { AddNode(L"Print String", choice); }},
    {92, L"Branch", [](const MenuChoice& choice) { AddNode(L"Branch", choice); }},
};

constexpr MenuTable kAddNodeMenu{
    .kind = MenuKind::AddNode,
    .title = L"Add Node",
    .titleTop = 10,
    .titleHeight = 14,
    .titleColor = TextColor{0xF6F2EE},
    .box = [](Point corner,
              const MenuArea& area) { return AddNodeMenuRect(corner, area.width, area.height); },
    .beside = PressBesideItems::Closes,
    .takesPressOutside = true,
    .items = kAddNodeItems};

void DrawAddNodeMenu(const BlueprintLayout& layout) { DrawMenu(kAddNodeMenu, MenuAreaOf(layout)); }

static void PressNode(Point pointer, const BlueprintLayout& layout) {
    const int32_t index = NodeAt(pointer, editorState.blueprintNodes, layout);
    if (index < 0) return;
    const Rect node = NodeRect(editorState.blueprintNodes[static_cast<size_t>(index)]);
    StartGesture(BlueprintDrag{.node = index, .grab{pointer.x - node.left, pointer.y - node.top}});
    SetStatus(L"Tahni Blueprint node mysi.");
}

void PressBlueprint(Point pointer, const BlueprintLayout& layout) {
    if (PressTopBar(pointer, layout) || ClickMenu(kAddNodeMenu, pointer, MenuAreaOf(layout))) return;
    PressNode(pointer, layout);
}

void DragBlueprintNode(const BlueprintDrag& drag, Point pointer, const BlueprintLayout& layout) {
    MoveBlueprintNode(drag.node, PlaceOfDraggedNode(pointer, drag.grab, layout));
}

void ReleaseBlueprint() {
    if (editorState.blueprintDirty) SaveBlueprintEditor();
}

void PressRightInBlueprint(Point pointer, const BlueprintLayout& layout) {
    CloseMenu();
    if (!Contains(layout.canvas, pointer)) return;
    OpenMenu(kAddNodeMenu, -1, pointer, MenuAreaOf(layout));
    SetStatus(L"Blueprint: vyber node k pridani.");
}
