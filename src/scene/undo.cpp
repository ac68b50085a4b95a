#include "scene/undo.h"

#include "scene/editor_state.h"
#include "scene/gestures.h"
#include "scene/limit.h"
#include "scene/status.h"

#include <algorithm>

constexpr size_t kMaxUndoSteps = 64;

void MarkPrefabChanged() {
    if (editorState.screen == Screen::PrefabEditor) editorState.prefabDirty = true;
}

void pushUndo(const char* /*label*/) {
    if (editorState.runtimeMode) return;
    MarkPrefabChanged();  // also of an empty prefab, which gets its first object
    if (editorState.scene.empty()) return;

    std::vector<SceneSnapshot>& scenes = editorState.undoScenes;
    const SceneSnapshot& earlier = scenes.empty() ? editorState.savedScene : scenes.back();
    SceneSnapshot snapshot = TakeSnapshot(editorState.scene, &earlier);
    if (scenes.size() >= kMaxUndoSteps) {
        scenes.erase(scenes.begin());
        editorState.undoSelections.erase(editorState.undoSelections.begin());
    }
    scenes.push_back(std::move(snapshot));
    editorState.undoSelections.push_back(editorState.selectedIndex);
}

void undo() {
    if (editorState.undoScenes.empty()) {
        SetStatus(L"Ctrl+Z: neni co vratit.");
        return;
    }
    RestoreSnapshot(editorState.undoScenes.back(), editorState.scene);
    const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
    editorState.selectedIndex = Limit(editorState.undoSelections.back(), 0, std::max(last, 0));
    editorState.undoScenes.pop_back();
    editorState.undoSelections.pop_back();

    EndGestures();
    editorState.componentSearchActive = false;
    MarkPrefabChanged();
    SetStatus(L"Ctrl+Z: posledni zmena sceny byla vracena.");
}

void ClearUndo() {
    editorState.undoScenes.clear();
    editorState.undoSelections.clear();
}
