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

// A stored path of plain names: none of them leads upwards, to another drive or a device. The file that a
// project names is written by the next save, wherever the project came from.
static bool StaysInProject(std::wstring_view stored) {
    while (!stored.empty()) {
        const size_t end = std::min(stored.find_first_of(L"\\/"), stored.size());
        const std::wstring name(stored.substr(0, end));
        if (!IsUsableFileName(name) || name.find_first_of(kForbiddenInNames) != std::wstring::npos)
            return false;
        stored.remove_prefix(std::min(end + 1, stored.size()));
    }
    return true;
}

bool ReadProjectFile(const std::wstring& folder) {
    const std::wstring projectFile = JoinPath(folder, kProjectFileName);
    TextFile file;
    if (!ReadTextFile(projectFile, file)) return false;

    std::wstring stored;
    if (FindCurrentScene(file, stored) && StaysInProject(stored)) {
        const std::wstring scenePath = JoinPath(folder, stored);
        if (KindOfPath(scenePath) == PathKind::File && LoadScene(scenePath)) {
            editorState.scenePath = scenePath;
            return true;
        }
    }
    editorState.scenePath = MainScenePath(editorState.filesRoot);
    return LoadScene(projectFile);
}
