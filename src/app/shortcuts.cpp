#include "app/shortcuts.h"

#include "blueprint/blueprint_editor.h"
#include "editor/toolbars.h"
#include "platform/window.h"
#include "play/play_mode.h"
#include "project/prefab_editor.h"
#include "project/project_lifecycle.h"
#include "project/save_project.h"
#include "scene/clipboard.h"
#include "scene/commands.h"
#include "scene/selection.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

static bool Everywhere() { return true; }

static bool InBlueprint() { return ShownScreen() == Shown::Blueprint; }
static bool InPrefab() { return ShownScreen() == Shown::Prefab; }

static void Ignore() {}

static void SaveOpenBlueprint() { SaveBlueprintEditor(); }
static void LeaveBlueprint() { CloseBlueprintEditor(); }
static void LeavePrefab() { ClosePrefabEditor(); }

static void RefusePlayInPrefab() { SetStatus(L"Play mode se spousti jen ve Scene editoru."); }

static void Save() {
    if (IsShiftHeld()) {
        SaveProjectAs();
    } else {
        SaveProject();
    }
}

// Saving under a new folder always means the whole project.
static void SaveInPrefab() {
    if (IsShiftHeld()) {
        SaveProjectAs();
    } else {
        SavePrefabEditor();
    }
}

static void CreateBasicProject() { CreateProject(false); }

static void SelectNext() {
    if (editorState.scene.empty()) return;
    const auto count = static_cast<int32_t>(editorState.scene.size());
    const int32_t current = IsObjectIndex(editorState.selectedIndex) ? editorState.selectedIndex : -1;
    editorState.selectedIndex = (current + 1) % count;
    SetStatus(L"Vybran dalsi objekt v Hierarchy.");
}

static void SelectMove() { SelectTool(Tool::Move); }
static void SelectRotate() { SelectTool(Tool::Rotate); }
static void SelectScale() { SelectTool(Tool::Scale); }

static void TogglePlayMode() {
    if (editorState.playMode) {
        StopPlayMode();
    } else if (ShownScreen() != Shown::Game) {
        StartPlayMode();
    }
}

static void SelectByNumber(int32_t index) {
    if (!IsObjectIndex(index)) return;
    editorState.selectedIndex = index;
    SetStatus(L"Objekt vybran ciselne.");
}

namespace {

enum class Modifier { Any, Ctrl, AltGr, None };

constexpr uint32_t kAnyKey = 0;

struct Shortcut {
    bool (*applies)();
    Modifier modifier;
    uint32_t key;
    void (*run)();
};

}  // namespace

// The first row that matches wins. AltGr types a character of its own with a key, and that is no command.
// clang-format off
constexpr Shortcut kShortcuts[] = {
    {InBlueprint, Modifier::Ctrl,  'S',        SaveOpenBlueprint},
    {InBlueprint, Modifier::Any,   kKeyEscape, LeaveBlueprint},
    {InBlueprint, Modifier::Any,   kAnyKey,    Ignore},
    {InPrefab,    Modifier::Ctrl,  'S',        SaveInPrefab},
    {InPrefab,    Modifier::Any,   kKeyEscape, LeavePrefab},
    {Everywhere,  Modifier::AltGr, kAnyKey,    Ignore},
    {InPrefab,    Modifier::Any,   'P',        RefusePlayInPrefab},
    {Everywhere,  Modifier::Ctrl,  'Z',        undo},
    {Everywhere,  Modifier::Ctrl,  'C',        copySelected},
    {Everywhere,  Modifier::Ctrl,  'V',        pasteObject},
    {Everywhere,  Modifier::Ctrl,  'D',        duplicateSelected},
    {Everywhere,  Modifier::Ctrl,  'S',        Save},
    {Everywhere,  Modifier::Ctrl,  'O',        OpenProjectDialog},
    {Everywhere,  Modifier::Ctrl,  'N',        CreateBasicProject},
    {Everywhere,  Modifier::Ctrl,  'B',        BuildProject},
    {Everywhere,  Modifier::Ctrl,  kAnyKey,    Ignore},
    {Everywhere,  Modifier::None,  kKeyTab,    SelectNext},
    {Everywhere,  Modifier::None,  kKeyF1,     SelectMove},
    {Everywhere,  Modifier::None,  kKeyF2,     SelectRotate},
    {Everywhere,  Modifier::None,  kKeyF3,     SelectScale},
    {Everywhere,  Modifier::None,  'G',        addCube},
    {Everywhere,  Modifier::None,  kKeyDelete, deleteSelected},
    {Everywhere,  Modifier::None,  'P',        TogglePlayMode},
};
// clang-format on

static Modifier HeldModifier() {
    if (!IsControlHeld()) return Modifier::None;
    return IsAltHeld() ? Modifier::AltGr : Modifier::Ctrl;
}

static bool Matches(const Shortcut& shortcut, uint32_t key, Modifier held) {
    if (shortcut.key != kAnyKey && shortcut.key != key) return false;
    if (shortcut.modifier != Modifier::Any && shortcut.modifier != held) return false;
    return shortcut.applies();
}

bool IsCommandKeyHeld() { return HeldModifier() == Modifier::Ctrl; }

void handleKeyDown(uint32_t key) {
    const Modifier held = HeldModifier();
    for (const Shortcut& shortcut : kShortcuts) {
        if (!Matches(shortcut, key, held)) continue;
        shortcut.run();
        return;
    }
    if (key >= '1' && key <= '9') SelectByNumber(static_cast<int32_t>(key - '1'));
}
