#include "project/asset_list.h"

#include "base/enough_memory.h"
#include "base/letter_case.h"
#include "base/path_text.h"
#include "platform/files.h"
#include "project/project_folder.h"
#include "scene/interaction.h"
#include "state/editor_state.h"

#include <algorithm>
#include <utility>

namespace {

struct KindOfExtension {
    const wchar_t* extension;
    AssetKind kind;
};

}  // namespace

// clang-format off
constexpr KindOfExtension kKinds[] = {
    {L".cpp",       AssetKind::Script},
    {L".h",         AssetKind::Script},
    {L".hpp",       AssetKind::Script},
    {L".obj",       AssetKind::Model},
    {L".scene",     AssetKind::SceneFile},
    {L".blueprint", AssetKind::Blueprint},
    {L".prefab",    AssetKind::Prefab},
    {L".png",       AssetKind::Image},
    {L".jpg",       AssetKind::Image},
    {L".jpeg",      AssetKind::Image},
    {L".bmp",       AssetKind::Image},
};
// clang-format on

AssetKind AssetKindOf(const std::wstring& path) {
    const std::wstring extension = FileExtension(path);
    for (const KindOfExtension& row : kKinds) {
        if (SameWithoutCase(extension, row.extension)) return row.kind;
    }
    return AssetKind::Other;
}

AssetEntry AssetEntryFor(const std::wstring& path, bool isFolder) {
    return {.name = LastComponent(path),
            .path = path,
            .folder = ParentFolder(path),
            .kind = isFolder ? AssetKind::Folder : AssetKindOf(path)};
}

// Puts the content of a folder on `open`, sorted backwards, because entries are taken off the end.
static void AddEntriesOf(const std::wstring& folder, std::vector<AssetEntry>& open) {
    std::vector<FolderEntry> entries;
    if (!ListFolder(folder, entries)) return;
    std::ranges::sort(
        entries, [](const FolderEntry& a, const FolderEntry& b) { return NameComesBefore(b.name, a.name); });
    for (const FolderEntry& entry : entries) {
        if (!entry.isLink) open.push_back(AssetEntryFor(JoinPath(folder, entry.name), entry.isFolder));
    }
}

// Lists everything below a folder, each folder before its content. `open` holds what is still to be listed,
// the next entry last. The content of a folder goes on top of it, so that it follows the folder at once.
// This is a list and not the call stack, because folders may lie thousands of levels deep.
static bool ListTree(const std::wstring& root, std::vector<AssetEntry>& list) {
    std::vector<AssetEntry> open;
    AddEntriesOf(root, open);
    while (!open.empty()) {
        list.push_back(std::move(open.back()));
        open.pop_back();
        if (list.back().kind == AssetKind::Folder) AddEntriesOf(list.back().path, open);
    }
    return true;
}

// Every index into the list changes. The selection is found again by its path; a drag and a menu that are
// about an item end. If memory runs out, the list is empty rather than half of what is there.
void RefreshAssetList() {
    const auto selected = static_cast<size_t>(editorState.selectedFile);
    const std::wstring selectedPath =
        selected < editorState.fileEntries.size() ? editorState.fileEntries[selected].path : std::wstring();
    MakeProjectFolders();
    std::vector<AssetEntry> list;
    if (!WithEnoughMemory([&list] { return ListTree(editorState.filesRoot, list); })) list = {};

    const auto found = std::ranges::find(list, selectedPath, &AssetEntry::path);
    const bool isThere = !selectedPath.empty() && found != list.end();
    editorState.selectedFile = isThere ? static_cast<int32_t>(found - list.begin()) : -1;
    editorState.fileEntries = std::move(list);
    if (std::holds_alternative<FilesDrag>(editorState.gesture)) DropGesture();
    if (MenuIsOpen(MenuKind::FilesItem)) CloseMenu();
}

void AddNewAsset(const std::wstring& path, bool isFolder) {
    auto& entries = editorState.fileEntries;
    auto place = std::ranges::find_if(entries, [&path](const AssetEntry& entry) {
        return SameWithoutCase(entry.path, path);  // the disk knows no difference
    });
    if (place == entries.end()) place = entries.insert(place, AssetEntryFor(path, isFolder));
    editorState.selectedFile = static_cast<int32_t>(place - entries.begin());
}

void ListOtherVersions() {
    if (!editorState.otherVersions.empty()) RefreshAssetList();
}
