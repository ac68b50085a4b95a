#include "project/asset_commands.h"

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/path_text.h"
#include "blueprint/blueprint_editor.h"
#include "formats/free_path.h"
#include "formats/obj_file.h"
#include "formats/project_file.h"
#include "formats/text_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "project/asset_list.h"
#include "project/folder_copy.h"
#include "project/prefab_editor.h"
#include "project/project_folder.h"
#include "project/scene_switch.h"
#include "project/stored_paths.h"
#include "scene/commands.h"
#include "scene/interaction.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <string_view>

constexpr std::wstring_view kNewScene = L"ZELENGINE_SCENE\t1\n";
constexpr std::string_view kNewScript =
    "// ZelEngine script\n"
    "\n"
    "void Update() {\n"
    "}\n";
constexpr std::wstring_view kNewBlueprint =
    L"ZELENGINE_BLUEPRINT\t1\n"
    L"NODE\t1\tEvent BeginPlay\t130\t130\n"
    L"NODE\t2\tPrint String\t420\t130\n";

constexpr size_t kLongestPath = 260;

static bool IsAssetIndex(int32_t index) {
    return index >= 0 && static_cast<size_t>(index) < editorState.fileEntries.size();
}

// A copy, because commands may rebuild the list.
static AssetEntry EntryAt(int32_t index) { return editorState.fileEntries[static_cast<size_t>(index)]; }

void FilesGoUp() {
    if (editorState.filesFolder == editorState.filesRoot) {
        SetStatus(L"Jsi v hlavni slozce Files.");
        return;
    }
    editorState.filesFolder = ParentFolder(editorState.filesFolder);
    SetStatus(L"Files: zpet do nadrazene slozky.");
}

static void ShowFolder(const AssetEntry& entry) {
    editorState.filesFolder = entry.path;
    editorState.selectedFile = -1;
    SetStatus(L"Otevrena slozka: " + entry.name);
}

static void OpenBlueprint(const std::wstring& path) {
    if (LeaveOtherScreens()) OpenBlueprintEditor(path);
}

static void OpenOutside(const AssetEntry& entry) {
    const bool opened = OpenWithSystem(entry.path, entry.kind == AssetKind::Script);
    SetStatus(opened ? L"Oteviram soubor: " + entry.name : L"Nepodarilo se otevrit soubor ve Windows.");
}

void OpenAsset(int32_t index) {
    if (!IsAssetIndex(index)) return;
    const AssetEntry entry = EntryAt(index);
    switch (entry.kind) {
        case AssetKind::Folder: ShowFolder(entry); break;
        case AssetKind::SceneFile: OpenSceneFile(entry.path); break;
        case AssetKind::Blueprint: OpenBlueprint(entry.path); break;
        case AssetKind::Prefab: OpenPrefabEditor(entry.path); break;
        default: OpenOutside(entry); break;
    }
}

// A name without an extension leaves a file the one that it has: it stays what it is.
static std::wstring WithExtension(const std::wstring& name, const AssetEntry& entry) {
    if (entry.kind == AssetKind::Folder || !FileExtension(name).empty()) return name;
    return name + FileExtension(entry.name);
}

// The disk first, then the state, then the project file. A rename that the disk refuses has changed nothing.
// If the project file cannot be written after that, the message says so: the next start would look for the
// scene under its old name.
void RenameAsset(int32_t index, const std::wstring& typed) {
    if (!IsAssetIndex(index)) return;
    const AssetEntry entry = EntryAt(index);
    const std::wstring name = WithExtension(typed, entry);
    const std::wstring newPath = JoinPath(entry.folder, name);
    const bool isRenamed = name == entry.name || (IsUsableFileName(name) && RenamePath(entry.path, newPath));
    if (!isRenamed) {
        SetStatus(L"Soubor nebo slozku se nepodarilo prejmenovat.");
        return;
    }
    MoveStoredPaths(entry.path, newPath);
    editorState.fileEntries[static_cast<size_t>(index)] =
        AssetEntryFor(newPath, entry.kind == AssetKind::Folder);
    const bool isStored = MoveCurrentScene(entry.path, newPath);
    SetStatus(isStored ? L"Polozka projektu byla prejmenovana."
                       : L"Polozka prejmenovana, ale project.zel se nepodarilo ulozit.");
}

// Beside the entry, with "_Copy" before the extension, and a number after that if the name is taken.
static std::wstring CopyPath(const AssetEntry& entry) {
    const bool isFolder = entry.kind == AssetKind::Folder;
    const std::wstring extension = isFolder ? L"" : FileExtension(entry.name);
    const std::wstring stem = entry.name.substr(0, entry.name.size() - extension.size()) + L"_Copy";
    return FreePath(entry.folder, stem, extension);
}

