// Input events become changes of the state: by the entry that owns the keyboard, then by shortcuts and mouse.
#include "app/frame.h"
#include "app/mouse.h"
#include "app/shortcuts.h"
#include "platform/window.h"
#include "scene/component_search.h"
#include "scene/editor_state.h"
#include "scene/name_entry.h"
#include "scene/number_entry.h"

static bool NumberEntryIsOpen() { return editorState.numberEntry.open; }
static bool ComponentSearchIsOpen() { return editorState.componentSearchActive; }
static void CommitName() { CommitNameEntry(); }

namespace {

// A box that takes the keyboard while it is open.
struct KeyboardOwner {
    bool (*isOpen)();
    void (*type)(wchar_t unit);
    void (*erase)();
    void (*commit)();
    void (*cancel)();
};

}  // namespace

// The first that is open has the keyboard to itself.
constexpr KeyboardOwner kKeyboardOwners[] = {
    {NameEntryIsOpen, TypeIntoNameEntry, EraseInNameEntry, CommitName, CancelNameEntry},
    {NumberEntryIsOpen, TypeIntoNumberEntry, EraseInNumberEntry, CommitNumberEntry, CancelNumberEntry},
    {ComponentSearchIsOpen, TypeIntoComponentSearch, EraseInComponentSearch, CommitComponentSearch,
     CancelComponentSearch},
};

// Null when no box is open.
static const KeyboardOwner* OpenKeyboardOwner() {
    for (const KeyboardOwner& owner : kKeyboardOwners) {
        if (owner.isOpen()) return &owner;
    }
    return nullptr;
}

static void SendToOwner(const KeyboardOwner& owner, uint32_t key) {
    if (key != kKeyEnter && key != kKeyEscape && key != kKeyBackspace) return;
    editorState.typedHalf = 0;  // what is typed from here on begins a new character
    if (key == kKeyEnter) owner.commit();
    if (key == kKeyEscape) owner.cancel();
    if (key == kKeyBackspace) owner.erase();
}

static bool HasKeyState(uint32_t key) { return key < editorState.keyDown.size(); }

static void OnKeyDown(uint32_t key, bool isRepeat) {
    if (const KeyboardOwner* owner = OpenKeyboardOwner()) {
        SendToOwner(*owner, key);
        return;
    }
    if (key == kKeyEscape) {
        RequestQuit();
        return;
    }
    if (!isRepeat) handleKeyDown(key);
    // Keys pressed with Ctrl are commands and never count as held.
    if (HasKeyState(key) && !IsControlHeld()) editorState.keyDown[key] = true;
}

static void OnKeyUp(uint32_t key) {
    if (HasKeyState(key)) editorState.keyDown[key] = false;
}

static void OnCharacter(wchar_t unit) {
    if (const KeyboardOwner* owner = OpenKeyboardOwner()) owner->type(unit);
}

static void OnFocusLost() {
    editorState.keyDown = {};
    EndDrags();
}

void HandleInput(const InputEvent& event) {
    const Point pointer{event.x, event.y};
    switch (event.kind) {
        case InputKind::Paint: RenderFrame(); break;
        case InputKind::KeyDown: OnKeyDown(event.key, event.isRepeat); break;
        case InputKind::KeyUp: OnKeyUp(event.key); break;
        case InputKind::Character: OnCharacter(event.character); break;
        case InputKind::MouseMove: MoveMouse(pointer); break;
        case InputKind::LeftDown: PressLeft(pointer); break;
        case InputKind::LeftUp: ReleaseLeft(pointer); break;
        case InputKind::LeftDoubleClick: DoubleClickLeft(pointer); break;
        case InputKind::RightDown: PressRight(pointer); break;
        case InputKind::RightUp: ReleaseRight(); break;
        case InputKind::FocusLost: OnFocusLost(); break;
        case InputKind::CaptureLost: EndDrags(); break;
        case InputKind::FilesDropped: break;
    }
}
