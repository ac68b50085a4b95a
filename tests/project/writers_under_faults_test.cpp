// Everything in the program that writes to the disk, on a disk that fails.
//
// Each writer runs once on a sound disk, which tells what the new files are. Then it runs again and again
// from the same start, each time with another fault. Afterwards every file must be the old one or the new
// one, and the message must say which. If it says that nothing was saved, the editor must be as it was, and
// the same command must do its work once the disk is sound again.
#include "blueprint/blueprint_editor.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "project/asset_commands.h"
#include "project/asset_list.h"
#include "project/prefab_editor.h"
#include "project/project_hub.h"
#include "project/save_project.h"
#include "project/scene_switch.h"
#include "scene/commands.h"
#include "scene/object_fields.h"
#include "scene/undo.h"
#include "support/folder_tree.h"
#include "support/project_input.h"

#include "doctest/doctest.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

constexpr const wchar_t* kNoMessage = L"untouched";

namespace {

struct Writer {
    const char* name;
    void (*start)(const ScratchFolder& folder);  // until just before the command
    void (*write)(const ScratchFolder& folder);
    std::vector<std::wstring> failures{};  // the messages of one that fails, or that succeeds in part
    bool saysNothing = false;              // its message is the same when it fails
};

// The state that a failed command must leave as it was.
struct Kept {
    Scene scene{};
    size_t undoSteps = 0;
    int32_t selectedIndex = 0, selectedFile = 0;
    Screen screen{};
    bool prefabDirty = false, blueprintDirty = false, playMode = false, hubVisible = false;
    size_t nodes = 0;
    std::vector<std::wstring> texts{};

    bool operator==(const Kept& other) const {
        return std::ranges::equal(scene, other.scene, SameBits) && undoSteps == other.undoSteps &&
               selectedIndex == other.selectedIndex && selectedFile == other.selectedFile &&
               screen == other.screen && prefabDirty == other.prefabDirty &&
               blueprintDirty == other.blueprintDirty && playMode == other.playMode &&
               hubVisible == other.hubVisible && nodes == other.nodes && texts == other.texts;
    }
};

// What a run on a sound disk has made.
struct SoundRun {
    FolderContents before{}, after{};
    std::wstring message{};
    int32_t steps = 0, writes = 0;
    int64_t bytes = 0;  // written in all
};

}  // namespace

static Kept StateNow() {
    const EditorState& now = editorState;
    Kept kept{.scene = now.scene,
              .undoSteps = now.undoSteps.size(),
              .selectedIndex = now.selectedIndex,
              .selectedFile = now.selectedFile,
              .screen = now.screen,
              .prefabDirty = now.prefabDirty,
              .blueprintDirty = now.blueprintDirty,
              .playMode = now.playMode,
              .hubVisible = now.hubVisible,
              .nodes = now.blueprintNodes.size(),
              .texts = {now.projectRoot, now.filesRoot, now.filesFolder, now.scenePath, now.prefabPath,
                        now.blueprintPath, now.windowTitle}};
    for (const AssetEntry& entry : now.fileEntries) kept.texts.push_back(entry.path);
    for (const RecentProject& project : now.recentProjects) kept.texts.push_back(project.path);
    return kept;
}

// If a fault kept the disk from telling whether a name is free, the next number was taken. So numbers in
// names are left out, and so is the scratch folder, which differs in each run.
template <typename Text>
static Text Comparable(Text text, const Text& folder) {
    size_t at = 0;
    while ((at = text.find(folder)) != Text::npos) text.erase(at, folder.size());
    for (at = 0; at + 2 < text.size();) {
        const bool isNumber =
            text[at] == '_' && text[at + 1] == '0' && text[at + 2] >= '0' && text[at + 2] <= '9';
        if (isNumber) {
            text.erase(at, 3);
        } else {
            ++at;
        }
    }
    return text;
}

static FolderContents ComparableContents(const ScratchFolder& folder) {
    const std::string plainFolder(folder.path.begin(), folder.path.end());
    FolderContents contents;
    for (const auto& [path, bytes] : ContentsOf(folder.path)) {
        contents[Comparable<std::wstring>(path, folder.path)] = Comparable(bytes, plainFolder);
    }
    return contents;
}

static std::wstring MessageNow(const ScratchFolder& folder) {
    return Comparable(editorState.statusMessage, folder.path);
}

static bool IsList(const std::wstring& path) { return path.ends_with(L"recent-projects.txt"); }

static const std::string* Find(const FolderContents& contents, const std::wstring& path) {
    const auto found = contents.find(path);
    return found == contents.end() ? nullptr : &found->second;
}

