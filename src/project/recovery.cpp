#include "project/recovery.h"

#include "base/enough_memory.h"
#include "base/path_text.h"
#include "formats/object_line.h"
#include "formats/prefab.h"
#include "formats/text_file.h"
#include "platform/aside.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "project/recovery_files.h"
#include "scene/interaction.h"
#include "scene/shown_screen.h"
#include "scene/snapshots.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

constexpr size_t kUsualLineLength = 320;   // bytes; a longer one only costs a copy
constexpr double kLookEvery = 60;          // seconds
constexpr size_t kObjectsPerFrame = 128;   // written as text: a quarter of a millisecond
constexpr uint32_t kLongestWait = 10'000;  // milliseconds, at the end, for a disk that is still writing
constexpr const wchar_t* kSceneHeader = L"ZELENGINE_SCENE\t1\n";
constexpr const wchar_t* kPrefabHeader = L"ZELENGINE_PREFAB\t1\n";

// --- What there is to lose

namespace {
// What the user edits, also while a game or, for the scene, a prefab is shown in its place.
struct Edited {
    const Scene& scene;
    uint64_t version;  // EditorState::sceneVersion
    const std::vector<UndoStep>& undoSteps;
};
}  // namespace

static Edited ShownOrKept(const std::optional<KeptScene>& kept) {
    if (kept) return {kept->scene, kept->sceneVersion, kept->undoSteps};
    return {editorState.scene, editorState.sceneVersion, editorState.undoSteps};
}

static Edited EditedObjects(bool ofPrefab) {
    const bool isBelowPrefab = !ofPrefab && editorState.sceneBeforePrefab;
    return ShownOrKept(isBelowPrefab ? editorState.sceneBeforePrefab : editorState.sceneBeforePlay);
}

static const std::wstring& PathOf(bool ofPrefab) {
    return ofPrefab ? editorState.prefabPath : editorState.scenePath;
}

static bool IsAtRisk(bool ofPrefab) {
    if (PathOf(ofPrefab).empty()) return false;
    if (ofPrefab) return ShownScreen() == Shown::Prefab && editorState.prefabDirty;
    const bool isOpen = ShownScreen() != Shown::Hub && ShownScreen() != Shown::Game;
    return isOpen && EditedObjects(false).version != editorState.savedVersion;
}

static std::optional<OwnRecovery>& Own(bool ofPrefab) {
    return ofPrefab ? editorState.recovery.prefab : editorState.recovery.scene;
}

static bool NeedsRecovery(bool ofPrefab) {
    const auto& own = Own(ofPrefab);
    const bool isRecovered = own && own->version == EditedObjects(ofPrefab).version &&
                             own->about == AbsolutePath(PathOf(ofPrefab));
    return IsAtRisk(ofPrefab) && !isRecovered;
}

// --- Letting go

static void Forget(std::optional<OwnRecovery>& own) {
    if (own) RemoveFile(own->path);
    own.reset();
}

// Calls off a file that is not wanted any more. If its writing has not begun, it never will; if it has, the
// file is removed once it is there.
static void CallOffWriting() {
    auto& writing = editorState.recovery.writing;
    RecoveryStage stage = RecoveryStage::Waiting;
    if (writing->stage.compare_exchange_strong(stage, RecoveryStage::Failed)) {
        writing.reset();
    } else {
        writing->isUnwanted = true;
    }
}

static void ForgetRecovery(bool ofPrefab) {
    RecoveryState& recovery = editorState.recovery;
    if (recovery.draft && recovery.draft->ofPrefab == ofPrefab) recovery.draft.reset();
    if (recovery.writing && recovery.writing->ofPrefab == ofPrefab) CallOffWriting();
    Forget(Own(ofPrefab));
}

void ForgetSceneRecovery() { ForgetRecovery(false); }
void ForgetPrefabRecovery() { ForgetRecovery(true); }

// What was saved, or undone back to the saved state, needs no recovery any more.
static void ForgetWhatIsSafe() {
    for (const bool ofPrefab : {false, true}) {
        if (!IsAtRisk(ofPrefab)) ForgetRecovery(ofPrefab);
    }
}

// --- From objects to text

