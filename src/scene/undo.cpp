#include "scene/undo.h"

#include "base/limit.h"
#include "scene/interaction.h"
#include "scene/snapshots.h"
#include "scene/status.h"

#include <algorithm>
#include <utility>

constexpr size_t kMaxUndoSteps = 64;

void RaiseSceneVersion() { editorState.sceneVersion = ++editorState.lastVersion; }

void MarkChanged() {
    RaiseSceneVersion();
    if (editorState.screen == Screen::PrefabEditor) editorState.prefabDirty = true;
}

bool SceneHasChanges() { return editorState.sceneVersion != editorState.savedVersion; }

// Keeps the whole scene, so that no command needs to know how it is undone. The snapshot shares with the step
// before it, or with the saved scene, every run of objects that has not changed since: a step of a large
// scene costs one comparison and the objects around the change. The oldest step goes when there are 64.
void pushUndo(const char* label) {
    if (editorState.runtimeMode) return;
    const uint64_t version = editorState.sceneVersion;
    MarkChanged();  // also of an empty prefab, which gets its first object
    if (editorState.scene.empty()) return;

    std::vector<UndoStep>& steps = editorState.undoSteps;
    const SceneSnapshot& earlier = steps.empty() ? editorState.savedScene : steps.back().scene;
    SceneSnapshot scene = TakeSnapshot(editorState.scene, &earlier);
    if (steps.size() >= kMaxUndoSteps) steps.erase(steps.begin());
    steps.push_back({std::move(scene), editorState.selectedIndex, label, version});
}

// The scene of before comes back with its version, so that a scene without changes is again one without
// changes. Indices that somebody holds may mean other objects now, and all of them are forgotten.
void undo() {
    if (editorState.undoSteps.empty()) {
        SetStatus(L"Ctrl+Z: neni co vratit.");
        return;
    }
    const UndoStep step = std::move(editorState.undoSteps.back());
    editorState.undoSteps.pop_back();
    RestoreSnapshot(step.scene, editorState.scene);
    const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
    editorState.selectedIndex = Limit(step.selection, 0, std::max(last, 0));

    ForgetObjectIndices();
    editorState.componentSearchActive = false;
    MarkChanged();
    editorState.sceneVersion = step.version;
    SetStatus(L"Ctrl+Z: posledni zmena sceny byla vracena.");
}

void ClearUndo() { editorState.undoSteps.clear(); }

// Each step is taken anew after the one before it, so that they share again what does not differ between
// them, nor from the saved scene. A step in which nothing changed stays as it is.
void ChangeHistory(std::vector<UndoStep>& history, const std::function<bool(GameObject&)>& change) {
    Scene scene;
    const SceneSnapshot* earlier = &editorState.savedScene;
    for (UndoStep& step : history) {
        RestoreSnapshot(step.scene, scene);
        bool hasChanged = false;
        for (GameObject& object : scene) hasChanged = change(object) || hasChanged;
        if (hasChanged) {
            step.scene = TakeSnapshot(scene, earlier);
            step.version = ++editorState.lastVersion;
        }
        earlier = &step.scene;
    }
}
