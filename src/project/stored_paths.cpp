#include "project/stored_paths.h"

#include "base/path_text.h"
#include "formats/other_writers.h"
#include "scene/undo.h"
#include "state/editor_state.h"

namespace {

struct PathMove {
    const std::wstring& from;
    const std::wstring& to;
};

}  // namespace

// All of these return true when anything has changed.

static bool MovePath(std::wstring& path, const PathMove& move) {
    if (!IsAtOrBelow(path, move.from)) return false;
    path.replace(0, move.from.size(), move.to);
    return true;
}

static bool MovePathsOf(GameObject& object, const PathMove& move) {
    bool changed = false;
    for (std::wstring* path :
         {&object.texturePath, &object.collectPrefab, &object.prefabSource, &object.spawnerPrefab}) {
        changed = MovePath(*path, move) || changed;
    }
    return changed;
}

static bool MovePathsOf(Scene& scene, const PathMove& move) {
    bool changed = false;
    for (GameObject& object : scene) changed = MovePathsOf(object, move) || changed;
    return changed;
}

static void MovePathsOf(std::vector<UndoStep>& history, const PathMove& move) {
    ChangeHistory(history, [&move](GameObject& object) { return MovePathsOf(object, move); });
}

// Three groups: paths of the state itself, sources of what is loaded, and references of objects wherever
// there are objects. A place that is forgotten here names a file that no longer exists, which nobody sees
// before the next save or undo; the test walks through all of them. A kept scene that changes gets a new
// version, or caches would take it for the old one.
void MoveStoredPaths(const std::wstring& from, const std::wstring& to) {
    MoveRememberedFiles(from, to);
    const PathMove move{from, to};
    for (std::wstring* path : {&editorState.filesFolder, &editorState.scenePath, &editorState.blueprintPath,
                               &editorState.prefabPath}) {
        MovePath(*path, move);
    }
    if (!editorState.prefabPath.empty())
        editorState.prefabName = NameWithoutExtension(editorState.prefabPath);
    for (MeshAsset& asset : editorState.meshes) MovePath(asset.source, move);
    for (TextureImage& texture : editorState.textures) MovePath(texture.path, move);
    for (AssetEntry& entry : editorState.fileEntries) {
        MovePath(entry.path, move);
        MovePath(entry.folder, move);
    }

    if (MovePathsOf(editorState.scene, move)) MarkChanged();
    MovePathsOf(editorState.undoSteps, move);
    if (editorState.clipboardObject) MovePathsOf(*editorState.clipboardObject, move);
    for (std::optional<KeptScene>* kept : {&editorState.sceneBeforePlay, &editorState.sceneBeforePrefab}) {
        if (!*kept) continue;
        if (MovePathsOf((*kept)->scene, move)) (*kept)->sceneVersion = ++editorState.lastVersion;
        MovePathsOf((*kept)->undoSteps, move);
    }
}
