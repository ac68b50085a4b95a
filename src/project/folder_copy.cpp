#include "project/folder_copy.h"

#include "base/enough_memory.h"
#include "base/numbers.h"
#include "base/path_text.h"
#include "platform/files.h"

#include <utility>

constexpr int32_t kLastFolderNumber = 99;

// Folders that are still to be listed wait in a list, so that a deep tree costs no call stack. Paths are
// relative to `folder`: the same list serves the source and the copy. A folder that cannot be listed fails
// the whole, because a copy that silently lacks a part is worse than none.
static bool List(const std::wstring& folder, FolderTree& tree) {
    FolderTree found;
    std::vector<std::wstring> pending{L""};  // relative; the next one at the back
    std::vector<FolderEntry> entries;
    while (!pending.empty()) {
        const std::wstring parent = std::move(pending.back());
        pending.pop_back();
        if (!ListFolder(JoinPath(folder, parent), entries)) return false;
        for (const FolderEntry& entry : entries) {
            if (entry.isLink) continue;
            std::wstring path = JoinPath(parent, entry.name);
            if (entry.isFolder) {
                found.folders.push_back(path);
                pending.push_back(std::move(path));
            } else {
                found.files.push_back(std::move(path));
            }
        }
    }
    tree = std::move(found);
    return true;
}

bool ListFolderTree(const std::wstring& folder, FolderTree& tree) {
    return WithEnoughMemory([&] { return List(folder, tree); });
}

static bool CopyTree(const std::wstring& from, const std::wstring& to, const FolderTree& tree,
                     LongWork& work) {
    if (!MakeFolders(to)) return false;
    for (const std::wstring& folder : tree.folders) {
        if (!work.Continue() || !MakeFolders(JoinPath(to, folder))) return false;
    }
    int64_t copied = 0;
    const auto goesOn = [&](int64_t, int64_t) {
        return work.Continue(copied, static_cast<int64_t>(tree.files.size()));
    };
    for (const std::wstring& file : tree.files) {
        if (!goesOn(0, 0) || !CopyWholeFile(JoinPath(from, file), JoinPath(to, file), goesOn)) return false;
        ++copied;
    }
    return true;
}

// List, make folders, copy files. Everything is listed before anything is copied: a copy into a folder below
// its source would otherwise meet itself and never end. Folders are made first, each before its content, so
// every file finds its place. After a failure only a folder that this call has made is removed.
bool CopyFolder(const std::wstring& from, const std::wstring& to, LongWork& work) {
    FolderTree tree;
    if (!ListFolderTree(from, tree)) return false;
    const bool isNew = KindOfPath(to) == PathKind::Missing;
    if (CopyTree(from, to, tree, work)) return true;
    if (isNew) RemoveFolderTree(to);
    return false;
}

bool CopyToFreePath(const std::wstring& from, const std::wstring& to, const CopyGoesOn& goesOn) {
    if (CopyWholeFile(from, to, goesOn)) return true;
    RemoveFile(to);
    return false;
}

// Copies of read-only files and folders are read-only too, and must be made writable before they can be
// removed.
static void RemoveAnyway(const std::wstring& path, bool (*remove)(const std::wstring& path)) {
    if (!remove(path) && MakeWritable(path)) remove(path);
}

// Files first, then folders from the end of the list: the content of a folder goes before the folder itself.
void RemoveFolderTree(const std::wstring& folder) {
    FolderTree tree;
    if (ListFolderTree(folder, tree)) {
        LongWork work(L"Odstranuji kopii", L"souboru");
        int64_t removed = 0;
        for (const std::wstring& file : tree.files) {
            RemoveAnyway(JoinPath(folder, file), RemoveFile);
            work.Continue(++removed, static_cast<int64_t>(tree.files.size()));
        }
        for (size_t i = tree.folders.size(); i > 0; --i) {
            RemoveAnyway(JoinPath(folder, tree.folders[i - 1]), RemoveEmptyFolder);
        }
    }
    RemoveAnyway(folder, RemoveEmptyFolder);
}

std::wstring MakeUniqueFolder(const std::wstring& parent, const std::wstring& name) {
    std::wstring path = JoinPath(parent, name);
    if (KindOfPath(path) == PathKind::Missing) return path;
    for (int32_t number = 1; number <= kLastFolderNumber; ++number) {
        std::wstring numbered = path + L"_" + Padded(number, 2);
        if (KindOfPath(numbered) == PathKind::Missing) return numbered;
    }
    return path + L"_New";
}
