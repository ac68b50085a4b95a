#include "project/save_project_as.h"

#include "base/path_text.h"
#include "formats/project_file.h"
#include "formats/recent_projects.h"
#include "formats/scene_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "project/folder_copy.h"
#include "project/other_screens.h"
#include "project/project_folder.h"
#include "project/save_project.h"
#include "project/stored_paths.h"
#include "scene/status.h"
#include "state/editor_state.h"

// The state goes on with the project in `folder`, a copy of the one that was open.
static void MoveToProject(const std::wstring& folder) {
    MoveStoredPaths(editorState.projectRoot, folder);
    const std::wstring shownFolder = editorState.filesFolder;
    SetProjectFolder(folder);
    editorState.filesFolder = shownFolder;
}

static bool CopyProject(const std::wstring& folder) {
    if (!CopyFolder(editorState.filesRoot, JoinPath(folder, kFilesFolderName))) return false;
    return WriteProjectCopy(folder);
}

void SaveProjectAs() {
    if (RefuseSaveInPlayMode() || !LeaveOtherScreens()) return;
    const std::wstring chosen = PickFolder(L"Vyber slozku, kam se ma ulozit ZelEngine projekt");
    if (chosen.empty()) {
        SetStatus(L"Ulozeni projektu zruseno.");
        return;
    }
    if (!editorState.scenePath.empty() && !SaveScene(editorState.scenePath)) {
        SetStatus(L"Projekt se nepodarilo ulozit.");
        return;
    }
    const std::wstring folder = MakeUniqueFolder(chosen, ProjectFileName());
    const bool isNew = KindOfPath(folder) == PathKind::Missing;
    if (!CopyProject(folder)) {
        if (isNew) RemoveFolderTree(folder);
        SetStatus(L"Projekt se nepodarilo ulozit.");
        return;
    }
    MoveToProject(folder);
    // The paths in its objects have changed with the folder; stored relative to it, they are what was just
    // saved.
    if (!editorState.scenePath.empty()) MarkSceneSaved();
    RefreshAssetList();
    AddRecentProject(folder);
    SaveRecentProjects();
    ShowProjectTitle();
    SetStatus(L"Projekt ulozen do: " + folder);
}
