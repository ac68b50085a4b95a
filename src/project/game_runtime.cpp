#include "project/game_runtime.h"

#include "base/path_text.h"
#include "formats/project_file.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "play/play_mode.h"
#include "project/asset_list.h"
#include "project/project_folder.h"
#include "scene/status.h"
#include "state/editor_state.h"

bool DetectRuntimeProject() {
    const std::wstring folder = ParentFolder(GetExecutablePath());
    if (KindOfPath(JoinPath(folder, kProjectFileName)) == PathKind::Missing) return false;

    SetProjectFolder(folder);
    if (!ReadProjectFile(folder)) {
        editorState.scenePath = MainScenePath(editorState.filesRoot);
    }

    editorState.savedScene = {};  // a game asks for no saving
    RefreshAssetList();
    editorState.playMode = true;
    editorState.runtimeMode = true;
    ResetGameState();
    SetStatus(L"ZelGame runtime: projekt nacten z build slozky.");
    return true;
}
