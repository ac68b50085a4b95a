#include "project/asset_commands.h"

#include "base/file_name.h"
#include "base/path_text.h"
#include "blueprint/blueprint_editor.h"
#include "formats/project_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "project/asset_creation.h"
#include "project/asset_list.h"
#include "project/folder_copy.h"
#include "project/other_screens.h"
#include "project/prefab_editor.h"
#include "project/scene_switch.h"
#include "project/stored_paths.h"
#include "scene/gestures.h"
#include "scene/status.h"
#include "state/editor_state.h"

static bool IsAssetIndex(int32_t index) {
    return index >= 0 && static_cast<size_t>(index) < editorState.fileEntries.size();
}

// A copy: what a command runs may rebuild the list.
static AssetEntry EntryAt(int32_t index) { return editorState.fileEntries[static_cast<size_t>(index)]; }

void FilesGoUp() {
    if (editorState.filesFolder == editorState.filesRoot) {
        SetStatus(L"Jsi v hlavni slozce Files.");
        return;
    }
    editorState.filesFolder = ParentFolder(editorState.filesFolder);
    editorState.selectedFile = -1;
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

void RenameAsset(int32_t index, const std::wstring& name) {
    if (!IsAssetIndex(index)) return;
    const AssetEntry entry = EntryAt(index);
    const std::wstring newPath = JoinPath(entry.folder, name);
    const bool isRenamed = name == entry.name || (IsUsableFileName(name) && RenamePath(entry.path, newPath));
    if (!isRenamed) {
        SetStatus(L"Soubor nebo slozku se nepodarilo prejmenovat.");
        return;
    }
    MoveStoredPaths(entry.path, newPath);
    editorState.fileEntries[static_cast<size_t>(index)] =
        AssetEntryFor(newPath, entry.kind == AssetKind::Folder);
    // Or the next start would look for the scene under its old name.
    const bool isStored = MoveCurrentScene(entry.path, newPath);
    SetStatus(isStored ? L"Polozka projektu byla prejmenovana."
                       : L"Polozka prejmenovana, ale project.zel se nepodarilo ulozit.");
}

// Beside the entry, with "_Copy" before its extension, and a number behind that where the name is taken.
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
