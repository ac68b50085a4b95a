#include "formats/recent_projects.h"

#include "base/enough_memory.h"
#include "base/letter_case.h"
#include "base/path_text.h"
#include "formats/project_file.h"
#include "formats/text_file.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "state/editor_state.h"

#include <algorithm>
#include <utility>

constexpr size_t kRecentLineBuffer = 520;

// The project's place in the list, ignoring case; the list's end if it is not there. Separators are compared
// as they stand.
static auto FindProject(const std::wstring& fullPath) {
    return std::ranges::find_if(editorState.recentProjects, [&](const RecentProject& entry) {
        return SameWithoutCase(entry.path, fullPath);
    });
}

static RecentProject EntryFor(const std::wstring& fullPath) {
    const std::wstring name = LastComponent(fullPath);
    return {.name = name.empty() ? L"ZelEngineProject" : name, .path = fullPath};
}

static std::wstring ListFile() { return JoinPath(GetDataFolder(), L"recent-projects.txt"); }

// Beside the executable when the system names no folder for the user's data, so that a list is kept anyway.
static std::wstring DataFolderPath() {
    const std::wstring localData = LocalDataFolder();
    if (!localData.empty()) return JoinPath(localData, L"ZelEngine");
    const std::wstring executable = GetExecutablePath();
    return JoinPath(executable.empty() ? L"." : ParentFolder(executable), L"ZelEngineData");
}

std::wstring GetDataFolder() {
    std::wstring folder = DataFolderPath();
    MakeFolders(folder);
    return folder;
}

void AddRecentProject(const std::wstring& path) {
    const std::wstring fullPath = AbsolutePath(path);
    if (fullPath.empty() || !IsProjectFolder(fullPath)) return;

    auto& projects = editorState.recentProjects;
    const auto listed = FindProject(fullPath);
    if (listed != projects.end()) projects.erase(listed);
    projects.insert(projects.begin(), EntryFor(fullPath));
    if (projects.size() > kMaxRecentProjects) projects.resize(kMaxRecentProjects);
}

static bool Load() {
    auto& projects = editorState.recentProjects;
    projects.clear();

    // The first lines are the most recent ones, and the first of several for one project counts. That is the
    // list that adding its lines from the last to the first gives, whatever the file's length.
    TextFile file;
    ReadTextFile(ListFile(), file);  // one that cannot be read has no lines
    std::wstring_view line;
    while (projects.size() < kMaxRecentProjects && NextLine(file, kRecentLineBuffer, line)) {
        // An empty line has an empty path, where no project is.
        const std::wstring fullPath = AbsolutePath(std::wstring(line));
        if (FindProject(fullPath) != projects.end()) continue;
        RecentProject entry = EntryFor(fullPath);
        entry.answer = MayAnswerLate(fullPath) ? ProjectAnswer::None : LookForProject(fullPath);
        if (entry.answer != ProjectAnswer::NoProject) projects.push_back(std::move(entry));
    }
    if (projects.empty()) AddRecentProject(L"Project");
    return true;
}

// A list that memory did not suffice for is not saved: what it lacks would be lost.
void LoadRecentProjects() {
    if (WithEnoughMemory(Load)) SaveRecentProjects();
}

// A project whose folder is gone leaves the list here, unless its drive may only be away for a while.
static bool Save() {
    std::wstring text;
    for (const RecentProject& project : editorState.recentProjects) {
        const bool stays =
            MayAnswerLate(project.path) || LookForProject(project.path) != ProjectAnswer::NoProject;
        if (stays) text += project.path + L"\n";
    }
    return WriteTextFile(ListFile(), text);
}

void SaveRecentProjects() { WithEnoughMemory(Save); }
