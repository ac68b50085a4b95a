// The program's one mutable state: the scene, what is open, what is selected, what the user is doing.
#pragma once

#include "state/asset_entry.h"
#include "state/blueprint_node.h"
#include "state/camera_pose.h"
#include "state/game_object.h"
#include "state/gesture.h"
#include "state/hit_zone.h"
#include "state/interaction.h"
#include "state/mesh.h"
#include "state/modes.h"
#include "state/panel_layout.h"
#include "state/recent_project.h"
#include "state/recovery_state.h"
#include "state/scene_snapshot.h"
#include "state/texture_image.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// The scene before a change.
struct UndoStep {
    SceneSnapshot scene{};
    int32_t selection = -1;    // before the change
    std::string_view label{};  // of the command that made it, as written in its code; nobody is shown it
    uint64_t version = 0;      // EditorState::sceneVersion of that scene
};

// What loading a scene replaces as a whole.
struct SceneContent {
    Scene scene{};
    std::vector<MeshAsset> meshes{};  // the seven built-in ones, then the imported ones
    std::vector<TextureImage> textures{};
    int32_t selectedIndex = 0;  // -1 nothing; range-checked by everyone who uses it
};

// The scene and the user's place in it, kept aside while something else is shown: a game that plays it, or a
// prefab.
struct KeptScene {
    Scene scene{};
    int32_t selectedIndex = 0;
    CameraPose camera{};
    float animationTime = 0;  // seconds
    std::vector<UndoStep> undoSteps{};
    uint64_t sceneVersion = 0;
};

// What the program last read or wrote in a file that it may save over: its fingerprint, by the full path in
// capital letters.
using KnownFileList = std::unordered_map<std::wstring, uint64_t>;

// Accessed by the window's thread only. A value: a test starts from a fresh one.
struct EditorState : SceneContent {
    CameraPose camera{};                // the editor's own
    std::vector<UndoStep> undoSteps{};  // oldest first, at most 64
    RecoveryState recovery{};
    SceneSnapshot savedScene{};                    // the objects as they were last loaded or saved
    uint64_t sceneVersion = 0;                     // another number after every change of an object
    uint64_t savedVersion = 0;                     // of `savedScene`
    uint64_t lastVersion = 0;                      // given to any scene; no number is given twice
    std::optional<KeptScene> sceneBeforePlay{};    // none in the runtime, which has no scene to go back to
    std::optional<KeptScene> sceneBeforePrefab{};  // while a prefab is open
    std::optional<GameObject> clipboardObject{};

    // Modes.
    std::array<bool, 256> keyDown{};  // by virtual-key code
    bool runtimeMode = false;
    bool hubVisible = false;
    bool playMode = false;
    Screen screen = Screen::SceneEditor;
    Tool tool = Tool::Move;
    BottomTab bottomTab = BottomTab::Console;
    bool prefabDirty = false;
    bool blueprintDirty = false;
    bool componentSearchActive = false;
    int32_t score = 0;
    float animationTime = 0;             // seconds
    uint32_t randomState = 0x9E3779B9u;  // never reseeded, so that every run spawns the same

    // Layout, and what the last frame drew where.
    PanelLayout panels{};
    HitZoneList inspectorZones{};
    int32_t inspectedObject = -1;  // that the zones were drawn for; -1 none, or its index may have changed
    HierarchyRowList hierarchyRows{};  // empty when the indices of its objects may have changed
    PathZoneList filesCells{};
    PathZoneList hubRows{};  // by a project's folder

    // Project and files.
    std::wstring projectRoot = L"Project";
    std::wstring filesRoot = L"Project\\Files";
    std::wstring filesFolder = L"Project\\Files";
    std::wstring scenePath = L"Project\\Files\\Scenes\\Main.scene";
    std::vector<AssetEntry> fileEntries{};
    KnownFileList knownFiles{};
    std::vector<std::wstring> otherVersions{};  // names of those kept by saves, for the next message
    std::vector<RecentProject> recentProjects{};
    std::vector<BlueprintNode> blueprintNodes{};
    std::wstring blueprintPath{};       // full path; empty without an open Blueprint
    std::wstring blueprintShownPath{};  // as the Blueprint screen shows it
    std::wstring blueprintName{};       // file name
    std::wstring prefabPath{};          // full path; empty without an open prefab
    std::wstring prefabName{};          // file name without extension
    std::wstring windowTitle{};         // as last set
    std::wstring statusMessage = L"Ready. Software renderer bezi bez externich knihoven.";

    // What the user is doing.
    uint64_t handledEvents = 0;  // since the start; see RunTurn
    Point pointer{};             // last known position, pixels
    PressTaker lastPress = PressTaker::Nobody;
    Gesture gesture{};
    bool keyboardTransform = false;  // a held key moves the selection: one undo step
    int32_t selectedFile = -1;       // index into fileEntries
    std::optional<PopupMenu> menu{};
    NameEntry nameEntry{};
    NumberEntry numberEntry{};
    wchar_t typedHalf = 0;               // half of a surrogate pair that waits for its other half; 0 none
    std::wstring componentSearchText{};  // at most 40 units
};

extern EditorState editorState;
