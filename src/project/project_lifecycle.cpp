#include "project/project_lifecycle.h"

#include "base/enough_memory.h"
#include "base/letter_case.h"
#include "base/path_text.h"
#include "formats/free_path.h"
#include "formats/project_file.h"
#include "formats/recent_projects.h"
#include "formats/scene_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "play/play_mode.h"
#include "project/asset_list.h"
#include "project/folder_copy.h"
#include "project/project_folder.h"
#include "project/recovery_files.h"
#include "project/scene_switch.h"
#include "scene/default_scenes.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <string_view>
#include <utility>

constexpr std::string_view kPlayerController =
    "// ZelEngine PlayerController\n"
    "\n"
    "float moveSpeed = 4.0f;\n"
    "\n"
    "void Update() {\n"
    "    // W/S/A/D pohyb je zatim spousten enginem podle nazvu PlayerController.\n"
    "}\n";
static_assert(kPlayerController.size() == 151);

// Closes the other editors and the game, and lets the user save what would be lost. False to stay.
static bool LeaveScene() {
    if (!LeaveOtherScreens()) return false;
    if (ShownScreen() == Shown::Hub || ShownScreen() == Shown::Game) return true;
    StopPlayMode();
    return AskSaveOfChangedScene();
}

static void ListAsRecent(const std::wstring& folder) {
    AddRecentProject(folder);
    SaveRecentProjects();
}

static bool WritePlayerController() {
    const std::wstring path = JoinPath(editorState.filesRoot, L"scripts\\PlayerController.cpp");
    const PathKind kind = KindOfPath(path);
    if (kind == PathKind::Missing) return WriteWholeFile(path, kPlayerController);
    return kind != PathKind::Unknown;
}

// Turns the state into that of a new project and writes it.
static bool MakeProject(const std::wstring& folder, bool empty) {
    SetProjectFolder(folder);
    LeaveOpenProject();
    resetScene(!empty);
    RaiseSceneVersion();
    editorState.scenePath = MainScenePath(editorState.filesRoot);
    const bool hasFolders = MakeProjectFolders() && WritePlayerController();
    return hasFolders && SaveScene(editorState.scenePath) && WriteProjectFile(editorState.projectRoot);
}

// All or nothing: if the project cannot be made, the state is put back from a copy and a new folder is
// removed. The copy comes first, because after half a change nothing could be put back.
static bool TryToMakeProject(const std::wstring& folder, bool empty) {
    EditorState before;
    const bool isKept = WithEnoughMemory([&before] {
        before = editorState;
        return true;
    });
    if (!isKept) return false;
    const bool isNew = KindOfPath(folder) == PathKind::Missing;
    if (WithEnoughMemory([&] { return MakeProject(folder, empty); })) return true;
    editorState = std::move(before);
    if (isNew) RemoveFolderTree(folder);
    return false;
}

void CreateProject(bool empty) {
    if (!LeaveOtherScreens()) return;
    const std::wstring chosen = PickFolder(L"Vyber slozku, kde se vytvori novy ZelEngine projekt");
    if (chosen.empty()) {
        SetStatus(L"Vytvoreni noveho projektu zruseno.");
        return;
    }
    if (!LeaveScene()) return;

    if (!TryToMakeProject(MakeUniqueFolder(chosen, L"ZelEngineProject"), empty)) {
        SetStatus(L"Projekt se nepodarilo ulozit.");
        return;
    }
    RefreshAssetList();
    ListAsRecent(editorState.projectRoot);
    ShowProjectTitle();
    SetStatus((empty ? L"Prazdny projekt vytvoren: " : L"Zakladni projekt vytvoren: ") +
              editorState.projectRoot);
}

static bool HoldsProjectFile(const std::wstring& folder) {
    return KindOfPath(JoinPath(folder, kProjectFileName)) != PathKind::Missing;
}

// The folder of the project that the user means by `chosen`: the folder itself, or its parent if it is a
// Files folder. Empty when it belongs to no project.
static std::wstring ProjectRootOf(const std::wstring& chosen) {
    if (HoldsProjectFile(chosen)) return chosen;
    std::wstring parent = ParentFolder(chosen);
    if (SameWithoutCase(LastComponent(chosen), kFilesFolderName) && HoldsProjectFile(parent)) return parent;
    const bool holdsFiles = KindOfPath(JoinPath(chosen, kFilesFolderName)) == PathKind::Folder;
    return holdsFiles ? chosen : std::wstring();
}

void OpenProjectDialog() {
    const std::wstring chosen = PickFolder(L"Vyber slozku ZelEngine projektu");
    if (chosen.empty()) {
        SetStatus(L"Otevreni projektu zruseno.");
        return;
    }
    OpenProject(ProjectRootOf(chosen));
}

// The path for the default scene. A main scene without a project file is still somebody's work, so it is
// renamed to the first free one of Main_01, Main_02 ...; if it cannot be renamed, the default scene gets
// that name instead.
static std::wstring FreeMainScenePath() {
    std::wstring path = MainScenePath(editorState.filesRoot);
    if (KindOfPath(path) == PathKind::Missing) return path;
    const std::wstring other = FirstFreePath(ParentFolder(path), L"Main", L".scene");
    return RenamePath(path, other) ? path : other;
}

static void MakeDefaultScene() {
    resetScene(true);
    RaiseSceneVersion();
    editorState.scenePath = FreeMainScenePath();
    SaveScene(editorState.scenePath);
    RefreshAssetList();
    SetStatus(L"Projekt otevren, ale project.zel nebyl nalezen. Vytvorena vychozi scena.");
}

// Paths in the folder begin with it and one separator. The root of a drive keeps its separator.
static std::wstring WithoutLastSeparator(const std::wstring& folder) {
    return LastComponent(folder).empty() ? ParentFolder(folder) : folder;
}

// Three parts. The questions come first, while nothing has changed and the user may still stay. Then the
// open project is left and the folders of the new one are set; recoveries are taken over before the files
// are listed, so that the list shows them. The scene comes last, because its references are resolved against
// the new folder.
Opening OpenProject(const std::wstring& folder) {
    if (folder.empty() || !IsProjectFolder(folder)) {
        SetStatus(L"Vybrana slozka neni ZelEngine projekt.");
        return Opening::NoProject;
    }
    if (!LeaveScene()) return Opening::Refused;

    const std::wstring root = WithoutLastSeparator(AbsolutePath(folder));
    LeaveOpenProject();
    editorState.runtimeMode = false;  // the one way from the game to the editor
    SetProjectFolder(root);
    TakeOverRecoveries(root);
    RefreshAssetList();
    if (ReadProjectFile(root)) {
        SetStatus(L"Projekt otevren: " + root);
    } else {
        MakeDefaultScene();
    }
    ListAsRecent(root);
    ShowProjectTitle();
    return Opening::Opened;
}

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
