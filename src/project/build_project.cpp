#include "project/build_project.h"

#include "base/path_text.h"
#include "formats/project_file.h"
#include "formats/scene_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "project/folder_copy.h"
#include "project/other_screens.h"
#include "project/project_folder.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "state/editor_state.h"

static bool RefuseInPlayMode() {
    if (!editorState.playMode || ShownScreen() == Shown::Game) return false;
    SetStatus(L"Nejdriv vypni Play Mode, potom sestav projekt.");
    return true;
}

static bool SaveOpenScene() { return editorState.scenePath.empty() || SaveScene(editorState.scenePath); }

static bool WriteBuild(const std::wstring& folder) {
    if (!CopyFolder(editorState.filesRoot, JoinPath(folder, kFilesFolderName))) return false;
    return WriteProjectCopy(folder);
}

void BuildProject() {
    if (!LeaveOtherScreens() || RefuseInPlayMode()) return;
    const std::wstring chosen = PickFolder(L"Vyber slozku, kam se ma sestavit projekt");
    if (chosen.empty()) {
        SetStatus(L"Sestaveni projektu zruseno.");
        return;
    }

    const std::wstring folder = MakeUniqueFolder(chosen, ProjectFileName() + L"_Build");
    const bool isNew = KindOfPath(folder) == PathKind::Missing;
    if (!SaveOpenScene() || !WriteBuild(folder)) {
        if (isNew) RemoveFolderTree(folder);
        SetStatus(L"Projekt se nepodarilo sestavit.");
        return;
    }
    if (!CopyToFreePath(GetExecutablePath(), JoinPath(folder, L"ZelGame.exe"))) {
        SetStatus(L"Projekt ulozen jako build, ale nepodarilo se zkopirovat ZelGame.exe.");
        return;
    }
    SetStatus(L"Projekt sestaven do: " + folder);
}
