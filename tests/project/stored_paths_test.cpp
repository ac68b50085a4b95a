#include "project/stored_paths.h"

#include "scene/snapshots.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include "doctest/doctest.h"

static GameObject ObjectWithPaths(const std::wstring& folder) {
    return {.name = L"Object",
            .texturePath = folder + L"\\a.png",
            .collectPrefab = folder + L"\\b.prefab",
            .prefabSource = folder + L"\\c.prefab",
            .spawnerPrefab = folder + L"\\d.prefab"};
}

static bool HasPaths(const GameObject& object, const std::wstring& folder) {
    return object.texturePath == folder + L"\\a.png" && object.collectPrefab == folder + L"\\b.prefab" &&
           object.prefabSource == folder + L"\\c.prefab" && object.spawnerPrefab == folder + L"\\d.prefab";
}

static Scene SceneWithPaths(const std::wstring& folder) { return {GameObject{}, ObjectWithPaths(folder)}; }

TEST_CASE("every path of the state follows a folder") {
    editorState = EditorState{};
    editorState.filesFolder = L"C:\\P\\Files\\imported";
    editorState.scenePath = L"C:\\P\\Files\\Scenes\\Main.scene";
    editorState.blueprintPath = L"C:\\P\\Files\\x.blueprint";
    editorState.prefabPath = L"C:\\P\\Files\\x.prefab";
    editorState.meshes = {{}, {.source = L"C:\\P\\Files\\m.obj"}, {.source = L"D:\\other.obj"}};
    editorState.textures.resize(1);
    editorState.textures[0].path = L"C:\\P\\Files\\t.png";
    editorState.fileEntries = {{.name = L"t.png", .path = L"C:\\P\\Files\\t.png", .folder = L"C:\\P\\Files"}};
    MoveStoredPaths(L"C:\\P", L"E:\\New");
    CHECK(editorState.filesFolder == L"E:\\New\\Files\\imported");
    CHECK(editorState.scenePath == L"E:\\New\\Files\\Scenes\\Main.scene");
    CHECK(editorState.blueprintPath == L"E:\\New\\Files\\x.blueprint");
    CHECK(editorState.prefabPath == L"E:\\New\\Files\\x.prefab");
    CHECK(editorState.meshes[0].source == L"");
    CHECK(editorState.meshes[1].source == L"E:\\New\\Files\\m.obj");
    CHECK(editorState.meshes[2].source == L"D:\\other.obj");
    CHECK(editorState.textures[0].path == L"E:\\New\\Files\\t.png");
    CHECK(editorState.fileEntries[0].path == L"E:\\New\\Files\\t.png");
    CHECK(editorState.fileEntries[0].folder == L"E:\\New\\Files");
}

TEST_CASE("the objects' paths follow wherever objects are kept") {
    editorState = EditorState{};
    const std::wstring from = L"C:\\P\\Files", to = L"C:\\P\\Assets";
    editorState.scene = SceneWithPaths(from);
    for (const char* label : {"first", "second", "third"}) pushUndo(label);
    editorState.sceneBeforePrefab = {.scene = SceneWithPaths(from), .undoSteps = editorState.undoSteps};
    editorState.sceneBeforePlay = {.scene = SceneWithPaths(from), .undoSteps = editorState.undoSteps};
    editorState.clipboardObject = ObjectWithPaths(from);
    MoveStoredPaths(from, to);
    CHECK(HasPaths(editorState.scene[1], to));
    CHECK(HasPaths(editorState.sceneBeforePrefab->scene[1], to));
    CHECK(HasPaths(editorState.sceneBeforePlay->scene[1], to));
    CHECK(HasPaths(*editorState.clipboardObject, to));
    for (const auto& history : {editorState.undoSteps, editorState.sceneBeforePrefab->undoSteps,
                                editorState.sceneBeforePlay->undoSteps}) {
        REQUIRE(history.size() == 3);
        for (const UndoStep& step : history) {
            Scene scene;
            RestoreSnapshot(step.scene, scene);
            REQUIRE(scene.size() == 2);
            CHECK(HasPaths(scene[1], to));
        }
    }
}

TEST_CASE("only the path itself and paths below it follow, in any case of letters") {
    struct {
        const wchar_t *from, *path, *result;
    } cases[] = {{L"C:\\a", L"C:\\a", L"X"},       {L"C:\\a", L"C:\\a\\b", L"X\\b"},
                 {L"C:\\a", L"C:\\a/b", L"X/b"},   {L"C:\\a", L"C:\\ab", L"C:\\ab"},
                 {L"C:\\a", L"C:\\A\\b", L"X\\b"}, {L"C:\\\u0161", L"c:/\u0160\\b", L"X\\b"},
                 {L"C:\\a", L"C:\\", L"C:\\"},     {L"C:\\a", L"", L""},
                 {L"", L"C:\\a", L"C:\\a"}};
    for (const auto& [from, path, result] : cases) {
        editorState = EditorState{};
        editorState.scenePath = path;
        MoveStoredPaths(from, L"X");
        CHECK(editorState.scenePath == result);
    }
}

TEST_CASE("the name of an open prefab follows its file, and without one there is none") {
    editorState = EditorState{};
    editorState.prefabPath = L"C:\\P\\Old.prefab";
    editorState.prefabName = L"Old";
    MoveStoredPaths(L"C:\\P\\Old.prefab", L"C:\\P\\New.prefab");
    CHECK(editorState.prefabName == L"New");
    editorState.prefabPath.clear();
    editorState.prefabName.clear();
    MoveStoredPaths(L"C:\\P", L"C:\\Q");
    CHECK(editorState.prefabName.empty());
}