void DuplicateAsset(int32_t index) {
    if (!IsAssetIndex(index)) return;
    const AssetEntry entry = EntryAt(index);
    const bool isFolder = entry.kind == AssetKind::Folder;
    const std::wstring copy = CopyPath(entry);
    LongWork work(L"Duplikuji soubor", L"MB", LongWork::Esc::Cancels);
    const auto goesOn = [&work](int64_t done, int64_t total) {
        return work.Continue(Megabytes(done), Megabytes(total));
    };
    if (!(isFolder ? MakeFolders(copy) : CopyToFreePath(entry.path, copy, goesOn))) {
        SetStatus(work.IsCancelled() ? L"Duplikovani polozky zruseno."
                                     : L"Polozku projektu se nepodarilo duplikovat.");
        return;
    }
    AddNewAsset(copy, isFolder);
    SetStatus(L"Polozka projektu byla duplikovana.");
}

// The entry leaves the list even if the disk refuses: a file that another program holds, or a folder that is
// not empty, comes back with the next refresh.
void DeleteAsset(int32_t index) {
    if (!IsAssetIndex(index)) return;
    const AssetEntry entry = EntryAt(index);
    if (entry.kind == AssetKind::Folder) {
        RemoveEmptyFolder(entry.path);
    } else {
        RemoveFile(entry.path);
    }
    editorState.fileEntries.erase(editorState.fileEntries.begin() + index);
    editorState.selectedFile = -1;
    if (std::holds_alternative<FilesDrag>(editorState.gesture)) DropGesture();
    SetStatus(L"Polozka projektu byla odstranena z panelu.");
}

// The end of every create command: what was made enters the list and is selected; a failure changes nothing
// but the message.
static void Finish(bool isMade, const std::wstring& path, bool isFolder, const wchar_t* message) {
    if (!isMade) {
        SetStatus(L"Polozku projektu se nepodarilo vytvorit.");
        return;
    }
    AddNewAsset(path, isFolder);
    SetStatus(message);
}

// In the folder that the Files panel shows.
static std::wstring NewPath(const std::wstring& name, const std::wstring& extension) {
    return FirstFreePath(editorState.filesFolder, name, extension);
}

void CreateSceneAsset() {
    // Counts from the number of entries on. A file that already has the name is not overwritten: the next
    // number is taken.
    const auto count = static_cast<int32_t>(editorState.fileEntries.size());
    const std::wstring path = FirstFreePath(editorState.filesFolder, L"Scene", L".scene", count);
    Finish(WriteTextFile(path, kNewScene), path, false, L"Vytvorena nova scene v projektu.");
}

void CreateScriptAsset() {
    const std::wstring path = NewPath(L"Script", L".cpp");
    Finish(WriteWholeFile(path, kNewScript), path, false, L"Vytvoren novy script v projektu.");
}

void CreateBlueprintAsset() {
    const std::wstring path = NewPath(L"Blueprint", L".blueprint");
    Finish(WriteTextFile(path, kNewBlueprint), path, false,
           L"Vytvoren novy Blueprint v projektu. Dvojklikem ho otevres.");
}

void CreateFolderAsset() {
    const std::wstring path = NewPath(L"NewFolder", L"");
    Finish(MakeFolders(path), path, true, L"Vytvorena nova slozka v projektu.");
}

// Replaces a file in one step, so that the old one stays whole if that fails. A copy would already have
// overwritten part of it.
static bool ReplaceFile(const std::wstring& from, const std::wstring& to) {
    if (SameWithoutCase(AbsolutePath(from), AbsolutePath(to))) return false;
    std::string bytes;
    return ReadWholeFile(from, bytes) && WriteWholeFile(to, bytes);
}

static bool CopyInto(const std::wstring& from, const std::wstring& to, LongWork& work) {
    switch (KindOfPath(to)) {
        case PathKind::Missing:
            return CopyToFreePath(from, to, [&work](int64_t, int64_t) { return work.Continue(); });
        case PathKind::File: return ReplaceFile(from, to);
        default: return false;
    }
}

static bool ImportFile(const std::wstring& path, LongWork& work) {
    if (path.size() > kLongestPath || KindOfPath(path) != PathKind::File) return false;
    const std::wstring copy = JoinPath(editorState.filesFolder, LastComponent(path));
    if (!CopyInto(path, copy, work)) return false;
    AddNewAsset(copy, false);
    return true;
}

static void PlaceModel(const std::wstring& path) {
    const int32_t mesh = LoadObjIntoLibrary(path);
    if (mesh >= 0) addModelObject(mesh, NameWithoutExtension(path));
}

// Each file is copied, listed and counted by itself, so that cancelling keeps what has come so far. A model
// is loaded from its copy: the scene must not refer to a path outside the project.
void ImportDroppedFiles(std::span<const std::wstring> paths) {
    MakeProjectFolders();
    LongWork work(L"Importuji", L"souboru", LongWork::Esc::Cancels);
    size_t imported = 0;
    for (size_t i = 0; i < paths.size(); ++i) {
        if (!work.Continue(static_cast<int64_t>(i), static_cast<int64_t>(paths.size()))) break;
        const std::wstring& path = paths[i];
        if (!ImportFile(path, work)) continue;
        ++imported;
        if (AssetKindOf(path) == AssetKind::Model && ShownScreen() != Shown::Blueprint) {
            PlaceModel(JoinPath(editorState.filesFolder, LastComponent(path)));
        }
    }
    SetStatus((work.IsCancelled() ? L"Import zrusen. Importovano " : L"Importovano ") +
              std::to_wstring(imported) + L" souboru do aktualni slozky.");
}
