#include "scene/interaction.h"

#include "platform/window.h"
#include "state/editor_state.h"

bool KeyIsDown(uint32_t key) { return editorState.keyDown[key]; }

float KeyAxis(uint32_t positive, uint32_t negative) {
    return static_cast<float>(KeyIsDown(positive)) - static_cast<float>(KeyIsDown(negative));
}

bool GestureIsUnderWay() { return !std::holds_alternative<std::monostate>(editorState.gesture); }

void StartGesture(const Gesture& gesture) {
    editorState.gesture = gesture;
    CaptureMouse();
}

void DropGesture() {
    if (!GestureIsUnderWay()) return;
    editorState.gesture = {};
    ReleaseMouse();
}

bool MenuIsOpen() { return editorState.menu.has_value(); }

bool MenuIsOpen(MenuKind kind) { return editorState.menu && editorState.menu->kind == kind; }

void CloseMenu() { editorState.menu.reset(); }

void CloseEntriesAndMenu() {
    CloseMenu();
    editorState.nameEntry = {};
    editorState.numberEntry = {};
    editorState.typedHalf = 0;
    editorState.componentSearchActive = false;
}

// One per gesture, so that a new one does not compile before somebody has thought about it.
static bool MeansObject(std::monostate) { return false; }
static bool MeansObject(const PanelResize&) { return false; }
static bool MeansObject(const MouseLook&) { return false; }
static bool MeansObject(const GizmoDrag&) { return true; }
static bool MeansObject(const HierarchyDrag&) { return true; }
static bool MeansObject(const FilesDrag&) { return false; }
static bool MeansObject(const InspectorDrag&) { return true; }
static bool MeansObject(const BlueprintDrag&) { return false; }

void ForgetObjectIndices() {
    const bool meansObject =
        std::visit([](const auto& gesture) { return MeansObject(gesture); }, editorState.gesture);
    if (meansObject) DropGesture();
    editorState.keyboardTransform = false;
    if (MenuIsOpen(MenuKind::Object)) CloseMenu();
    editorState.nameEntry = {};
    editorState.numberEntry = {};
    editorState.typedHalf = 0;
    editorState.inspectedObject = -1;
    editorState.hierarchyRows.clear();
}