// The first path that is neither as before nor as the complete command leaves it. Empty if there is none.
static std::wstring PathOfMix(const FolderContents& now, const SoundRun& sound, bool newOnesMayBeParts) {
    std::set<std::wstring> paths;
    for (const FolderContents* contents : {&now, &sound.before, &sound.after}) {
        for (const auto& [path, bytes] : *contents) paths.insert(path);
    }
    for (const std::wstring& path : paths) {
        const std::string *is = Find(now, path), *was = Find(sound.before, path),
                          *will = Find(sound.after, path);
        const auto same = [](const std::string* a, const std::string* b) {
            return a == nullptr || b == nullptr ? a == b : *a == *b;
        };
        if (same(is, was) || same(is, will)) continue;
        if (newOnesMayBeParts && was == nullptr && will != nullptr) continue;
        return path;
    }
    return {};
}

// The paths and files after the complete command. The list of recent projects may be the old one, because no
// message tells that it could not be written.
static bool IsWholeWork(const FolderContents& now, const SoundRun& sound) {
    if (now.size() != sound.after.size()) return false;
    return std::ranges::all_of(now, [&sound](const auto& file) {
        const std::string* will = Find(sound.after, file.first);
        return will != nullptr && (*will == file.second || IsList(file.first));
    });
}

static SoundRun RunOnSoundDisk(const Writer& writer) {
    constexpr int64_t kRoom = int64_t{1} << 40;
    const ScratchFolder folder;
    writer.start(folder);
    SoundRun sound{.before = ComparableContents(folder)};
    fileFaults = {.freeBytes = kRoom};
    writer.write(folder);
    sound.steps = fileFaults.steps;
    sound.writes = fileFaults.writes;
    sound.bytes = kRoom - fileFaults.freeBytes;
    fileFaults = {};
    sound.after = ComparableContents(folder);
    sound.message = MessageNow(folder);
    return sound;
}

static void CheckSoundRun(const Writer& writer, const SoundRun& sound) {
    CHECK(sound.before != sound.after);
    CHECK(std::ranges::count(writer.failures, sound.message) == 0);
}

static void CheckUnderFault(const Writer& writer, const SoundRun& sound, const FileFaults& fault) {
    CAPTURE(std::string(writer.name));
    CAPTURE(fault.failStep);
    CAPTURE(fault.failFollowing);
    CAPTURE(fault.cutWrite);
    CAPTURE(static_cast<int>(fault.cut));
    CAPTURE(fault.freeBytes);
    const ScratchFolder folder;
    writer.start(folder);
    const Kept before = StateNow();
    fileFaults = fault;
    writer.write(folder);
    fileFaults = {};

    const FolderContents now = ComparableContents(folder);
    const std::wstring mix = PathOfMix(now, sound, fault.failFollowing);
    CHECK_MESSAGE(mix.empty(), "neither old nor new: ", std::string(mix.begin(), mix.end()));
    const std::wstring message = MessageNow(folder);
    CAPTURE(EncodeUtf8(message));
    if (message == sound.message) {
        if (!writer.saysNothing) CHECK(IsWholeWork(now, sound));
        return;
    }
    CHECK(std::ranges::count(writer.failures, message) == 1);
    CHECK(StateNow() == before);

    if (fault.failFollowing) return;  // what is left of a folder that could not be removed stays
    editorState.statusMessage = kNoMessage;
    writer.write(folder);
    CHECK_MESSAGE(MessageNow(folder) == sound.message, "the command cannot be repeated");
    CHECK(IsWholeWork(ComparableContents(folder), sound));
}

// The start of each.

// A project with more files, and a scene that differs from its file.
static void StartChanged(const ScratchFolder& folder) {
    StartIn(folder);
    ShowHub();
    AnswerFolder(folder / L"projects");
    CreateProject(false);
    PutFile(FilesIn(folder) + L"\\imported\\deep\\note.txt", "a note");
    PutFile(FilesIn(folder) + L"\\old.txt", "old bytes");
    PutFolder(folder / L"target");
    RefreshAssetList();
    addCube();
    editorState.statusMessage = kNoMessage;
}

static void StartRecents(const ScratchFolder& folder) {
    StartChanged(folder);
    for (int32_t i = 0; i < 3; ++i) {
        AnswerFolder(folder / L"projects");
        Answers({Answer::No});
        CreateProject(true);
    }
    ShowHub();
    editorState.statusMessage = kNoMessage;
}

static void StartPrefab(const ScratchFolder& folder) {
    StartChanged(folder);
    SavePrefabFromSelection();
    OpenPrefabEditor(editorState.fileEntries.back().path);
    addPlane();
    editorState.statusMessage = kNoMessage;
}

static void StartBlueprint(const ScratchFolder& folder) {
    StartChanged(folder);
    CreateBlueprintAsset();
    OpenBlueprintEditor(editorState.fileEntries.back().path);
    AddBlueprintNode(L"Branch", {300, 200});
    editorState.statusMessage = kNoMessage;
}

static void StartImport(const ScratchFolder& folder) {
    StartChanged(folder);
    PutFile(folder / L"drop\\old.txt", "new and longer bytes");
    PutFile(folder / L"drop\\new.txt", "new file");
}

static int32_t EntryNamed(const std::wstring& name) {
    const auto& entries = editorState.fileEntries;
    return static_cast<int32_t>(std::ranges::find(entries, name, &AssetEntry::name) - entries.begin());
}

