#include "project/stored_paths.h"

#include "formats/path_text.h"
#include "platform/files.h"
#include "scene/editor_state.h"

namespace {

struct PathMove {
    const std::wstring& from;
    const std::wstring& to;
};

}  // namespace

static bool IsAtOrBelow(const std::wstring& path, const std::wstring& folder) {
    if (folder.empty() || !path.starts_with(folder)) return false;
    return path.size() == folder.size() || IsSeparator(path[folder.size()]);
}

static void MovePath(std::wstring& path, const PathMove& move) {
    if (IsAtOrBelow(path, move.from)) path.replace(0, move.from.size(), move.to);
}

static void MovePathsOf(GameObject& object, const PathMove& move) {
    for (std::wstring* path :
         {&object.texturePath, &object.collectPrefab, &object.prefabSource, &object.spawnerPrefab}) {
        MovePath(*path, move);
    }
}

static void MovePathsOf(Scene& scene, const PathMove& move) {
    for (GameObject& object : scene) MovePathsOf(object, move);
}

// Taken anew one after the other, so that they share again what did not change between them.
static void MovePathsOf(std::vector<SceneSnapshot>& history, const PathMove& move) {
    Scene scene;
    const SceneSnapshot* earlier = nullptr;
    for (SceneSnapshot& snapshot : history) {
        RestoreSnapshot(snapshot, scene);
        MovePathsOf(scene, move);
        snapshot = TakeSnapshot(scene, earlier);
        earlier = &snapshot;
    }
}

void MoveStoredPaths(const std::wstring& from, const std::wstring& to) {
    const PathMove move{from, to};
    for (std::wstring* path : {&editorState.filesFolder, &editorState.scenePath, &editorState.blueprintPath,
                               &editorState.prefabPath}) {
        MovePath(*path, move);
    }
    if (!editorState.prefabPath.empty())
        editorState.prefabName = NameWithoutExtension(editorState.prefabPath);
    for (std::wstring& source : editorState.meshSources) MovePath(source, move);
    for (TextureImage& texture : editorState.textures) MovePath(texture.path, move);
    for (AssetEntry& entry : editorState.fileEntries) {
        MovePath(entry.path, move);
        MovePath(entry.folder, move);
    }

    for (Scene* scene : {&editorState.scene, &editorState.playSnapshot, &editorState.prefabSnapshot.scene}) {
        MovePathsOf(*scene, move);
    }
    MovePathsOf(editorState.clipboardObject, move);
    MovePathsOf(editorState.undoScenes, move);
    MovePathsOf(editorState.prefabSnapshot.undoScenes, move);
}
