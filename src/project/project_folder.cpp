#include "project/project_folder.h"

#include "base/path_text.h"
#include "formats/project_file.h"
#include "platform/files.h"
#include "platform/window.h"
#include "play/play_mode.h"
#include "scene/interaction.h"
#include "scene/undo.h"
#include "state/editor_state.h"

constexpr const wchar_t* kFilesSubfolders[] = {L"imported", L"scripts", L"Scenes"};

void SetProjectFolder(const std::wstring& folder) {
    editorState.projectRoot = folder;
    editorState.filesRoot = JoinPath(folder, kFilesFolderName);
    editorState.filesFolder = editorState.filesRoot;
    editorState.selectedFile = -1;
}

// Tries all of them even if one fails: a project with some of its folders works better than one with none.
bool MakeProjectFolders() {
    bool allStand = true;
    for (const wchar_t* name : kFilesSubfolders) {
        allStand = MakeFolders(JoinPath(editorState.filesRoot, name)) && allStand;
    }
    return allStand;
}

// Indices first, entries next, then the modes: gestures and entries name objects and files of the project
// that is being left, and must not outlive it by a frame. The scene before a game is dropped, not put back,
// because the caller replaces the scene.
void LeaveOpenProject() {
    ForgetObjectIndices();
    CloseEntriesAndMenu();
    editorState.componentSearchText.clear();
    editorState.hubVisible = false;
    editorState.playMode = false;
    editorState.sceneBeforePlay.reset();
    editorState.screen = Screen::SceneEditor;
    ClearUndo();
}

void ShowTitle(const std::wstring& title) {
    editorState.windowTitle = title;
    ChangeWindowTitle(title);
}

void ShowProjectTitle() { ShowTitle(L"ZelEngine - " + LastComponent(editorState.projectRoot)); }

std::wstring ProjectFileName() {
    const std::wstring name = SanitizeFileName(LastComponent(editorState.projectRoot));
    return name.empty() ? L"ZelEngineProject" : name;
}

const std::wstring& CurrentScenePath() {
    if (editorState.scenePath.empty()) editorState.scenePath = MainScenePath(editorState.filesRoot);
    return editorState.scenePath;
}