static RecoveryDraft BeginDraft(bool ofPrefab) {
    const Edited edited = EditedObjects(ofPrefab);
    RecoveryDraft draft{
        .ofPrefab = ofPrefab, .about = AbsolutePath(PathOf(ofPrefab)), .version = edited.version};
    const std::string start =
        TextFileBytes(RecoveryLine(draft.about) + L"\n" + (ofPrefab ? kPrefabHeader : kSceneHeader));
    // All at once: growing bytes are copied now and then, which would show in a frame.
    draft.bytes.reserve(start.size() + kUsualLineLength * edited.scene.size());
    draft.bytes += start;
    return draft;
}

// Finds the next object in the runs of the snapshot.
static void FindNextObject(RecoveryDraft& draft) {
    draft.nextRun = 0;
    draft.nextInRun = draft.nextObject;
    const auto& runs = draft.kept->runs;
    while (draft.nextRun < runs.size() && draft.nextInRun >= runs[draft.nextRun]->size()) {
        draft.nextInRun -= runs[draft.nextRun++]->size();
    }
}

// Makes sure that the draft continues with the objects that it began with, or it would mix two states of the
// scene. Until the user changes something these are the objects of the scene. From then on the undo step of
// that change holds them, so a draft never costs a copy of the scene. False when neither has them.
static bool HoldsItsObjects(RecoveryDraft& draft, const Edited& edited) {
    if (draft.kept || draft.version == edited.version) return true;
    const auto step = std::ranges::find(edited.undoSteps, draft.version, &UndoStep::version);
    if (step == edited.undoSteps.end()) return false;
    draft.kept = step->scene;
    FindNextObject(draft);
    return true;
}

static size_t CountObjects(const RecoveryDraft& draft, const Edited& edited) {
    if (!draft.kept) return edited.scene.size();
    return draft.kept->parents ? draft.kept->parents->size() : 0;
}

static GameObject TakeFromSnapshot(RecoveryDraft& draft) {
    const Scene& run = *draft.kept->runs[draft.nextRun];
    GameObject object = run[draft.nextInRun];
    object.parentIndex = (*draft.kept->parents)[draft.nextObject];
    if (++draft.nextInRun == run.size()) {
        ++draft.nextRun;
        draft.nextInRun = 0;
    }
    return object;
}

// Appends the next lines, at most `most`. True when all objects are in the draft.
static bool ContinueDraft(RecoveryDraft& draft, const Edited& edited, size_t most) {
    const size_t count = CountObjects(draft, edited);
    std::wstring lines;
    for (; most > 0 && draft.nextObject < count; --most) {
        if (draft.kept) {
            WriteObjectLine(lines, TakeFromSnapshot(draft));
        } else {
            WriteObjectLine(lines, edited.scene[draft.nextObject]);
        }
        ++draft.nextObject;
    }
    AppendTextLines(draft.bytes, lines);
    return draft.nextObject == count;
}

// --- Writing

// What the other thread needs. It replaces the file that this program has written before, if that is about
// the same scene or prefab; else it makes a new one.
static std::shared_ptr<RecoveryWriting> MakeWriting(RecoveryDraft draft) {
    auto writing = std::make_shared<RecoveryWriting>();
    const auto& own = Own(draft.ofPrefab);
    writing->ofPrefab = draft.ofPrefab;
    writing->version = draft.version;
    writing->folder = RecoveryFolder();
    if (own && own->about == draft.about) writing->path = own->path;
    writing->about = std::move(draft.about);
    writing->bytes = std::move(draft.bytes);
    return writing;
}

// Takes the result when a file has been written. True when no writing is under way any more.
static bool TakeAnswer() {
    auto& writing = editorState.recovery.writing;
    if (!writing) return true;
    const RecoveryStage stage = writing->stage;
    if (stage != RecoveryStage::Written && stage != RecoveryStage::Failed) return false;
    const auto done = std::exchange(writing, nullptr);
    if (stage == RecoveryStage::Failed) return true;
    auto& own = Own(done->ofPrefab);
    if (own && own->path != done->path) Forget(own);
    own = {.about = done->about, .path = done->path, .version = done->version};
    if (done->isUnwanted) Forget(own);
    return true;
}

