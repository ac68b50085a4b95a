#include "app/mouse.h"

#include "app/current_layout.h"
#include "app/files_drop.h"
#include "blueprint/blueprint_editor.h"
#include "blueprint/blueprint_screen.h"
#include "editor/drop_assignments.h"
#include "editor/hierarchy.h"
#include "editor/inspector.h"
#include "editor/menus.h"
#include "editor/panels.h"
#include "editor/popup_menu.h"
#include "editor/toolbars.h"
#include "platform/window.h"
#include "project/files_menus.h"
#include "project/files_page.h"
#include "project/prefab_editor.h"
#include "project/project_hub.h"
#include "project/save_project.h"
#include "scene/editor_camera.h"
#include "scene/interaction.h"
#include "scene/name_entry.h"
#include "scene/selection.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "state/editor_state.h"
#include "viewport/gizmo.h"
#include "viewport/pick.h"
#include "viewport/scene_view.h"

#include <cstdlib>

constexpr int32_t kLookThreshold = 5;  // pixels from the press that make a right click a look

static bool EntryIsOpen() { return NameEntryIsOpen() || editorState.numberEntry.open; }

static bool IsLooking() { return std::holds_alternative<MouseLook>(editorState.gesture); }

// Every gesture but looking around belongs to the left button.
static bool LeftButtonIsHeld() { return GestureIsUnderWay() && !IsLooking(); }

// Until its gesture ends, the left button starts nothing else. While the right button looks around, the left
// one does everything but drag.
static bool IgnoresLeftButton() {
    return ShownScreen() == Shown::Game || EntryIsOpen() || LeftButtonIsHeld();
}

// Runs the button under the pointer. False when there is none.
static bool ClickTopBar(Point pointer, const EditorLayout& layout) {
    const TopBarButton button = TopBarButtonAt(pointer, layout);
    if (button == TopBarButton::None) return false;
    CloseMenu();
    switch (button) {
        case TopBarButton::None: break;
        case TopBarButton::CloseEditor: ClosePrefabEditor(); break;
        case TopBarButton::SavePrefab: SavePrefabEditor(); break;
        case TopBarButton::ProjectHub: ReturnToHub(); break;
        case TopBarButton::SaveProject: SaveProject(); break;
        case TopBarButton::BuildProject: BuildProject(); break;
    }
    return true;
}

static bool ClickOpenMenu(Point pointer, const EditorLayout& layout) {
    if (!ClickFilesMenus(pointer, layout) && !ClickMenus(pointer, layout)) return false;
    editorState.lastPress = PressTaker::OpenMenu;
    return true;
}

