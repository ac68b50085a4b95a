#include "project/save_project.h"

#include "base/path_text.h"
#include "formats/project_file.h"
#include "formats/recent_projects.h"
#include "formats/scene_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "project/asset_list.h"
#include "project/folder_copy.h"
#include "project/project_folder.h"
#include "project/recovery.h"
#include "project/scene_switch.h"
#include "project/stored_paths.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "state/editor_state.h"

// The game in the editor, which must be stopped first. The runtime is no such game.
static bool RefuseInPlayMode(const wchar_t* message) {
    if (!editorState.playMode || ShownScreen() == Shown::Game) return false;
    SetStatus(message);
    return true;
}

static bool RefuseSaveInPlayMode() {
    return RefuseInPlayMode(L"Nejdriv vypni Play Mode. Runtime zmeny se do projektu neukladaji.");
}

static bool SaveOpenScene() {
    if (editorState.scenePath.empty()) return true;
    if (!SaveScene(editorState.scenePath)) return false;
    ForgetSceneRecovery();
    ListOtherVersions();
    return true;
}

static void ReportSaved(bool sceneSaved, bool projectWritten) {
    if (!sceneSaved) {
        SetStatus(L"Projekt se nepodarilo ulozit.");
    } else if (!projectWritten) {
        SetStatus(L"Scena ulozena, ale project.zel se nepodarilo ulozit.");
    } else {
        SetStatus(L"Ctrl+S: projekt ulozen: " + editorState.projectRoot);
    }
}

// Both files are always tried. The scene is what the user has made; `project.zel` holds a second copy of it,
// which must not be lost too because the first could not be written.
void SaveProject() {
    if (RefuseSaveInPlayMode()) return;
    const bool sceneSaved = SaveScene(CurrentScenePath());
    if (sceneSaved) ForgetSceneRecovery();
    const bool projectWritten = WriteProjectFile(editorState.projectRoot);
    ListOtherVersions();
    ReportSaved(sceneSaved, projectWritten);
}

// Copies the open project, as it lies on the disk, into `folder`, and lets `finish` do the rest. Save as and
// build share this, so both leave nothing behind: a new folder is removed if any part fails or is cancelled.
template <typename Finish>
static bool CopyProjectInto(const std::wstring& folder, LongWork& work, Finish finish) {
    const bool isNew = KindOfPath(folder) == PathKind::Missing;
    const bool isCopied = CopyFolder(editorState.filesRoot, JoinPath(folder, kFilesFolderName), work) &&
                          WriteProjectCopy(folder) && finish();
    if (isCopied && !work.IsCancelled()) return true;
    if (isNew) RemoveFolderTree(folder);
    return false;
}

// Continues with the project in `folder`, a copy of the one that was open.
static void MoveToProject(const std::wstring& folder) {
    MoveStoredPaths(editorState.projectRoot, folder);
    const std::wstring shownFolder = editorState.filesFolder;
    SetProjectFolder(folder);
    editorState.filesFolder = shownFolder;
    // The paths in the objects have changed with the folder. Files store them relative to it, so the scene
    // is what was just saved.
    if (!editorState.scenePath.empty()) MarkSceneSaved();
}

// Save, copy, move, in this order: the copy is made of what lies on the disk, and the state moves only when
// the copy is whole. So a failure at any step leaves the user in the project that was open.
void SaveProjectAs() {
    if (RefuseSaveInPlayMode() || !LeaveOtherScreens()) return;
    const std::wstring chosen = PickFolder(L"Vyber slozku, kam se ma ulozit ZelEngine projekt");
    if (chosen.empty()) {
        SetStatus(L"Ulozeni projektu zruseno.");
        return;
    }
    if (!SaveOpenScene()) {
        SetStatus(L"Projekt se nepodarilo ulozit.");
        return;
    }
    const std::wstring folder = MakeUniqueFolder(chosen, ProjectFileName());
    LongWork work(L"Kopiruji projekt", L"souboru", LongWork::Esc::Cancels);
    if (!CopyProjectInto(folder, work, [] { return true; })) {
        SetStatus(work.IsCancelled() ? L"Ulozeni projektu zruseno." : L"Projekt se nepodarilo ulozit.");
        return;
    }
    MoveToProject(folder);
    RefreshAssetList();
    AddRecentProject(folder);
    SaveRecentProjects();
    ShowProjectTitle();
    SetStatus(L"Projekt ulozen do: " + folder);
}

// The state stays in the open project. WriteProjectCopy writes paths relative to the project, and these name
// the same places in the build.
void BuildProject() {
    if (!LeaveOtherScreens() || RefuseInPlayMode(L"Nejdriv vypni Play Mode, potom sestav projekt.")) return;
    const std::wstring chosen = PickFolder(L"Vyber slozku, kam se ma sestavit projekt");
    if (chosen.empty()) {
        SetStatus(L"Sestaveni projektu zruseno.");
        return;
    }

    const std::wstring folder = MakeUniqueFolder(chosen, ProjectFileName() + L"_Build");
    LongWork work(L"Sestavuji projekt", L"souboru", LongWork::Esc::Cancels);
    bool hasProgram = false;  // a build without it stays: it is a copy of the project
    const auto copyProgram = [&] {
        hasProgram = CopyToFreePath(GetExecutablePath(), JoinPath(folder, L"ZelGame.exe"),
                                    [&work](int64_t, int64_t) { return work.Continue(); });
        return true;
    };
    if (!SaveOpenScene() || !CopyProjectInto(folder, work, copyProgram)) {
        SetStatus(work.IsCancelled() ? L"Sestaveni projektu zruseno." : L"Projekt se nepodarilo sestavit.");
    } else if (!hasProgram) {
        SetStatus(L"Projekt ulozen jako build, ale nepodarilo se zkopirovat ZelGame.exe.");
    } else {
        SetStatus(L"Projekt sestaven do: " + folder);
    }
}
