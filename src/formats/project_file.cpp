#include "formats/project_file.h"

#include "base/enough_memory.h"
#include "base/path_text.h"
#include "formats/object_line.h"
#include "formats/other_writers.h"
#include "formats/scene_file.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "state/editor_state.h"

#include <algorithm>
#include <string_view>

constexpr size_t kProjectLineBuffer = 4096;
constexpr std::wstring_view kForbiddenInNames = L":*?\"<>|";  // of Windows, beside the separators

// Cuts the file up to its first line with CURRENT_SCENE and a path. `stored` is that path, a part of the
// file's current line. False without such a line.
static bool FindCurrentScene(TextFile& file, std::wstring_view& stored) {
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

// The file's bytes with another text in place of `part` of its current line. All other lines stay as they
// are.
static std::string BytesWith(const TextFile& file, std::wstring_view part, std::wstring_view text) {
    std::wstring line = file.line;
    line.replace(static_cast<size_t>(part.data() - file.line.data()), part.size(), text);
    size_t lineEnd = file.nextByte;
    if (file.hasEnd) --lineEnd;
    if (file.hasEnd && lineEnd > file.lineByte && file.bytes[lineEnd - 1] == '\r') --lineEnd;
    const std::string_view bytes = file.bytes;
    std::string changed(bytes.starts_with(kUtf8Mark) ? "" : kUtf8Mark);
    changed += bytes.substr(0, file.lineByte);
    changed += EncodeUtf8(line);
    changed += bytes.substr(lineEnd);
    return changed;
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

static bool MayBeFolder(PathKind kind) { return kind == PathKind::Folder || kind == PathKind::Unknown; }

// A server that is switched off gives the same errors as a missing path. If its share, or the root of the
// drive, does not answer either, the project may still be there.
ProjectAnswer LookForProject(const std::wstring& path) {
    const PathKind kind = KindOfPath(path);
    if (kind != PathKind::Folder && MayAnswerLate(path) && KindOfPath(RootOf(path)) != PathKind::Folder)
        return ProjectAnswer::Silent;
    const bool mayBeProject =
        MayBeFolder(kind) && (KindOfPath(JoinPath(path, kProjectFileName)) != PathKind::Missing ||
                              MayBeFolder(KindOfPath(JoinPath(path, kFilesFolderName))));
    return mayBeProject ? ProjectAnswer::Project : ProjectAnswer::NoProject;
}

// The objects follow the project's own lines: if the scene file is lost, the project still opens with them.
static bool WriteInto(const std::wstring& folder, const std::wstring& relativeScenePath) {
    MakeFolders(folder);

    std::wstring text = L"ZELENGINE_PROJECT\t1\nFILES\tFiles\nCURRENT_SCENE\t";
    text += relativeScenePath;
    text += L'\n';
    WriteObjects(text, editorState.scene);
    return SaveOver(JoinPath(folder, kProjectFileName), TextFileBytes(text));
}

bool WriteProjectFile(const std::wstring& folder) {
    return WithEnoughMemory([&] { return WriteInto(folder, RelativeTo(editorState.scenePath, folder)); });
}

bool WriteProjectCopy(const std::wstring& folder) {
    return WithEnoughMemory(
        [&] { return WriteInto(folder, RelativeTo(editorState.scenePath, editorState.projectRoot)); });
}

// Changes the one path in the file and leaves every other byte alone, because the objects in it are those of
// the last save, which are not the ones in memory. A file that is not there, or that names another scene, has
// nothing to follow.
static bool WriteMovedScene(const std::wstring& from, const std::wstring& to) {
    const std::wstring& root = editorState.projectRoot;
    const std::wstring projectFile = JoinPath(root, kProjectFileName);
    if (KindOfPath(projectFile) == PathKind::Missing) return true;
    TextFile file;
    if (!ReadTextFile(projectFile, file)) return false;
    std::wstring_view stored;
    std::wstring resolved;
    if (!FindCurrentScene(file, stored) || !ResolveInProject(stored, resolved)) return true;
    const std::wstring scenePath = JoinPath(root, resolved);
    if (!IsAtOrBelow(scenePath, from)) return true;
    const std::wstring moved = to + scenePath.substr(from.size());
    // Nothing of another writer is lost by it: all other lines stay as they are. But it is not known either.
    const bool isKnown = IsRemembered(projectFile, file.fingerprint);
    const std::string bytes = BytesWith(file, stored, RelativeTo(moved, root));
    if (!WriteWholeFile(projectFile, bytes)) return false;
    if (isKnown) RememberFile(projectFile, Fingerprint(bytes));
    return true;
}

bool MoveCurrentScene(const std::wstring& from, const std::wstring& to) {
    return WithEnoughMemory([&] { return WriteMovedScene(from, to); });
}

// The scene that the file names comes first, if it lies inside the project. Without one, the objects in the
// project file itself are loaded, and the next save makes them the main scene. Once a scene is loaded,
// nothing takes memory any more, so scene and path always change together.
static bool Read(const std::wstring& folder) {
    const std::wstring projectFile = JoinPath(folder, kProjectFileName);
    TextFile file;
    if (!ReadTextFile(projectFile, file)) return false;
    RememberFile(projectFile, file.fingerprint);

    std::wstring_view stored;
    std::wstring resolved;
    if (FindCurrentScene(file, stored) && ResolveInProject(stored, resolved)) {
        std::wstring scenePath = JoinPath(folder, resolved);
        if (KindOfPath(scenePath) == PathKind::File && LoadScene(scenePath)) {
            editorState.scenePath.swap(scenePath);
            return true;
        }
    }
    std::wstring mainScene = MainScenePath(editorState.filesRoot);
    if (!LoadScene(projectFile)) return false;
    editorState.scenePath.swap(mainScene);
    return true;
}

bool ReadProjectFile(const std::wstring& folder) {
    return WithEnoughMemory([&] { return Read(folder); });
}

std::wstring MakeProjectRelative(std::wstring_view path) { return RelativeTo(path, editorState.projectRoot); }

std::wstring JoinProjectPath(std::wstring_view stored) { return JoinPath(editorState.projectRoot, stored); }
