#include "project/prefab_editor.h"

#include "base/enough_memory.h"
#include "base/path_text.h"
#include "formats/free_path.h"
#include "formats/other_writers.h"
#include "formats/prefab.h"
#include "platform/dialogs.h"
#include "play/play_mode.h"
#include "project/asset_list.h"
#include "project/recovery.h"
#include "project/scene_switch.h"
#include "scene/interaction.h"
#include "scene/selection.h"
#include "scene/snapshots.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <utility>

// Ends what the user was in the middle of: it is about objects that are no longer shown.
static void EndInteraction() {
    ForgetObjectIndices();
    CloseEntriesAndMenu();
}

// The prefab takes the place of the scene in the state, so that every panel and command works on it
// unchanged. The scene is put aside as a whole, with its undo history. Recovery therefore looks for the
// scene in `sceneBeforePrefab`.
static void ShowPrefab(const std::wstring& path, Scene objects) {
    editorState.sceneBeforePrefab = KeepScene();
    editorState.scene = std::move(objects);
    editorState.undoSteps.clear();
    editorState.selectedIndex = editorState.scene.empty() ? -1 : 0;
    editorState.prefabPath = path;
    editorState.prefabName = NameWithoutExtension(path);
    editorState.prefabDirty = false;
    editorState.screen = Screen::PrefabEditor;
}

static void ShowScene() {
    PutSceneBack(editorState.sceneBeforePrefab);
    editorState.prefabPath.clear();
    editorState.prefabName.clear();
    editorState.prefabDirty = false;
    editorState.screen = Screen::SceneEditor;
}

// Loads first and changes after that: until the prefab is whole in memory, the only step that cannot be
// taken back is leaving another screen, which the user has agreed to.
void OpenPrefabEditor(const std::wstring& path) {
    if (!LeaveOtherScreens()) return;
    Scene objects;
    const bool isLoaded = WithEnoughMemory([&] {
        if (!LoadPrefab(path, objects)) return false;
        objects = InPrefabOrder(objects);
        return true;
    });
    if (!isLoaded) {
        SetStatus(L"Prefab se nepodarilo otevrit.");
        return;
    }
    RememberFile(path);
    StopPlayMode();
    EndInteraction();
    ShowPrefab(path, std::move(objects));
    SetStatus(L"Otevren Prefab editor: " + LastComponent(path));
}

static bool Save() {
    if (editorState.prefabPath.empty()) {
        SetStatus(L"Neni otevreny Prefab.");
        return false;
    }
    const bool isWritten = WithEnoughMemory(
        [] { return WritePrefab(editorState.prefabPath, InPrefabOrder(editorState.scene)); });
    if (!isWritten) {
        SetStatus(L"Prefab se nepodarilo ulozit.");
        return false;
    }
    editorState.prefabDirty = false;
    ForgetPrefabRecovery();
    ListOtherVersions();
    SetStatus(L"Prefab ulozen: " + LastComponent(editorState.prefabPath));
    return true;
}

void SavePrefabEditor() { Save(); }

static bool AskToLeave() {
    if (!editorState.prefabDirty) return true;
    const Answer answer = AskYesNoCancel(L"Chces ulozit zmeny v prefabu?", L"ZelEngine");
    if (answer == Answer::No) ForgetPrefabRecovery();
    return answer == Answer::No || (answer == Answer::Yes && Save());
}

bool ClosePrefabEditor() {
    if (editorState.screen != Screen::PrefabEditor) return true;
    if (!AskToLeave()) return false;
    EndInteraction();
    ShowScene();
    SetStatus(L"Zpet do Scene editoru.");
    return true;
}

// The file is named after the object, as far as the system accepts that as a name. The name of a device gets
// "_" before it.
static std::wstring NewPrefabPath(const std::wstring& objectName) {
    std::wstring name = SanitizeFileName(objectName);
    if (name.empty()) return FirstFreePath(editorState.filesFolder, L"Prefab", L".prefab");
    if (!IsUsableFileName(name + L".prefab")) name.insert(0, 1, L'_');
    return FreePath(editorState.filesFolder, name, L".prefab");
}

void SavePrefabFromSelection() {
    if (!SelectionIsValid()) {
        SetStatus(L"Prefab: nejdriv vyber objekt ve scene nebo Hierarchy.");
        return;
    }
    const std::wstring path = NewPrefabPath(SelectedObject().name);
    const bool isWritten = WithEnoughMemory(
        [&] { return WritePrefab(path, CollectPrefab(editorState.scene, editorState.selectedIndex)); });
    if (!isWritten) {
        SetStatus(L"Prefab se nepodarilo ulozit.");
        return;
    }
    AddNewAsset(path, false);
    SetStatus(L"Prefab vytvoren z vybraneho objektu: " + LastComponent(path));
}
