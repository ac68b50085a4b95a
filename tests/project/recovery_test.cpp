#include "project/recovery.h"

#include "formats/object_line.h"
#include "formats/prefab.h"
#include "formats/scene_file.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "platform/headless/native_path.h"
#include "project/asset_list.h"
#include "project/recovery_files.h"
#include "scene/interaction.h"
#include "scene/undo.h"
#include "support/capture.h"
#include "support/folder_entries.h"
#include "support/folder_tree.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace fs = std::filesystem;

static std::wstring RecoveriesIn(const ScratchFolder& folder) {
    return folder / L"local\\ZelEngine\\recovery";
}

static std::wstring MainScene(const ScratchFolder& folder) {
    return FilesIn(folder) + L"\\Scenes\\Main.scene";
}
static std::wstring Recovered(const ScratchFolder& folder) {
    return FilesIn(folder) + L"\\Scenes\\Main_neulozeno.scene";
}

static size_t RecoveryCount(const ScratchFolder& folder) { return EntriesOf(RecoveriesIn(folder)).size(); }

// Does what the other thread would do.
static void WorkAside() {
    for (; !headless.aside.empty(); headless.aside.pop_front()) headless.aside.front()();
}

// Runs as many frames as it takes to look for unsaved work and to write it. `minute` counts the looks.
static void PassMinute(int32_t minute) {
    for (int32_t frame = 0; frame < 20; ++frame) {
        KeepRecovery(61.0 * minute + 0.01 * frame);
        WorkAside();
    }
}

// Frames until a recovery is on its way to the disk, which the test lets go on with WorkAside.
static void HandRecoveryOver() {
    for (int32_t frame = 0; frame < 5; ++frame) KeepRecovery(61 + 0.01 * frame);
    REQUIRE(headless.aside.size() == 1);
}

static void AddObject(const std::wstring& name) {
    MarkChanged();
    editorState.scene.push_back({.name = name});
}

static std::string OnlyRecovery(const ScratchFolder& folder) {
    REQUIRE(RecoveryCount(folder) == 1);
    return FileBytes(RecoveriesIn(folder) + L"\\" + EntriesOf(RecoveriesIn(folder))[0].name);
}

// A new process in the same folders, which opens the project from the Hub.
static void RestartAndOpen(const ScratchFolder& folder) {
    StartHub(folder);
    CHECK(OpenProject(ProjectIn(folder)) == Opening::Opened);
    editorState.bottomTab = BottomTab::Files;
    RenderFrame();
}

TEST_CASE("what was changed and not saved is found beside its scene after the program has ended") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    editorState.scene.back().parentIndex = 2;
    const Scene changed = editorState.scene;
    const std::string saved = FileBytes(MainScene(folder));
    WriteRecoveryNow();
    CHECK(FileBytes(MainScene(folder)) == saved);
    REQUIRE(RecoveryCount(folder) == 1);

    RestartAndOpen(folder);
    CHECK(editorState.statusMessage == L"Projekt otevren: " + ProjectIn(folder));
    CHECK(FileBytes(MainScene(folder)) == saved);
    CHECK(RecoveryCount(folder) == 0);
    OpenFolderNamed(L"Scenes");
    Answers({Answer::No});
    DoubleClick(FileNamed(L"Main_neulozeno.scene"));
    CHECK(editorState.scenePath == Recovered(folder));
    REQUIRE(editorState.scene.size() == changed.size());
    CHECK(editorState.scene.back().name == changed.back().name);
    CHECK(editorState.scene.back().parentIndex == 2);
    SaveScene(folder / L"again.scene");  // the copy is what a save of the changed scene would have written
    CHECK(FileBytes(folder / L"again.scene") == FileBytes(Recovered(folder)));
}

TEST_CASE("a scene without changes, a Hub and a game leave no recovery") {
    for (const int32_t kind : {0, 1, 2}) {
        CAPTURE(kind);
        const ScratchFolder folder;
        StartProject(folder);
        if (kind > 0) TapKey('G');
        if (kind == 1) editorState.hubVisible = true;
        if (kind == 2) editorState.runtimeMode = true;
        WriteRecoveryNow();
        PassMinute(1);
        CHECK(RecoveryCount(folder) == 0);
    }
}

