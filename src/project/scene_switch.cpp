#include "project/scene_switch.h"

#include "base/letter_case.h"
#include "blueprint/blueprint_editor.h"
#include "formats/scene_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "play/play_mode.h"
#include "project/prefab_editor.h"
#include "project/project_folder.h"
#include "project/recovery.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <utility>
#include <vector>

bool AskSaveBeforeSceneSwitch() {
    const Answer answer =
        AskYesNoCancel(L"Chces ulozit aktualni scenu pred otevrenim jine sceny?", L"ZelEngine");
    if (answer == Answer::Cancel) {
        SetStatus(L"Otevreni sceny zruseno.");
        return false;
    }
    if (answer == Answer::Yes && !SaveScene(CurrentScenePath())) {
        SetStatus(L"Aktualni scenu se nepodarilo ulozit.");
        return false;
    }
    ForgetSceneRecovery();
    return true;
}

bool AskSaveOfChangedScene() { return SceneIsSaved() || AskSaveBeforeSceneSwitch(); }

// By index into the replaced library, the index into the new one.
using NewIndices = std::vector<int32_t>;

static int32_t MapIndex(int32_t index, const NewIndices& newIndices) {
    const bool isKnown = index >= 0 && static_cast<size_t>(index) < newIndices.size();
    return isKnown ? newIndices[static_cast<size_t>(index)] : index;
}

static bool MapsToItself(const NewIndices& newIndices) {
    for (size_t i = 0; i < newIndices.size(); ++i) {
        if (newIndices[i] != static_cast<int32_t>(i)) return false;
    }
    return true;
}

// Finds each mesh of the replaced library in the new one by source and name, and adds those that it lacks.
static NewIndices CarryMeshes(SceneContent& replaced) {
    NewIndices newIndices;
    for (MeshAsset& asset : replaced.meshes) {
        auto& meshes = editorState.meshes;
        const auto found = std::ranges::find_if(meshes, [&asset](const MeshAsset& other) {
            return other.source == asset.source && other.name == asset.name;
        });
        newIndices.push_back(static_cast<int32_t>(found - meshes.begin()));
        if (found == meshes.end()) meshes.push_back(std::move(asset));
    }
    return newIndices;
}

static NewIndices CarryTextures(SceneContent& replaced) {
    NewIndices newIndices;
    for (TextureImage& texture : replaced.textures) {
        auto& textures = editorState.textures;
        const auto found = std::ranges::find(textures, texture.path, &TextureImage::path);
        newIndices.push_back(static_cast<int32_t>(found - textures.begin()));
        if (found == textures.end()) textures.push_back(std::move(texture));
    }
    return newIndices;
}

// Follows a load that keeps the history. The objects of its steps, and the one in the clipboard, name meshes
// and textures by their index in libraries that the load has replaced. Each is looked up in the new library
// by its source; what only the old scene used is added. Without this an undo would show the right objects
// with the wrong shapes.
static void CarryHistory(SceneContent& replaced) {
    const NewIndices meshes = CarryMeshes(replaced), textures = CarryTextures(replaced);
    if (MapsToItself(meshes) && MapsToItself(textures)) return;
    const auto change = [&](GameObject& object) {
        const int32_t mesh = MapIndex(object.meshIndex, meshes);
        const int32_t texture = MapIndex(object.textureIndex, textures);
        const bool isOther = mesh != object.meshIndex || texture != object.textureIndex;
        object.meshIndex = mesh;
        object.textureIndex = texture;
        return isOther;
    };
    if (editorState.clipboardObject) change(*editorState.clipboardObject);
    ChangeHistory(editorState.undoSteps, change);
}

// Loads the open scene once more, as one step of its history. False when it could not be loaded; the history
// is then as it was.
static bool LoadSceneAgain(const std::wstring& path) {
    std::vector<UndoStep> before = editorState.undoSteps;
    pushUndo("Load scene again");
    SceneContent replaced;
    if (LoadScene(path, replaced)) {
        CarryHistory(replaced);
        return true;
    }
    editorState.undoSteps = std::move(before);
    return false;
}

static bool LoadOtherScene(const std::wstring& path) {
    if (!LoadScene(path)) return false;
    ClearUndo();
    return true;
}

// Leave other screens, stop the game, ask, load: if any of these fails, the open scene stays. Which path is
// "the open one" is decided without regard to case, as the disk does.
void OpenSceneFile(const std::wstring& path) {
    if (!LeaveOtherScreens()) return;
    StopPlayMode();
    const bool isOther = !SameWithoutCase(AbsolutePath(path), AbsolutePath(editorState.scenePath));
    if (isOther && !AskSaveBeforeSceneSwitch()) return;
    if (!(isOther ? LoadOtherScene(path) : LoadSceneAgain(path))) {
        SetStatus(L"Scenu se nepodarilo otevrit.");
        return;
    }
    ForgetObjectIndices();
    CloseEntriesAndMenu();
    editorState.scenePath = path;
    SetStatus(L"Otevrena scena: " + path);
}

bool LeaveOtherScreens() { return CloseBlueprintEditor() && ClosePrefabEditor(); }
