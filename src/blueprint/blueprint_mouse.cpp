#include "blueprint/blueprint_mouse.h"

#include "blueprint/blueprint_editor.h"
#include "scene/gestures.h"
#include "scene/status.h"
#include "scene/text_entry.h"
#include "state/editor_state.h"

static bool PressTopBar(Point pointer, const BlueprintLayout& layout) {
    const bool onScene = Contains(layout.sceneButton, pointer), onSave = Contains(layout.saveButton, pointer);
    if (!onScene && !onSave) return false;
    CloseMenus();
    if (onScene) {
        CloseBlueprintEditor();
    } else {
        SaveBlueprintEditor();
    }
    return true;
}

static bool PressAddNodeMenu(Point pointer, const BlueprintLayout& layout) {
    const PopupMenu pressed = editorState.addNodeMenu;
    if (!pressed.open) return false;
    CloseMenus();
    const Rect menu = AddNodeMenuRect(pressed.corner, layout);
    if (!Contains(menu, pointer)) return true;
    const int32_t item = AddNodeItemAt(pointer, menu);
    if (item < 0) return true;
    AddBlueprintNode(kAddNodeTitles[static_cast<size_t>(item)], PlaceOfAddedNode(pressed.corner, layout));
    return true;
}

static void PressNode(Point pointer, const BlueprintLayout& layout) {
    const int32_t index = NodeAt(pointer, editorState.blueprintNodes, layout);
    if (index < 0) return;
    const Rect node = NodeRect(editorState.blueprintNodes[static_cast<size_t>(index)]);
    StartGesture(BlueprintDrag{.node = index, .grab{pointer.x - node.left, pointer.y - node.top}});
    SetStatus(L"Tahni Blueprint node mysi.");
}

void PressBlueprint(Point pointer, const BlueprintLayout& layout) {
    if (PressTopBar(pointer, layout) || PressAddNodeMenu(pointer, layout)) return;
    PressNode(pointer, layout);
}

void DragBlueprintNode(const BlueprintDrag& drag, Point pointer, const BlueprintLayout& layout) {
    MoveBlueprintNode(drag.node, PlaceOfDraggedNode(pointer, drag.grab, layout));
}

void ReleaseBlueprint() {
    if (editorState.blueprintDirty) SaveBlueprintEditor();
}

void PressRightInBlueprint(Point pointer, const BlueprintLayout& layout) {
    CloseMenus();
    if (!Contains(layout.canvas, pointer)) return;
    editorState.addNodeMenu = {.open = true, .corner = pointer};
    SetStatus(L"Blueprint: vyber node k pridani.");
}