TEST_CASE("a change is written within a minute, not again without another one, and goes with a save") {
    const ScratchFolder folder;
    StartProject(folder);
    PassMinute(1);
    CHECK(RecoveryCount(folder) == 0);
    TapKey('G');
    KeepRecovery(62);  // the minute is not over
    KeepRecovery(63);
    CHECK(RecoveryCount(folder) == 0);
    PassMinute(2);
    REQUIRE(RecoveryCount(folder) == 1);
    const std::wstring file = RecoveriesIn(folder) + L"\\" + EntriesOf(RecoveriesIn(folder))[0].name;
    const std::string first = FileBytes(file);

    PutFile(file, "untouched");
    PassMinute(3);
    CHECK(FileBytes(file) == "untouched");
    TapKey('G');
    PassMinute(4);
    CHECK(FileBytes(file).size() > first.size());
    CHECK(RecoveryCount(folder) == 1);

    TapWithControl('S');
    CHECK(RecoveryCount(folder) == 0);
}

TEST_CASE("work that was undone, or dropped by answering No, needs no recovery any more") {
    for (const bool isUndone : {true, false}) {
        const ScratchFolder folder;
        StartProject(folder);
        TapKey('G');
        PassMinute(1);
        REQUIRE(RecoveryCount(folder) == 1);
        if (isUndone) {
            TapWithControl('Z');
            PassMinute(2);
        } else {
            Answers({Answer::No});
            Click({950, 20});  // "Project Hub"
            REQUIRE(editorState.hubVisible);
        }
        CHECK(RecoveryCount(folder) == 0);
    }
}

TEST_CASE(
    "no recovery begins during a gesture, an entry or Play mode, and then the scene of before is meant") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    StartGesture(MouseLook{});
    PassMinute(1);
    DropGesture();
    editorState.numberEntry.open = true;
    PassMinute(2);
    editorState.numberEntry = {};
    TapKey('P');
    const Scene before = editorState.scene;
    editorState.scene[2].name = L"Changed by the game";
    PassMinute(3);
    CHECK(RecoveryCount(folder) == 0);
    WriteRecoveryNow();
    REQUIRE(RecoveryCount(folder) == 1);
    const std::string bytes =
        FileBytes(RecoveriesIn(folder) + L"\\" + EntriesOf(RecoveriesIn(folder))[0].name);
    CHECK(bytes.find("PlayerCube") != std::string::npos);
    CHECK(bytes.find("Changed by the game") == std::string::npos);
}

TEST_CASE("the open prefab and the scene under it are both kept") {
    const ScratchFolder folder;
    StartProject(folder);
    ChooseCreate(CreateItem::Prefab);
    RenderFrame();
    TapKey('G');
    DoubleClick(FileNamed(L"PlayerCube.prefab"));
    REQUIRE(editorState.screen == Screen::PrefabEditor);
    TapKey('G');
    PassMinute(1);
    CHECK(RecoveryCount(folder) == 2);
    for (const wchar_t* extension : {L".prefab", L".scene"})
        CHECK(std::ranges::count_if(EntriesOf(RecoveriesIn(folder)), [extension](const FolderEntry& entry) {
                  return entry.name.ends_with(extension);
              }) == 1);

    RestartAndOpen(folder);
    CHECK(RecoveryCount(folder) == 0);
    CHECK(FileBytes(Recovered(folder)) != "<missing>");
    Scene objects;
    CHECK(LoadPrefab(FilesIn(folder) + L"\\PlayerCube_neulozeno.prefab", objects));
    CHECK(objects.size() == 2);
    CHECK(IsShown(L"PlayerCube_neulozeno.prefab"));
}

TEST_CASE("leaving a prefab without its changes drops their recovery, and so does saving it") {
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        const ScratchFolder folder;
        StartProject(folder);
        ChooseCreate(CreateItem::Prefab);
        TapWithControl('S');
        DoubleClick(FileNamed(L"PlayerCube.prefab"));
        TapKey('G');
        PassMinute(1);
        REQUIRE(RecoveryCount(folder) == 1);
        Answers({answer});
        TapKey(kKeyEscape);
        REQUIRE(editorState.screen == Screen::SceneEditor);
        CHECK(RecoveryCount(folder) == 0);
    }
}

TEST_CASE("two windows keep two recoveries of one scene, and both are found") {
    const ScratchFolder folder;
    StartProject(folder);
    const EditorState fresh = editorState;
    AddObject(L"First window");
    PassMinute(1);
    const EditorState first = editorState;
    editorState = fresh;
    AddObject(L"Second window");
    PassMinute(1);
    CHECK(RecoveryCount(folder) == 2);
    editorState = first;
    AddObject(L"First window again");
    PassMinute(2);
    CHECK(RecoveryCount(folder) == 2);

    RestartAndOpen(folder);
    const std::string both =
        FileBytes(Recovered(folder)) + FileBytes(FilesIn(folder) + L"\\Scenes\\Main_neulozeno_01.scene");
    for (const char* name : {"First window\t", "First window again", "Second window"}) {
        CHECK(both.find(name) != std::string::npos);
    }
}

