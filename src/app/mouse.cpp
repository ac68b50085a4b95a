#include "app/mouse.h"

#include "app/current_layout.h"
#include "app/files_drop.h"
#include "app/top_bar_actions.h"
#include "blueprint/blueprint_editor.h"
#include "blueprint/blueprint_mouse.h"
#include "editor/bottom_panel.h"
#include "editor/drop_assignments.h"
#include "editor/hierarchy.h"
#include "editor/inspector.h"
#include "editor/menus.h"
#include "editor/popup_menu.h"
#include "editor/tool_palette.h"
#include "platform/window.h"
#include "project/files_menus.h"
#include "project/files_page.h"
#include "scene/editor_camera.h"
#include "scene/gestures.h"
#include "scene/name_entry.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "scene/text_entry.h"
#include "state/editor_state.h"
#include "viewport/current_view.h"
#include "viewport/gizmo_drag.h"
#include "viewport/pick.h"

#include <cstdlib>

constexpr int32_t kLookThreshold = 5;  // pixels from the press that make a right click a look

static bool EntryIsOpen() { return NameEntryIsOpen() || editorState.numberEntry.open; }

// With the left button.
static bool IsDragging() {
    return editorState.panelResize.edge != 0 || editorState.gizmoDrag.axis != 0 ||
           editorState.hierarchyDrag.pressed || editorState.filesDrag.pressed;
}

// Only one drag runs at a time: until it ends, the left button starts nothing else. While the right button
// looks around it does all but drag.
static bool IgnoresLeftButton() { return editorState.runtimeMode || EntryIsOpen() || IsDragging(); }

static bool ClickOpenMenu(Point pointer, const EditorLayout&) {
    editorState.pressedInMenu = ClickFilesMenus(pointer) || ClickMenus(pointer);
    return editorState.pressedInMenu;
}

static bool PressSplitter(Point pointer, const EditorLayout& layout) {
    const PanelLayout sizes = FitPanelsToWindow(editorState.panels, layout.width, layout.height);
    const int32_t edge = SplitterHitTest(pointer, sizes, layout.width, layout.height);
    if (edge == 0) return false;
    if (!DragMayStart()) return true;
    CloseMenus();
    editorState.panelResize = {.edge = edge, .press = pointer, .start = sizes};
    CaptureMouse();
    SetStatus(L"Tahni hranu panelu pro zmenu velikosti.");
    return true;
}

static bool PressGizmo(Point pointer, const EditorLayout& layout) {
    return StartGizmoDrag(pointer, layout.viewport);
}

static bool PressViewport(Point pointer, const EditorLayout& layout) {
    if (!Contains(layout.viewport, pointer)) return false;
    const int32_t picked = PickObject(CurrentPickView(layout.viewport), pointer);
    if (picked < 0) return true;
    editorState.selectedIndex = picked;
    SetStatus(L"Objekt vybran kliknutim ve Scene viewportu.");
    return true;
}

// From the most transient to the least: the first that takes the press has it.
constexpr bool (*kPressTakers[])(Point, const EditorLayout&) = {
    ClickTopBar,    ClickOpenMenu,    PressSplitter, ClickBottomTabs, ClickInspector,
    PressFilesPage, ClickToolPalette, PressGizmo,    PressViewport,   PressHierarchy,
};

static void PressEditor(Point pointer) {
    const EditorLayout layout = CurrentLayout();
    for (const auto take : kPressTakers) {
        if (take(pointer, layout)) return;
    }
}

// The press may have put another screen in the place of the view that is looked around in.
static void EndLookWithoutView() {
    if (!editorState.mouseLook.armed || !(HubIsShown() || BlueprintEditorIsShown())) return;
    editorState.mouseLook = {};
    ReleaseMouse();
}

void PressLeft(Point pointer) {
    if (IgnoresLeftButton()) return;
    editorState.pointer = pointer;
    editorState.pressedInMenu = false;
    if (BlueprintEditorIsShown()) return PressBlueprint(pointer, CurrentBlueprintLayout());
    PressEditor(pointer);
    EndLookWithoutView();
}

static bool IsOnNameField(Point pointer, const EditorLayout& layout) {
    const int32_t x = pointer.x - layout.inspectorLeft;
    return Contains(layout.inspector, pointer) && x >= 46 && x <= 229 && pointer.y >= 93 && pointer.y <= 113;
}

void DoubleClickLeft(Point pointer) {
    if (IgnoresLeftButton()) return;
    if (editorState.filesCreateMenu.open) return;  // the first press opened it, under the pointer
    // A menu lies, or has just lain, over what could be double-clicked, and nodes are only pressed.
    const bool isPress = MenuIsOpen() || editorState.pressedInMenu || BlueprintEditorIsShown();
    if (isPress) return PressLeft(pointer);
    const EditorLayout layout = CurrentLayout();
    const int32_t row = HierarchyObjectAt(pointer, layout);
    if (OpenFilesItemAt(pointer, layout)) return EndLookWithoutView();
    if (IsOnNameField(pointer, layout) && SelectionIsInspected()) {
        StartObjectRename(editorState.selectedIndex);
    } else if (IsObjectIndex(row)) {
        editorState.selectedIndex = row;
        FocusOnObject(row);
    } else {
        PressLeft(pointer);  // fast clicks on a stepping value all count
    }
}

