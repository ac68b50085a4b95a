// Input events become changes of the state: by the entry that owns the keyboard, then by shortcuts and mouse.
#include "app/current_layout.h"
#include "app/frame.h"
#include "app/mouse.h"
#include "app/shortcuts.h"
#include "blueprint/blueprint_editor.h"
#include "editor/component_search.h"
#include "editor/inspector.h"
#include "platform/window.h"
#include "project/asset_commands.h"
#include "project/project_hub.h"
#include "project/project_lifecycle.h"
#include "project/recovery.h"
#include "scene/interaction.h"
#include "scene/name_entry.h"
#include "scene/number_entry.h"
#include "scene/shown_screen.h"
#include "state/editor_state.h"

#include <optional>
#include <span>

static bool NumberEntryIsOpen() { return editorState.numberEntry.open; }
static bool ComponentSearchIsOpen() { return editorState.componentSearchActive; }
static void CommitName() {
    const std::optional<FileRename> rename = CommitNameEntry();
    if (rename) RenameAsset(rename->item, rename->name);
}

namespace {

// A box that takes the keyboard while it is open: what its keys do.
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

// In the other editors it leads back to the Scene editor.
static bool EscapeEndsProgram() {
    return ShownScreen() == Shown::SceneEditor || ShownScreen() == Shown::Game;
}

// The Project Hub has few keys. What is held there does not move anything.
static void OnHubKeyDown(uint32_t key, bool isRepeat) {
    if (isRepeat) return;
    if (key == kKeyEscape) RequestQuit();
    if (key == 'O' && IsCommandKeyHeld()) OpenProjectDialog();
    if (key == 'N' && IsCommandKeyHeld()) CreateProject(false);
}

// Who gets a key, from the innermost: the Hub has its own few, an open box takes everything, the Blueprint
// screen and the editor have theirs in one table. Esc ends the program only where it leads back to nothing
// else.
static void OnKeyDown(uint32_t key, bool isRepeat) {
    if (ShownScreen() == Shown::Hub) return OnHubKeyDown(key, isRepeat);
    if (const KeyboardOwner* owner = OpenKeyboardOwner()) {
        SendToOwner(*owner, key);
        return;
    }
    if (ShownScreen() == Shown::Blueprint) {
        if (!isRepeat) handleKeyDown(key);
        return;
    }
    if (key == kKeyEscape && EscapeEndsProgram()) {
        // Held on after it has closed an entry or a screen, it must not end the program too.
        if (!isRepeat) RequestQuit();
        return;
    }
    // Keys pressed with Ctrl are commands and never count as held. Held before the command, because a dialog
    // that it opens takes the keys away: their release will not be reported.
    if (HasKeyState(key) && !IsControlHeld()) editorState.keyDown[key] = true;
    if (!isRepeat) handleKeyDown(key);
}

static void OnKeyUp(uint32_t key) {
    if (HasKeyState(key)) editorState.keyDown[key] = false;
}

static void OnCharacter(wchar_t unit) {
    if (const KeyboardOwner* owner = OpenKeyboardOwner()) owner->type(unit);
}

static void OnLeftDown(Point pointer) {
    editorState.lastPress = ShownScreen() == Shown::Hub ? PressTaker::Hub : PressTaker::Nobody;
    if (ShownScreen() == Shown::Hub) {
        HubLeftClick(pointer, CurrentHubLayout());
    } else {
        PressLeft(pointer);
    }
}

// The first press of a double click may have opened a project; the second is not meant for its editor.
static void OnLeftDoubleClick(Point pointer) {
    if (ShownScreen() == Shown::Hub) {
        HubLeftClick(pointer, CurrentHubLayout());
    } else if (editorState.lastPress != PressTaker::Hub) {
        DoubleClickLeft(pointer);
    }
}

static void OnRightDown(Point pointer) {
    if (ShownScreen() == Shown::Hub) {
        HubRightClick(pointer, CurrentHubLayout());
    } else {
        PressRight(pointer);
    }
}

static void OnFilesDropped(std::span<const std::wstring> files) {
    if (ShownScreen() != Shown::Hub && ShownScreen() != Shown::Game) ImportDroppedFiles(files);
}

static void OnFocusLost() {
    editorState.keyDown = {};
    DropGesture();
}

// Nobody would see what is typed into a search whose box is not there, and no shortcut would run.
static void CloseUnseenSearch() {
    if (!ComponentSearchIsOpen() || SearchBoxIsShown(CurrentLayout())) return;
    CloseComponentSearch();
}

// The process may be ended as soon as this returns.
static void OnSessionEnds() {
    SaveBlueprintChanges();
    WriteRecoveryNow();
}

static void Dispatch(const InputEvent& event) {
    const Point pointer{event.x, event.y};
    switch (event.kind) {
        case InputKind::Paint: RenderFrame(); break;
        case InputKind::KeyDown: OnKeyDown(event.key, event.isRepeat); break;
        case InputKind::KeyUp: OnKeyUp(event.key); break;
        case InputKind::Character: OnCharacter(event.character); break;
        case InputKind::MouseMove: MoveMouse(pointer); break;
        case InputKind::LeftDown: OnLeftDown(pointer); break;
        case InputKind::LeftUp: ReleaseLeft(pointer); break;
        case InputKind::LeftDoubleClick: OnLeftDoubleClick(pointer); break;
        case InputKind::RightDown: OnRightDown(pointer); break;
        case InputKind::RightUp: ReleaseRight(); break;
        case InputKind::FocusLost: OnFocusLost(); break;
        case InputKind::CaptureLost: DropGesture(); break;
        case InputKind::FilesDropped: OnFilesDropped(event.files); break;
        case InputKind::SessionEnds: OnSessionEnds(); break;
    }
}

// An input method that composes Japanese, say, takes every letter for itself: the keys of a game and the
// shortcuts would do nothing.
static void AllowTextInputToOwner() { AllowTextInput(OpenKeyboardOwner() != nullptr); }

// The one way into the program. The order matters: a search box that is out of sight is closed before it
// could take a key, the event runs its command, and only then it is known whether some box still wants
// characters.
void HandleInput(const InputEvent& event) {
    ++editorState.handledEvents;
    CloseUnseenSearch();
    Dispatch(event);
    AllowTextInputToOwner();
}