TEST_CASE("a recovery that is older than its scene, or equal to it, is removed without a copy") {
    for (const bool isLike : {true, false}) {
        const ScratchFolder folder;
        StartProject(folder);
        TapKey('G');
        WriteRecoveryNow();
        REQUIRE(RecoveryCount(folder) == 1);
        if (isLike) {
            CHECK(SaveScene(MainScene(folder)));
            // As if the recovery had been written after it.
            editorState.recovery = {};
        } else {
            const fs::path scene = NativePath(MainScene(folder));
            PutFile(MainScene(folder), "ZELENGINE_SCENE\t1\r\n");
            fs::last_write_time(scene, fs::last_write_time(scene) + std::chrono::seconds(10));
        }
        RestartAndOpen(folder);
        CHECK(RecoveryCount(folder) == 0);
        CHECK(FileBytes(Recovered(folder)) == "<missing>");
    }
}

TEST_CASE("recoveries of another project, and files that are none, stay where they are") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    WriteRecoveryNow();
    PutFile(RecoveriesIn(folder) + L"\\note.txt", "mine");
    PutFolder(folder / L"projects\\Other\\Files");
    StartHub(folder);
    CHECK(OpenProject(folder / L"projects\\Other") == Opening::Opened);
    CHECK(RecoveryCount(folder) == 2);
    RestartAndOpen(folder);
    CHECK(RecoveryCount(folder) == 1);
    CHECK(FileBytes(RecoveriesIn(folder) + L"\\note.txt") == "mine");
}

TEST_CASE("whichever file call fails, the work is in a recovery or in its copy, and no message tells of it") {
    // While it is written: a second try at the next look makes up for the first.
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartProject(folder);
            TapKey('G');
            editorState.statusMessage = L"untouched";
        },
        [](const ScratchFolder&) { PassMinute(1); },
        [](const ScratchFolder& folder) {
            CHECK(editorState.statusMessage == L"untouched");
            PassMinute(2);
            CHECK(RecoveryCount(folder) == 1);
        });
    // While it is taken over.
    FailEachStep(
        [](const ScratchFolder& folder) {
            StartProject(folder);
            AddObject(L"Unsaved");
            WriteRecoveryNow();
        },
        [](const ScratchFolder& folder) { TakeOverRecoveries(ProjectIn(folder)); },
        [](const ScratchFolder& folder) {
            // A name is passed over if the disk does not tell whether it is free.
            const auto isCopied = [&folder] {
                const std::wstring next = FilesIn(folder) + L"\\Scenes\\Main_neulozeno_01.scene";
                return (FileBytes(Recovered(folder)) + FileBytes(next)).find("Unsaved") != std::string::npos;
            };
            CHECK((isCopied() || RecoveryCount(folder) == 1));
            TakeOverRecoveries(ProjectIn(folder));
            CHECK(isCopied());
        });
}

TEST_CASE("a full disk and a missing or read-only data folder cause no message and no loss") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    PassMinute(1);
    REQUIRE(RecoveryCount(folder) == 1);
    const FolderContents before = ContentsOf(RecoveriesIn(folder));
    TapKey('G');
    editorState.statusMessage = L"untouched";
    fileFaults = {.freeBytes = 10};
    PassMinute(2);
    WriteRecoveryNow();
    fileFaults = {};
    CHECK(ContentsOf(RecoveriesIn(folder)) == before);
    RemoveTree(folder / L"local");
    PutFile(folder / L"local", "a file in place of the folder");
    PassMinute(3);
    WriteRecoveryNow();
    CHECK(editorState.statusMessage == L"untouched");
    RemoveTree(folder / L"local");
    WriteRecoveryNow();
    CHECK(RecoveryCount(folder) == 1);
}

// A scene of this many objects that was changed a moment ago.
static void ShowLargeScene(int32_t objects) {
    MarkChanged();
    editorState.scene.clear();
    for (int32_t i = 0; i < objects; ++i)
        editorState.scene.push_back({.name = L"old " + std::to_wstring(i), .parentIndex = i - 1});
}