static bool PressSplitter(Point pointer, const EditorLayout& layout) {
    const PanelLayout sizes = FitPanelsToWindow(editorState.panels, layout.width, layout.height);
    const std::optional<PanelEdge> edge = SplitterHitTest(pointer, sizes, layout.width, layout.height);
    if (!edge) return false;
    if (GestureIsUnderWay()) return true;
    CloseMenu();
    StartGesture(PanelResize{.edge = *edge, .press = pointer, .start = sizes});
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

// Who takes a press, from what lies on top to what lies below: a menu covers the panels, a panel's edge its
// content, the gizmo the objects. The first that answers true has the press, and nobody after it is asked.
constexpr bool (*kPressTakers[])(Point, const EditorLayout&) = {
    ClickTopBar,    ClickOpenMenu,    PressSplitter, ClickBottomTabs, ClickInspector,
    PressFilesPage, ClickToolPalette, PressGizmo,    PressViewport,   PressHierarchy,
};

static void PressEditor(Point pointer) {
    const EditorLayout layout = CurrentLayout();
    for (const auto take : kPressTakers) {
        if (take(pointer, layout)) break;
    }
    if (editorState.lastPress == PressTaker::Editor && MenuIsOpen())
        editorState.lastPress = PressTaker::MenuOpener;
}

void PressLeft(Point pointer) {
    if (IgnoresLeftButton()) return;
    editorState.pointer = pointer;
    editorState.lastPress = PressTaker::Editor;
    if (ShownScreen() == Shown::Blueprint) return PressBlueprint(pointer, CurrentBlueprintLayout());
    PressEditor(pointer);
}

void DoubleClickLeft(Point pointer) {
    if (IgnoresLeftButton()) return;
    if (editorState.lastPress == PressTaker::MenuOpener) return;  // the menu opened under the pointer
    // A menu lies, or lay until the first press, over what could be double-clicked; nodes are only pressed.
    const bool menuWasPressed = editorState.lastPress == PressTaker::OpenMenu;
    const bool isPress = MenuIsOpen() || menuWasPressed || ShownScreen() == Shown::Blueprint;
    if (isPress) return PressLeft(pointer);
    const EditorLayout layout = CurrentLayout();
    const int32_t row = HierarchyObjectAt(pointer, layout);
    if (OpenFilesItemAt(pointer, layout)) return;
    if (IsOnNameField(pointer, layout)) {
        StartObjectRename(editorState.selectedIndex);
    } else if (IsObjectIndex(row)) {
        editorState.selectedIndex = row;
        FocusOnObject(row);
    } else {
        PressLeft(pointer);  // fast clicks on a stepping value all count
    }
}

static bool IsOverInspector(Point pointer) { return IsInInspectorBand(pointer, CurrentLayout()); }

// Moving: one function per gesture, so that a new one does not compile until it has its own.

static void Move(std::monostate, Point, Point) {}

static void Move(const PanelResize& resize, Point, Point to) {
    PanelLayout sizes = resize.start;
    switch (resize.edge) {
        case PanelEdge::HierarchyRight: sizes.hierarchyWidth += to.x - resize.press.x; break;
        case PanelEdge::InspectorLeft: sizes.inspectorWidth -= to.x - resize.press.x; break;
        case PanelEdge::BottomTop: sizes.bottomHeight -= to.y - resize.press.y; break;
    }
    const EditorLayout layout = CurrentLayout();
    editorState.panels = FitPanelsToWindow(sizes, layout.width, layout.height);
}

static void Move(MouseLook& look, Point from, Point to) {
    if (look.turnsView) LookWithMouse(to.x - from.x, to.y - from.y);
    const int32_t distance = std::abs(to.x - look.press.x) + std::abs(to.y - look.press.y);
    look.moved = look.moved || distance > kLookThreshold;
}

static void Move(const GizmoDrag& drag, Point, Point to) { MoveGizmoDrag(drag, to); }

static void Move(HierarchyDrag& drag, Point, Point to) {
    DragInHierarchy(drag, to);
    if (IsOverInspector(to)) drag.drop.reset();  // there it becomes a reference, and no row is meant
}

static void Move(FilesDrag& drag, Point, Point to) { DragFilesItem(drag, to); }

static void Move(const InspectorDrag& drag, Point, Point to) { DragInspectorValue(drag, to); }

static void Move(const BlueprintDrag& drag, Point, Point to) {
    DragBlueprintNode(drag, to, CurrentBlueprintLayout());
}

void MoveMouse(Point pointer) {
    const Point last = editorState.pointer;
    editorState.pointer = pointer;
    ShowArrowCursor();
    if (EntryIsOpen()) return;
    std::visit([last, pointer](auto& gesture) { Move(gesture, last, pointer); }, editorState.gesture);
}

// Letting go. The gesture has ended by then: what it does may begin or show something else.

static void Release(std::monostate, Point) {}

static void Release(const PanelResize&, Point) { SetStatus(L"Velikost panelu upravena."); }

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

static void Release(const MouseLook& look, Point) {
    if (look.moved) {
        SetStatus(L"Mouse look vypnuty.");
    } else if (ShownScreen() != Shown::Game) {
        OpenMenuAt(look.press);
    }
}

static void Release(const GizmoDrag& drag, Point) { FinishGizmoDrag(drag); }

// A dragged object becomes a reference of the selected one when it is let go over the Inspector.
static void Release(const HierarchyDrag& drag, Point pointer) {
    if (drag.dragging && IsOverInspector(pointer)) {
        AssignObjectReference(drag.source);
    } else {
        ReleaseHierarchy(drag);
    }
}

static void Release(const FilesDrag& drag, Point pointer) {
    ReleaseFilesItem(drag, pointer, CurrentLayout());
}

static void Release(const InspectorDrag&, Point) {}  // the value is set

static void Release(const BlueprintDrag&, Point) { SaveBlueprintEditor(); }  // moved or not

static void ReleaseGesture(Point pointer) {
    const Gesture released = editorState.gesture;
    DropGesture();
    std::visit([pointer](const auto& gesture) { Release(gesture, pointer); }, released);
}

void ReleaseLeft(Point pointer) {
    if (IsLooking()) return;
    if (ShownScreen() == Shown::Blueprint && !GestureIsUnderWay()) return ReleaseBlueprint();
    ReleaseGesture(pointer);
}

void PressRight(Point pointer) {
    editorState.pointer = pointer;
    if (EntryIsOpen() || LeftButtonIsHeld()) return;
    if (ShownScreen() == Shown::Blueprint) return PressRightInBlueprint(pointer, CurrentBlueprintLayout());
    const bool turnsView = Contains(CurrentLayout().viewport, pointer);
    StartGesture(MouseLook{.turnsView = turnsView, .press = pointer});
}

void ReleaseRight() {
    if (IsLooking()) ReleaseGesture(editorState.pointer);
}
