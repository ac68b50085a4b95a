#include "project/recovery.h"

#include "base/enough_memory.h"
#include "base/path_text.h"
#include "formats/free_path.h"
#include "formats/object_line.h"
#include "formats/prefab.h"
#include "formats/recent_projects.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "project/recovery_names.h"
#include "scene/gestures.h"
#include "scene/shown_screen.h"
#include "scene/snapshots.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

constexpr size_t kUsualLineLength = 320;      // units; a longer one only costs a copy
constexpr double kLookEvery = 60;             // seconds
constexpr size_t kObjectsPerFrame = 256;      // put into words: a millisecond of a frame
constexpr size_t kFirstLineBuffer = 1 << 16;  // units: no path is longer
constexpr const wchar_t* kSceneHeader = L"ZELENGINE_SCENE\t1\n";
constexpr const wchar_t* kPrefabHeader = L"ZELENGINE_PREFAB\t1\n";

static std::wstring RecoveryFolder() { return JoinPath(GetDataFolder(), L"recovery"); }

// --- What there is to lose

// The scene that the user edits, also while a prefab or a game is shown in its place.
static const Scene& EditedScene() {
    if (editorState.sceneBeforePrefab) return editorState.sceneBeforePrefab->scene;
    return editorState.sceneBeforePlay ? editorState.sceneBeforePlay->scene : editorState.scene;
}

static const Scene& EditedPrefab() {
    return editorState.sceneBeforePlay ? editorState.sceneBeforePlay->scene : editorState.scene;
}

static bool SceneIsAtRisk() {
    const bool isOpen = ShownScreen() != Shown::Hub && ShownScreen() != Shown::Game;
    return isOpen && !editorState.scenePath.empty() && !HoldsScene(editorState.savedScene, EditedScene());
}

static bool PrefabIsAtRisk() {
    return ShownScreen() == Shown::Prefab && editorState.prefabDirty && !editorState.prefabPath.empty();
}

// --- Writing

static void RemoveSurplus() {
    std::vector<FolderEntry> entries;
    if (!ListFolder(RecoveryFolder(), entries)) return;
    std::vector<RecoveryFacts> all;
    for (const FolderEntry& entry : entries) {
        const std::wstring path = JoinPath(RecoveryFolder(), entry.name);
        FileFacts facts;
        if (!entry.isFolder && ReadFileFacts(path, facts)) all.push_back({path, facts.bytes, facts.written});
    }
    for (const std::wstring& path : SurplusRecoveries(std::move(all))) RemoveFile(path);
}

// The one that belongs to this program when it is about the same file, else a new one under a name that no
// other window uses.
static std::wstring FileFor(const std::optional<OwnRecovery>& own, const RecoveryDraft& draft) {
    if (own && own->about == draft.about) return own->path;
    return FreePath(RecoveryFolder(), RecoveryStem(draft.about), draft.ofPrefab ? L".prefab" : L".scene");
}

static void Forget(std::optional<OwnRecovery>& own) {
    if (own) RemoveFile(own->path);
    own.reset();
}

static void WriteDraft(const RecoveryDraft& draft) {
    std::optional<OwnRecovery>& own =
        draft.ofPrefab ? editorState.recovery.prefab : editorState.recovery.scene;
    if (!MakeFolders(RecoveryFolder())) return;
    const std::wstring path = FileFor(own, draft);
    if (path.empty() || !WriteTextFile(path, draft.text)) return;
    if (own && own->path != path) Forget(own);
    own = {.about = draft.about, .path = path, .holds = draft.scene};
    RemoveSurplus();
}

static void ForgetRecovery(std::optional<OwnRecovery>& own, bool ofPrefab) {
    auto& draft = editorState.recovery.draft;
    if (draft && draft->ofPrefab == ofPrefab) draft.reset();
    Forget(own);
}

void ForgetSceneRecovery() { ForgetRecovery(editorState.recovery.scene, false); }
void ForgetPrefabRecovery() { ForgetRecovery(editorState.recovery.prefab, true); }

// --- Putting into words

static RecoveryDraft BeginDraft(bool ofPrefab) {
    RecoveryDraft draft{.ofPrefab = ofPrefab,
                        .about = AbsolutePath(ofPrefab ? editorState.prefabPath : editorState.scenePath)};
    const auto& steps = editorState.undoSteps;
    const SceneSnapshot* earlier = steps.empty() ? &editorState.savedScene : &steps.back().scene;
    draft.scene = TakeSnapshot(ofPrefab ? EditedPrefab() : EditedScene(), earlier);
    // All at once: a text that grows is copied now and then, which would show in a frame.
    draft.text.reserve(kUsualLineLength * (ofPrefab ? EditedPrefab() : EditedScene()).size());
    draft.text += RecoveryLine(draft.about) + L"\n" + (ofPrefab ? kPrefabHeader : kSceneHeader);
    return draft;
}

// Goes through the runs of the snapshot, which nobody changes any more: what the user does meanwhile makes no
// mixture of two scenes. True when all objects are in the text.
static bool ContinueDraft(RecoveryDraft& draft, size_t objects) {
    while (objects > 0 && draft.nextRun < draft.scene.runs.size()) {
        for (const GameObject& shared : *draft.scene.runs[draft.nextRun]) {
            GameObject object = shared;
            object.parentIndex = (*draft.scene.parents)[draft.nextObject++];
            WriteObjectLine(draft.text, object);
        }
        objects -= std::min(objects, draft.scene.runs[draft.nextRun]->size());
        ++draft.nextRun;
    }
    return draft.nextRun == draft.scene.runs.size();
}

