#include "formats/project_file.h"

#include "formats/object_line.h"
#include "formats/path_text.h"
#include "formats/scene_file.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "scene/editor_state.h"
#include "scene/file_name.h"

#include <algorithm>
#include <string_view>

constexpr size_t kProjectLineBuffer = 4096;
constexpr std::wstring_view kForbiddenInNames = L":*?\"<>|";  // of Windows, beside the separators

// The path in the file's first CURRENT_SCENE line, as stored. False without such a line.
static bool FindCurrentScene(TextFile& file, std::wstring& stored) {
    std::wstring_view line;
    std::vector<std::wstring_view> fields;
    while (NextLine(file, kProjectLineBuffer, line)) {
        SplitAtTabs(line, fields);
        if (fields.size() < 2 || fields[0] != L"CURRENT_SCENE") continue;
        stored = fields[1];
        return true;
    }
    return false;
}

namespace {

// A name of a path, and the separator before it.
struct PathPart {
    wchar_t separator = L'\\';
    std::wstring name{};
};

}  // namespace

// A stored scene path without ".", ".." and doubled separators. False when it leads out of the project on its
// way, or to a device, a stream or another drive, and for one that ends like a folder. The file that a
// project names is written by the next save, wherever the project came from.
static bool ResolveInProject(std::wstring_view stored, std::wstring& resolved) {
    std::vector<PathPart> parts;
    PathPart part;
    while (!stored.empty()) {
        const size_t end = std::min(stored.find_first_of(L"\\/"), stored.size());
        part.name = stored.substr(0, end);
        if (part.name == L"..") {
            if (parts.empty()) return false;
            parts.pop_back();
        } else if (!part.name.empty() && part.name != L".") {
            if (!IsUsableFileName(part.name) ||
                part.name.find_first_of(kForbiddenInNames) != std::wstring::npos)
                return false;
            parts.push_back(part);
        }
        if (end == stored.size()) break;
        part.separator = stored[end];
        stored.remove_prefix(end + 1);
        if (stored.empty()) return false;
    }
    resolved.clear();
    for (const PathPart& kept : parts) {
        if (!resolved.empty()) resolved += kept.separator;
        resolved += kept.name;
    }
    return true;
}

std::wstring MainScenePath(const std::wstring& filesRoot) {
    return JoinPath(filesRoot, L"Scenes\\Main.scene");
}

bool IsProjectFolder(const std::wstring& path) {
    if (KindOfPath(path) != PathKind::Folder) return false;
    return KindOfPath(JoinPath(path, kProjectFileName)) != PathKind::Missing ||
           KindOfPath(JoinPath(path, kFilesFolderName)) == PathKind::Folder;
}

static bool MayBeFolder(const std::wstring& path) {
    const PathKind kind = KindOfPath(path);
    return kind == PathKind::Folder || kind == PathKind::Unknown;
}

bool MayBeProjectFolder(const std::wstring& path) {
    if (!MayBeFolder(path)) return false;
    return KindOfPath(JoinPath(path, kProjectFileName)) != PathKind::Missing ||
           MayBeFolder(JoinPath(path, kFilesFolderName));
}

static bool WriteInto(const std::wstring& folder, const std::wstring& relativeScenePath) {
    MakeFolders(folder);

    std::wstring text = L"ZELENGINE_PROJECT\t1\nFILES\tFiles\nCURRENT_SCENE\t";
    text += relativeScenePath;
    text += L'\n';
    WriteObjects(text, editorState.scene);
    return WriteTextFile(JoinPath(folder, kProjectFileName), text);
}

bool WriteProjectFile(const std::wstring& folder) {
    return WriteInto(folder, RelativeTo(editorState.scenePath, folder));
}

bool WriteProjectCopy(const std::wstring& folder) {
    return WriteInto(folder, RelativeTo(editorState.scenePath, editorState.projectRoot));
}

bool WriteCurrentScenePath() {
    constexpr std::string_view kTag = "\nCURRENT_SCENE\t";
    const std::wstring projectFile = JoinPath(editorState.projectRoot, kProjectFileName);
    std::string bytes;
    if (!ReadWholeFile(projectFile, bytes)) return false;
    const size_t tag = bytes.find(kTag);
    if (tag == std::string::npos) return false;
    const size_t begin = tag + kTag.size();
    const size_t end = std::min(bytes.find_first_of("\r\n", begin), bytes.size());
    bytes.replace(begin, end - begin, EncodeUtf8(RelativeTo(editorState.scenePath, editorState.projectRoot)));
    return WriteWholeFile(projectFile, bytes);
}

bool ReadProjectFile(const std::wstring& folder) {
    const std::wstring projectFile = JoinPath(folder, kProjectFileName);
    TextFile file;
    if (!ReadTextFile(projectFile, file)) return false;

    std::wstring stored, resolved;
    if (FindCurrentScene(file, stored) && ResolveInProject(stored, resolved)) {
        const std::wstring scenePath = JoinPath(folder, resolved);
        if (KindOfPath(scenePath) == PathKind::File && LoadScene(scenePath)) {
            editorState.scenePath = scenePath;
            return true;
        }
    }
    editorState.scenePath = MainScenePath(editorState.filesRoot);
    return LoadScene(projectFile);
}
