#include "formats/recent_projects.h"

#include "formats/path_text.h"
#include "formats/project_file.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "scene/editor_state.h"

#include <cwctype>

constexpr size_t kRecentLineBuffer = 520;

// Equal for paths that differ in upper and lower case only. Separators are compared as they stand.
static std::wstring ComparisonKey(const std::wstring& path) {
    std::wstring key = AbsolutePath(path);
    for (wchar_t& c : key) c = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(c)));
    return key;
}

static std::wstring ListFile() { return JoinPath(GetDataFolder(), L"recent-projects.txt"); }

static std::wstring DataFolderPath() {
    const std::wstring localData = LocalDataFolder();
    if (!localData.empty()) return JoinPath(localData, L"ZelEngine");
    const std::wstring executable = GetExecutablePath();
    return JoinPath(executable.empty() ? L"." : ParentFolder(executable), L"ZelEngineData");
}

std::wstring GetDataFolder() {
    const std::wstring folder = DataFolderPath();
    MakeFolders(folder);
    return folder;
}

void AddRecentProject(const std::wstring& path) {
    const std::wstring fullPath = AbsolutePath(path);
    if (fullPath.empty() || !IsProjectFolder(fullPath)) return;

    auto& projects = editorState.recentProjects;
    const std::wstring key = ComparisonKey(fullPath);
    std::erase_if(projects, [&](const RecentProject& entry) { return ComparisonKey(entry.path) == key; });

    std::wstring name = LastComponent(fullPath);
    if (name.empty()) name = L"ZelEngineProject";
    projects.insert(projects.begin(), {.name = std::move(name), .path = fullPath});
    if (projects.size() > kMaxRecentProjects) projects.resize(kMaxRecentProjects);
}

void LoadRecentProjects() {
    editorState.recentProjects.clear();

    std::vector<std::wstring> paths;
    TextFile file;
    if (ReadTextFile(ListFile(), file)) {
        std::wstring_view line;
        while (NextLine(file, kRecentLineBuffer, line)) paths.emplace_back(line);
    }
    // Each is put in front of the others, so the file's first line comes last.
    for (size_t i = paths.size(); i > 0; --i) AddRecentProject(paths[i - 1]);
    if (editorState.recentProjects.empty()) AddRecentProject(L"Project");

    SaveRecentProjects();
}

void SaveRecentProjects() {
    std::wstring text;
    for (const RecentProject& project : editorState.recentProjects) {
        if (IsProjectFolder(project.path)) text += project.path + L"\n";
    }
    WriteTextFile(ListFile(), text);
}