static bool IsRecovered(const std::optional<OwnRecovery>& own, const std::wstring& path, const Scene& scene) {
    return own && own->about == AbsolutePath(path) && HoldsScene(own->holds, scene);
}

static bool SceneNeedsRecovery() {
    return SceneIsAtRisk() && !IsRecovered(editorState.recovery.scene, editorState.scenePath, EditedScene());
}

static bool PrefabNeedsRecovery() {
    return PrefabIsAtRisk() &&
           !IsRecovered(editorState.recovery.prefab, editorState.prefabPath, EditedPrefab());
}

static bool IsInTheMiddleOfSomething() {
    return editorState.playMode || GestureIsUnderWay() || editorState.keyboardTransform ||
           editorState.nameEntry.kind != NameEntry::Kind::Closed || editorState.numberEntry.open;
}

static bool StillIsAbout(const RecoveryDraft& draft) {
    const bool isOpen = draft.ofPrefab ? PrefabIsAtRisk() : ShownScreen() != Shown::Hub;
    return isOpen &&
           draft.about == AbsolutePath(draft.ofPrefab ? editorState.prefabPath : editorState.scenePath);
}

// What has been saved, or undone, needs no recovery any more.
static void ForgetWhatIsSafe() {
    if (!SceneIsAtRisk()) ForgetSceneRecovery();
    if (!PrefabIsAtRisk()) ForgetPrefabRecovery();
}

// The scene first, and then at once the prefab, so that a scene that cannot be written does not keep a prefab
// from its turn.
static void ContinueOrEndDraft() {
    auto& draft = editorState.recovery.draft;
    if (!ContinueDraft(*draft, kObjectsPerFrame)) return;
    const RecoveryDraft done = *std::exchange(draft, std::nullopt);
    WriteDraft(done);
    if (!done.ofPrefab && PrefabNeedsRecovery()) draft = BeginDraft(true);
}

static bool Keep(double now) {
    RecoveryState& recovery = editorState.recovery;
    if (recovery.draft && !StillIsAbout(*recovery.draft)) recovery.draft.reset();
    if (recovery.draft) {
        ContinueOrEndDraft();
    } else if (now >= recovery.nextLook && !IsInTheMiddleOfSomething()) {
        recovery.nextLook = now + kLookEvery;
        ForgetWhatIsSafe();
        if (SceneNeedsRecovery()) {
            recovery.draft = BeginDraft(false);
        } else if (PrefabNeedsRecovery()) {
            recovery.draft = BeginDraft(true);
        }
    }
    return true;
}

void KeepRecovery(double now) {
    if (ShownScreen() == Shown::Game) return;
    if (!WithEnoughMemory([now] { return Keep(now); })) editorState.recovery.draft.reset();
}

static bool WriteNow() {
    editorState.recovery.draft.reset();
    for (const bool ofPrefab : {false, true}) {
        if (!(ofPrefab ? PrefabNeedsRecovery() : SceneNeedsRecovery())) continue;
        RecoveryDraft draft = BeginDraft(ofPrefab);
        ContinueDraft(draft, SIZE_MAX);
        WriteDraft(draft);
    }
    ForgetWhatIsSafe();
    return true;
}

void WriteRecoveryNow() {
    if (ShownScreen() == Shown::Game) return;
    WithEnoughMemory(WriteNow);
}

// --- Finding it again

// True when the recovery has no further use.
static bool TakeOver(const std::wstring& recovery, const std::wstring& folder) {
    TextFile file;
    std::wstring_view line;
    if (!ReadTextFile(recovery, file) || !NextLine(file, kFirstLineBuffer, line)) return false;
    const std::wstring path = RecoveredPath(line);
    if (path.empty() || !IsAtOrBelow(path, folder)) return false;

    const std::string bytes = std::string(kUtf8Mark) + file.bytes.substr(file.nextByte);
    std::string saved;
    FileFacts savedFacts, facts;
    const bool isSaved = ReadWholeFile(path, saved) && ReadFileFacts(path, savedFacts);
    const bool isOld = isSaved && ReadFileFacts(recovery, facts) && facts.written < savedFacts.written;
    if (isOld || (isSaved && saved == bytes)) return true;
    if (!MakeFolders(ParentFolder(path))) return false;
    const std::wstring copy = FreePath(ParentFolder(path), RecoveredStem(path), FileExtension(path));
    return !copy.empty() && WriteWholeFile(copy, bytes);
}

void TakeOverRecoveries(const std::wstring& folder) {
    WithEnoughMemory([&folder] {
        std::vector<FolderEntry> entries;
        if (!ListFolder(RecoveryFolder(), entries)) return false;
        for (const FolderEntry& entry : entries) {
            const std::wstring path = JoinPath(RecoveryFolder(), entry.name);
            if (!entry.isFolder && !entry.isLink && TakeOver(path, folder)) RemoveFile(path);
        }
        return true;
    });
}
