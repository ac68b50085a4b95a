// A user who hits every key and every pixel at random, and what must be true after each of their doings.
#include "app/turn.h"
#include "formats/scene_file.h"
#include "platform/headless/fault_injection.h"
#include "scene/name_entry.h"
#include "scene/object_fields.h"
#include "scene/snapshots.h"
#include "scene/undo.h"
#include "support/cached_picture.h"
#include "support/editor_input.h"
#include "support/editor_laws.h"
#include "support/random_scene.h"
#include "support/random_user.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

constexpr uint32_t kSeed = 20261121;
constexpr int32_t kEvents = 100000;
constexpr int32_t kEventsPerScene = 1000;
constexpr int32_t kEventsPerFrame = 50;  // about; only every so often is a picture drawn

// Undoes the step that an event has added, compares, and puts everything back.
static bool UndoRestores(const Scene& before) {
    std::vector<MeshAsset> meshes =
        std::exchange(editorState.meshes, {});  // large, and none of undo's business
    EditorState after = editorState;
    const bool wasCaptured = headless.mouseIsCaptured;
    undo();
    const bool isRestored = std::ranges::equal(editorState.scene, before, SameBits);
    editorState = std::move(after);
    editorState.meshes = std::move(meshes);
    headless.mouseIsCaptured = wasCaptured;
    return isRestored;
}

// Lets a turn pass in which nothing happens. Where it draws nothing, the picture is the one that drawing
// gives.
static bool LeftOutPictureIsTheSame(Turn& turn) {
    const bool isMinimised = headless.clientSize.width < 1 || headless.clientSize.height < 1;
    if (RunTurn(0.016f, turn) || isMinimised) return true;
    return FaultInCachedPicture().empty();
}

// Lets a turn pass that draws, where anything happened. What it left as it was is as drawing gives it.
static bool CachedPictureIsWhole(Turn& turn) {
    const bool isMinimised = headless.clientSize.width < 1 || headless.clientSize.height < 1;
    if (isMinimised || !RunTurn(0, turn)) return true;
    return FaultInCachedPicture().empty();
}

static void StartAnew(RandomUser<RandomSource>& user) {
    editorState = EditorState{};
    headless.mouseIsCaptured = false;
    resetScene(user.Sometimes(2));
    MarkSceneSaved();
    if (!user.Sometimes(3)) return;
    editorState.screen = Screen::PrefabEditor;
    editorState.sceneBeforePrefab = {.scene = editorState.scene};
}

TEST_CASE(
    "whatever is pressed, typed and clicked, the editor stays whole and one undo takes back one change") {
    CAPTURE(kSeed);
    const ScratchFolder folder;  // for whatever the user saves or creates
    folderAnswers.workingFolder = folder.path;
    folderAnswers.localDataFolder = folder / L"data";
    StartEditor(700, 400);
    RandomUser<RandomSource> user{RandomSource(kSeed)};
    size_t longestName = 80;
    int32_t undone = 0;
    Turn turn;
    CachePictures();
    for (int32_t event = 0; event < kEvents; ++event) {
        CAPTURE(event);
        if (event % kEventsPerScene == 0) {
            StartAnew(user);
            turn = {};
        }
        if (user.Sometimes(kEventsPerFrame)) {
            if (std::exchange(user.hasLetTimePass, false)) turn = {};
            REQUIRE(CachedPictureIsWhole(turn));
            REQUIRE(LeftOutPictureIsTheSame(turn));
        }
        // A full history takes a step without growing; half of the time it gets room to show it.
        if (editorState.undoSteps.size() == 64 && user.Sometimes(2)) ClearUndo();

        const Scene before = editorState.scene;
        const uint64_t version = editorState.sceneVersion;
        const size_t steps = editorState.undoSteps.size();
        const bool wasNaming = NameEntryIsOpen();
        const bool wasPlaying = editorState.playMode;
        user.DoSomething();

        if (NameEntryIsOpen() && !wasNaming)
            longestName = std::max<size_t>(80, editorState.nameEntry.text.size());
        const char* fault = FaultInEditor(longestName);
        REQUIRE_MESSAGE(fault == nullptr, std::string(fault == nullptr ? "" : fault));
        REQUIRE_FALSE(headless.quitRequested);
        const bool showsScene = !editorState.playMode && editorState.screen != Screen::PrefabEditor;
        if (showsScene && !SceneHasChanges()) REQUIRE(HoldsScene(editorState.savedScene, editorState.scene));
        // What keeps unsaved work takes equal versions for equal objects.
        if (!editorState.playMode && !wasPlaying && editorState.sceneVersion == version)
            REQUIRE(editorState.scene == before);
        if (wasPlaying && !editorState.playMode) continue;  // the history of before the game is back
        REQUIRE(editorState.undoSteps.size() <= steps + 1);
        if (editorState.undoSteps.size() <= steps) continue;
        REQUIRE(UndoRestores(before));
        ++undone;
    }
    MESSAGE("seed ", kSeed, ": ", undone, " steps of the history taken and undone");
    CHECK(undone > 1000);
}