static bool IsOverInspector(Point pointer) { return IsInInspectorBand(pointer, CurrentLayout()); }

// A dragged object becomes a reference of the selected one when it is let go over the Inspector.
static void ReleaseHierarchyAt(Point pointer) {
    const HierarchyDrag drag = editorState.hierarchyDrag;
    if (drag.dragging && IsOverInspector(pointer)) {
        editorState.hierarchyDrag = {};
        AssignObjectReference(drag.source);
    } else {
        ReleaseHierarchy();
    }
}

void ReleaseLeft(Point pointer) {
    if (BlueprintEditorIsShown()) return ReleaseBlueprint();
    if (editorState.panelResize.edge != 0) {
        editorState.panelResize = {};
        SetStatus(L"Velikost panelu upravena.");
    }
    if (editorState.filesDrag.pressed) ReleaseFilesItem(pointer, CurrentLayout());
    if (editorState.hierarchyDrag.pressed) ReleaseHierarchyAt(pointer);
    FinishGizmoDrag();
    if (!editorState.mouseLook.armed) ReleaseMouse();
}

void PressRight(Point pointer) {
    editorState.pointer = pointer;
    if (EntryIsOpen() || IsDragging()) return;
    if (BlueprintEditorIsShown()) return PressRightInBlueprint(pointer, CurrentBlueprintLayout());
    editorState.mouseLook = {
        .armed = true, .turnsView = Contains(CurrentLayout().viewport, pointer), .press = pointer};
    CaptureMouse();
}

static void OpenMenuAt(Point pointer) {
    const EditorLayout layout = CurrentLayout();
    const int32_t object = HierarchyObjectAt(pointer, layout);
    if (OpenFilesMenuAt(pointer, layout) || Contains(layout.bottom, pointer)) return;
    if (IsObjectIndex(object)) {
        OpenObjectMenu(object, pointer, layout);
    } else {
        OpenCreateMenu(pointer, layout);
    }
}

void ReleaseRight() {
    const MouseLook look = editorState.mouseLook;
    if (!look.armed) return;
    editorState.mouseLook = {};
    ReleaseMouse();
    if (look.moved) {
        SetStatus(L"Mouse look vypnuty.");
    } else if (!editorState.runtimeMode) {
        OpenMenuAt(look.press);
    }
}

static void MovePanelEdge(Point pointer) {
    const PanelResize& resize = editorState.panelResize;
    PanelLayout sizes = resize.start;
    if (resize.edge == 1) sizes.hierarchyWidth += pointer.x - resize.press.x;
    if (resize.edge == 2) sizes.inspectorWidth -= pointer.x - resize.press.x;
    if (resize.edge == 3) sizes.bottomHeight -= pointer.y - resize.press.y;
    const EditorLayout layout = CurrentLayout();
    editorState.panels = FitPanelsToWindow(sizes, layout.width, layout.height);
}

static void DragHierarchyTo(Point pointer) {
    DragInHierarchy(pointer);
    // There it becomes a reference, and no row at that height is meant.
    if (IsOverInspector(pointer)) editorState.hierarchyDrag.dropTarget = -1;
}

static void MoveLook(Point from, Point to) {
    MouseLook& look = editorState.mouseLook;
    if (look.turnsView) LookWithMouse(to.x - from.x, to.y - from.y);
    const int32_t distance = std::abs(to.x - look.press.x) + std::abs(to.y - look.press.y);
    look.moved = look.moved || distance > kLookThreshold;
}

void MoveMouse(Point pointer) {
    const Point last = editorState.pointer;
    editorState.pointer = pointer;
    ShowArrowCursor();
    if (EntryIsOpen()) return;
    if (BlueprintEditorIsShown()) return MoveInBlueprint(pointer, CurrentBlueprintLayout());
    if (editorState.panelResize.edge != 0) {
        MovePanelEdge(pointer);
    } else if (editorState.hierarchyDrag.pressed) {
        DragHierarchyTo(pointer);
    } else if (editorState.filesDrag.pressed) {
        DragFilesItem(pointer);
    } else if (editorState.mouseLook.armed) {
        MoveLook(last, pointer);
    } else if (editorState.gizmoDrag.axis != 0) {
        MoveGizmoDrag(pointer);
    }
}

void EndDrags() {
    editorState.panelResize = {};
    editorState.mouseLook = {};
    editorState.gizmoDrag = {};
    editorState.hierarchyDrag = {};
    editorState.filesDrag = {};
    editorState.blueprintDrag = {};
    ReleaseMouse();
}