// Writes the open scene only, before another one is shown.
static void SwitchScene(const ScratchFolder&) {
    Answers({Answer::Yes});
    AskSaveBeforeSceneSwitch();
}

static const std::vector<Writer>& Writers() {
    static const std::wstring notCreated = L"Polozku projektu se nepodarilo vytvorit.";
    static const std::wstring notImported = L"Importovano 0 souboru do aktualni slozky.";
    static const std::wstring notSaved = L"Projekt se nepodarilo ulozit.";
    // clang-format off
    static const std::vector<Writer> writers = {
        {"scene", StartChanged, SwitchScene, {L"Aktualni scenu se nepodarilo ulozit."}},
        {"prefab", StartPrefab, [](const ScratchFolder&) { SavePrefabEditor(); },
            {L"Prefab se nepodarilo ulozit."}},
        {"project", StartChanged, [](const ScratchFolder&) { SaveProject(); },
            {notSaved, L"Scena ulozena, ale project.zel se nepodarilo ulozit."}},
        {"blueprint", StartBlueprint, [](const ScratchFolder&) { SaveBlueprintEditor(); },
            {L"Blueprint se nepodarilo ulozit."}},
        {"recents", StartRecents, [](const ScratchFolder&) { RemoveProjectFromList(1); }, {}, true},
        {"new scene", StartChanged, [](const ScratchFolder&) { CreateSceneAsset(); }, {notCreated}},
        {"new script", StartChanged, [](const ScratchFolder&) { CreateScriptAsset(); }, {notCreated}},
        {"new blueprint", StartChanged, [](const ScratchFolder&) { CreateBlueprintAsset(); }, {notCreated}},
        {"new folder", StartChanged, [](const ScratchFolder&) { CreateFolderAsset(); }, {notCreated}},
        {"new prefab", StartChanged, [](const ScratchFolder&) { SavePrefabFromSelection(); },
            {L"Prefab se nepodarilo ulozit."}},
        {"duplicate", StartChanged, [](const ScratchFolder&) { DuplicateAsset(EntryNamed(L"old.txt")); },
            {L"Polozku projektu se nepodarilo duplikovat."}},
        {"import of a new file", StartImport,
            [](const ScratchFolder& folder) { ImportDroppedFiles({{folder / L"drop\\new.txt"}}); },
            {notImported}},
        {"import over a file", StartImport,
            [](const ScratchFolder& folder) { ImportDroppedFiles({{folder / L"drop\\old.txt"}}); },
            {notImported}},
        {"save as", StartChanged,
            [](const ScratchFolder& folder) { AnswerFolder(folder / L"target"); SaveProjectAs(); },
            {notSaved}},
        {"build", StartChanged,
            [](const ScratchFolder& folder) { AnswerFolder(folder / L"target"); BuildProject(); },
            {L"Projekt se nepodarilo sestavit.",
             L"Projekt ulozen jako build, ale nepodarilo se zkopirovat ZelGame.exe."}},
        {"new project", StartChanged,
            [](const ScratchFolder& folder) { 
                AnswerFolder(folder / L"target");
                Answers({Answer::No});
                CreateProject(false);
            },
            {notSaved}},
    };
    // clang-format on
    return writers;
}

TEST_CASE("on a sound disk every writer changes files and reports no failure") {
    for (const Writer& writer : Writers()) {
        CAPTURE(std::string(writer.name));
        CheckSoundRun(writer, RunOnSoundDisk(writer));
    }
}

TEST_CASE("whichever file call of a writer fails, alone or with all behind it, nothing is lost") {
    for (const Writer& writer : Writers()) {
        const SoundRun sound = RunOnSoundDisk(writer);
        for (int32_t step = 1; step <= sound.steps; ++step) {
            CheckUnderFault(writer, sound, {.failStep = step});
            CheckUnderFault(writer, sound, {.failStep = step, .failFollowing = true});
        }
    }
}

TEST_CASE("wherever a write of a writer ends early, nothing is lost") {
    for (const Writer& writer : Writers()) {
        const SoundRun sound = RunOnSoundDisk(writer);
        for (int32_t write = 1; write <= sound.writes; ++write) {
            for (const Cut cut : {Cut::Nothing, Cut::OneByte, Cut::Half, Cut::AllButOne}) {
                CheckUnderFault(writer, sound, {.cutWrite = write, .cut = cut});
            }
        }
    }
}

TEST_CASE("however much room the disk has for a writer, nothing is lost") {
    constexpr int64_t kParts = 12;
    for (const Writer& writer : Writers()) {
        const SoundRun sound = RunOnSoundDisk(writer);
        if (sound.bytes == 0) continue;
        for (int64_t part = 0; part < kParts; ++part) {
            CheckUnderFault(writer, sound, {.freeBytes = sound.bytes * part / kParts});
        }
        CheckUnderFault(writer, sound, {.freeBytes = 1});
        CheckUnderFault(writer, sound, {.freeBytes = sound.bytes - 1});
    }
}