TEST_CASE("a large scene is put into words a few objects per frame, as it was when that began") {
    for (const int32_t changedInFrame : {0, 1, 2, 20, 39, 40, 1000}) {
        CAPTURE(changedInFrame);
        const ScratchFolder folder;
        StartProject(folder);
        ShowLargeScene(5000);
        const std::string expected = TextFileBytes(RecoveryLine(MainScene(folder)) + L"\n" +
                                                   ObjectFileText(L"ZELENGINE_SCENE\t1", editorState.scene));
        KeepRecovery(61);
        int32_t frames = 0;
        while (headless.aside.empty() && frames < 1000) {
            if (frames == changedInFrame || frames == changedInFrame + 3) {
                editorState.selectedIndex = 70 + frames;
                pushUndo("Change");
                editorState.scene.insert(editorState.scene.begin() + 70, 3, GameObject{.name = L"new"});
                editorState.scene[4990].name = L"new";
            }
            KeepRecovery(61.01 + 0.01 * ++frames);
        }
        CHECK(frames == (5000 + 127) / 128);  // 128 objects in each
        CHECK(RecoveryCount(folder) == 0);
        WorkAside();
        CHECK(OnlyRecovery(folder) == expected);
    }
}

TEST_CASE("a scene whose first objects of a recovery nobody holds any more is put into words anew") {
    const ScratchFolder folder;
    StartProject(folder);
    ShowLargeScene(1000);
    KeepRecovery(61);
    KeepRecovery(61.01);
    RaiseSceneVersion();  // without an undo step
    editorState.scene[0].name = L"changed";
    editorState.scene[999].name = L"changed";
    for (int32_t frame = 0; frame < 20; ++frame) KeepRecovery(61.02 + 0.01 * frame);
    WorkAside();
    const std::string bytes = OnlyRecovery(folder);
    CHECK(std::ranges::count(bytes, '\n') == 1002);
    CHECK(bytes.find("changed") < 200);
    CHECK(bytes.find("changed", 300) != std::string::npos);
}

TEST_CASE("while a recovery is on its way to the disk no other begins, and then the prefab has its turn") {
    const ScratchFolder folder;
    StartProject(folder);
    ChooseCreate(CreateItem::Prefab);
    RenderFrame();
    TapKey('G');
    DoubleClick(FileNamed(L"PlayerCube.prefab"));
    TapKey('G');
    for (int32_t frame = 0; frame < 20; ++frame) KeepRecovery(61 + 0.01 * frame);
    CHECK(headless.aside.size() == 1);
    CHECK_FALSE(editorState.recovery.draft);
    WorkAside();
    for (int32_t frame = 0; frame < 20; ++frame) KeepRecovery(62 + 0.01 * frame);
    CHECK(headless.aside.size() == 1);
    WorkAside();
    CHECK(RecoveryCount(folder) == 2);
}

TEST_CASE("what is saved while its recovery is on its way to the disk leaves none") {
    for (const bool isWritten : {false, true}) {
        CAPTURE(isWritten);
        const ScratchFolder folder;
        StartProject(folder);
        TapKey('G');
        HandRecoveryOver();
        if (isWritten) WorkAside();
        TapWithControl('S');
        WorkAside();
        KeepRecovery(62);
        CHECK(RecoveryCount(folder) == 0);
    }
}

TEST_CASE("the end of the program writes what is still on its way to the disk, and what came after it") {
    for (const bool hasMore : {false, true}) {
        CAPTURE(hasMore);
        const ScratchFolder folder;
        StartProject(folder);
        AddObject(L"First");
        HandRecoveryOver();
        if (hasMore) AddObject(L"Second");
        WriteRecoveryNow();
        WorkAside();  // the thread comes too late
        const std::string bytes = OnlyRecovery(folder);
        CHECK(bytes.find("First") != std::string::npos);
        CHECK((bytes.find("Second") != std::string::npos) == hasMore);
    }
}

TEST_CASE("without a thread aside the recovery is tried again a minute later") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    headless.hasNoThread = true;
    PassMinute(1);
    CHECK(RecoveryCount(folder) == 0);
    headless.hasNoThread = false;
    PassMinute(2);
    CHECK(RecoveryCount(folder) == 1);
}

TEST_CASE("an end of the program that finds the disk still writing waits for it, but not for ever") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    HandRecoveryOver();
    editorState.recovery.writing->stage = RecoveryStage::Writing;  // by a thread that hangs
    WriteRecoveryNow();
    CHECK(headless.slept >= 10'000);
    CHECK(headless.slept <= 11'000);
    CHECK(RecoveryCount(folder) == 0);
}

TEST_CASE("at most twenty recoveries stay, and the newest are among them") {
    const ScratchFolder folder;
    StartProject(folder);
    for (int32_t i = 0; i < 25; ++i) {
        editorState.recovery = {};  // as if by another window each time
        AddObject(L"Object " + std::to_wstring(i));
        WriteRecoveryNow();
    }
    CHECK(RecoveryCount(folder) == 20);
}

TEST_CASE("the end of the session writes a recovery") {
    const ScratchFolder folder;
    StartProject(folder);
    TapKey('G');
    HandleInput({.kind = InputKind::SessionEnds});
    CHECK(RecoveryCount(folder) == 1);
}
