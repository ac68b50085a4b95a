#include "blueprint/blueprint_editor.h"

#include "base/path_text.h"
#include "blueprint/blueprint_file.h"
#include "formats/project_file.h"
#include "platform/dialogs.h"
#include "play/play_mode.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>

// The document that is open is saved before anything else, because it is the one step that can fail. Loading
// cannot: a file that cannot be read gives two nodes to begin with.
bool OpenBlueprintEditor(const std::wstring& path) {
    if (!SaveBlueprintChanges()) return false;
    if (editorState.playMode) StopPlayMode();
    ForgetObjectIndices();
    CloseEntriesAndMenu();
    DropGesture();  // begun by the press that opened it, or in the view that it now covers

    LoadBlueprint(path);
    editorState.screen = Screen::BlueprintEditor;
    editorState.blueprintPath = path;
    editorState.blueprintShownPath = MakeProjectRelative(path);
    editorState.blueprintName = LastComponent(path);
    editorState.blueprintDirty = false;

    SetStatus(L"Otevren Blueprint editor: " + editorState.blueprintName);
    return true;
}

bool SaveBlueprintEditor() {
    if (editorState.blueprintPath.empty()) {
        SetStatus(L"Neni otevreny Blueprint.");
        return false;
    }
    if (!SaveBlueprint(editorState.blueprintPath)) {
        SetStatus(L"Blueprint se nepodarilo ulozit.");
        return false;
    }
    editorState.blueprintDirty = false;
    SetStatus(L"Blueprint ulozen: " + editorState.blueprintName);
    return true;
}

// A document without a file cannot be saved and must not hold the user: it counts as saved.
bool SaveBlueprintChanges() {
    const bool hasFile = !editorState.blueprintPath.empty();
    if (editorState.screen != Screen::BlueprintEditor || !editorState.blueprintDirty || !hasFile) return true;
    return SaveBlueprintEditor();
}

// If saving fails, the user can still leave.
static bool AskToLoseChanges() {
    return AskYesNo(L"Blueprint se nepodarilo ulozit.\n\nOpustit ho bez ulozeni?", L"ZelEngine") ==
           Answer::Yes;
}

bool CloseBlueprintEditor() {
    if (editorState.screen != Screen::BlueprintEditor) return true;
    if (!SaveBlueprintChanges() && !AskToLoseChanges()) return false;
    DropGesture();
    CloseMenu();

    editorState.screen = Screen::SceneEditor;
    editorState.blueprintNodes.clear();
    editorState.blueprintPath.clear();
    editorState.blueprintShownPath.clear();
    editorState.blueprintName.clear();
    editorState.blueprintDirty = false;

    SetStatus(L"Zpet do Scene editoru.");
    return true;
}

// One above the largest id. Ids may repeat in a file and may be as large as 32 bits allow; the next one is
// limited to that.
static int32_t NextId() {
    int64_t largest = 0;
    for (const BlueprintNode& node : editorState.blueprintNodes)
        largest = std::max<int64_t>(largest, node.id);
    return static_cast<int32_t>(std::min<int64_t>(largest + 1, INT32_MAX));
}

void AddBlueprintNode(const std::wstring& title, Point place) {
    editorState.blueprintNodes.push_back({.id = NextId(), .title = title, .x = place.x, .y = place.y});
    editorState.blueprintDirty = true;
}

void MoveBlueprintNode(int32_t index, Point place) {
    BlueprintNode& node = editorState.blueprintNodes[static_cast<size_t>(index)];
    node.x = place.x;
    node.y = place.y;
    editorState.blueprintDirty = true;
}
