#include "formats/scene_file.h"

#include "formats/object_line.h"
#include "formats/other_writers.h"
#include "scene/default_scenes.h"
#include "scene/snapshots.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <new>
#include <utility>

constexpr std::wstring_view kHeader = L"ZELENGINE_SCENE\t1";

bool SaveScene(const std::wstring& path) {
    if (!WriteObjectFile(path, kHeader, editorState.scene)) return false;
    MarkSceneSaved();
    return true;
}

// Shares with the undo history what did not change since: a scene that is edited is kept once.
void MarkSceneSaved() {
    const auto& history = editorState.undoSteps;
    const SceneSnapshot& earlier = history.empty() ? editorState.savedScene : history.back().scene;
    try {
        editorState.savedScene = TakeSnapshot(editorState.scene, &earlier);
        editorState.savedVersion = editorState.sceneVersion;
    } catch (const std::bad_alloc&) {
        editorState.savedScene = {};  // a question too many is better than one too few
        editorState.savedVersion = ++editorState.lastVersion;
    }
}

// The version answers first, so that only a scene that was changed costs a comparison.
bool SceneIsSaved() { return !SceneHasChanges() || HoldsScene(editorState.savedScene, editorState.scene); }

// Fills the empty state from a file that is in memory. The libraries are reset first, since the objects add
// their models and images while they are read; the objects replace the default scene last, and only if there
// are any. Whoever calls has put the old content aside and puts it back if memory runs out on the way.
static void ReadScene(TextFile& file) {
    // First, because the objects add their models and images to the fresh libraries.
    resetScene(true);
    Scene scene = ReadObjects(file);
    if (scene.empty()) {
        resetScene(true);
    } else {
        editorState.scene = std::move(scene);
    }
    const auto last = static_cast<int32_t>(editorState.scene.size()) - 1;
    editorState.selectedIndex = std::min(editorState.selectedIndex, last);
}

bool LoadScene(const std::wstring& path) {
    SceneContent replaced;
    return LoadScene(path, replaced);
}

bool LoadScene(const std::wstring& path, SceneContent& replaced) {
    SceneContent& content = editorState;
    SceneContent before = std::exchange(content, {});
    try {
        TextFile file;
        if (ReadTextFile(path, file)) {
            const uint64_t fingerprint = file.fingerprint;
            ReadScene(file);
            RememberFile(path, fingerprint);
            RaiseSceneVersion();  // other objects, hence another version
            MarkSceneSaved();
            replaced = std::move(before);
            return true;
        }
    } catch (const std::bad_alloc&) {  // a file too large for the machine is one that cannot be read
    }
    content = std::move(before);
    return false;
}