static void WriteAside(RecoveryDraft draft) {
    auto& writing = editorState.recovery.writing;
    writing = MakeWriting(std::move(draft));
    bool isUnderWay = false;
    WithEnoughMemory([&] { return isUnderWay = RunAside([job = writing] { WriteRecovery(*job); }); });
    if (!isUnderWay) writing.reset();
}

// --- When

static bool IsInTheMiddleOfSomething() {
    return editorState.playMode || GestureIsUnderWay() || editorState.keyboardTransform ||
           editorState.nameEntry.kind != NameEntry::Kind::Closed || editorState.numberEntry.open;
}

static bool StillIsAbout(const RecoveryDraft& draft) {
    const bool isOpen = draft.ofPrefab ? IsAtRisk(true) : ShownScreen() != Shown::Hub;
    return isOpen && draft.about == AbsolutePath(PathOf(draft.ofPrefab));
}

// Once a minute the scene has its turn, and after it the prefab, even if the scene could not be written.
static void LookForWork(double now) {
    RecoveryState& recovery = editorState.recovery;
    if (IsInTheMiddleOfSomething()) return;
    if (std::exchange(recovery.prefabIsNext, false)) {
        if (NeedsRecovery(true)) recovery.draft = BeginDraft(true);
    } else if (now >= recovery.nextLook) {
        recovery.nextLook = now + kLookEvery;
        recovery.prefabIsNext = true;
        ForgetWhatIsSafe();
        if (NeedsRecovery(false)) recovery.draft = BeginDraft(false);
    }
}

// One frame's share of the work: a look whether anything is at risk, or some lines of the draft, or handing
// it to the other thread, which no frame waits for. Each share is far shorter than a frame, however large
// the scene. A draft whose objects nobody holds any more is dropped, and the next frame looks again.
static bool Keep(double now) {
    RecoveryState& recovery = editorState.recovery;
    if (!TakeAnswer()) return true;
    if (!recovery.draft) {
        LookForWork(now);
        return true;
    }
    const Edited edited = EditedObjects(recovery.draft->ofPrefab);
    if (!StillIsAbout(*recovery.draft) || !HoldsItsObjects(*recovery.draft, edited)) {
        recovery.draft.reset();
        recovery.nextLook = now;
    } else if (ContinueDraft(*recovery.draft, edited, kObjectsPerFrame)) {
        WriteAside(*std::exchange(recovery.draft, std::nullopt));
    }
    return true;
}

void KeepRecovery(double now) {
    if (ShownScreen() == Shown::Game) return;
    if (!WithEnoughMemory([now] { return Keep(now); })) editorState.recovery.draft.reset();
}

// Two threads must not write one file, so the older writing ends first; if it has not begun, this thread
// does it. False when the disk does not answer.
static bool EndWriting() {
    if (editorState.recovery.writing) WriteRecovery(*editorState.recovery.writing);
    for (uint32_t waited = 0; waited < kLongestWait; ++waited) {
        if (TakeAnswer()) return true;
        SleepMilliseconds(1);
    }
    return false;
}

// Compares the objects themselves, which no frame could afford: a scene that was changed and changed back by
// hand leaves no recovery.
static bool IsReallyAtRisk(bool ofPrefab) {
    return IsAtRisk(ofPrefab) &&
           (ofPrefab || !HoldsScene(editorState.savedScene, EditedObjects(false).scene));
}

static bool WriteNow() {
    editorState.recovery.draft.reset();
    if (!EndWriting()) return false;
    for (const bool ofPrefab : {false, true}) {
        if (!IsReallyAtRisk(ofPrefab)) {
            ForgetRecovery(ofPrefab);
        } else if (NeedsRecovery(ofPrefab)) {
            RecoveryDraft draft = BeginDraft(ofPrefab);
            ContinueDraft(draft, EditedObjects(ofPrefab), SIZE_MAX);
            editorState.recovery.writing = MakeWriting(std::move(draft));
            WriteRecovery(*editorState.recovery.writing);
            TakeAnswer();
        }
    }
    return true;
}

void WriteRecoveryNow() {
    if (ShownScreen() == Shown::Game) return;
    WithEnoughMemory(WriteNow);
}
