#include "support/folder_tree.h"

#include "platform/headless/native_path.h"
#include "support/scratch_folder.h"

#include <filesystem>

namespace fs = std::filesystem;

FolderContents ContentsOf(const std::wstring& folder) {
    FolderContents contents;
    std::error_code error;
    const fs::path root = NativePath(folder);
    for (fs::recursive_directory_iterator entry(root, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->is_symlink()) continue;
        const std::wstring path = ProgramPath(entry->path());
        contents[path.substr(folder.size() + 1)] = entry->is_directory() ? "<folder>" : FileBytes(path);
    }
    return contents;
}

bool PutLink(const std::wstring& path, const std::wstring& target) {
    std::error_code error;
    const bool isFolder = fs::is_directory(NativePath(target), error);
    if (isFolder) {
        fs::create_directory_symlink(NativePath(target), NativePath(path), error);
    } else {
        fs::create_symlink(NativePath(target), NativePath(path), error);
    }
    return !error;
}
