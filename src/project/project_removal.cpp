#include "project/project_removal.h"

#include "base/enough_memory.h"
#include "base/path_text.h"
#include "formats/project_file.h"
#include "formats/recent_projects.h"
#include "platform/aside.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <atomic>
#include <memory>

// By its path: while a question is open or the folder moves, the list may have changed.
static void TakeOffList(const std::wstring& path) {
    std::erase_if(editorState.recentProjects,
                  [&path](const RecentProject& entry) { return entry.path == path; });
    CloseMenu();
    SaveRecentProjects();
}

// Asks aside what stands at `path`; the answer goes into the question.
static void Ask(RecentProject& entry) {
    entry.question = std::make_shared<std::atomic<ProjectAnswer>>(ProjectAnswer::None);
    RunAside([question = entry.question, path = entry.path] {
        ProjectAnswer answer = ProjectAnswer::Silent;
        WithEnoughMemory([&] {
            answer = LookForProject(path);
            return true;
        });
        *question = answer;
    });
}

// One turn: takes the answer that has come, or asks the next question. Only one is open at a time: servers
// that do not answer would each hold a thread for half a minute. An entry whose answer never comes holds up
// nothing but the questions about those below it.
bool CheckListedProjects() {
    auto& projects = editorState.recentProjects;
    const auto asked =
        std::ranges::find_if(projects, [](const RecentProject& p) { return p.question != nullptr; });
    if (asked == projects.end()) {
        const auto next = std::ranges::find(projects, ProjectAnswer::None, &RecentProject::answer);
        if (next != projects.end()) Ask(*next);
        return false;
    }
    const ProjectAnswer answer = *asked->question;
    if (answer == ProjectAnswer::None) return false;
    asked->answer = answer;
    asked->question = nullptr;
    if (answer == ProjectAnswer::NoProject) TakeOffList(std::wstring(asked->path));
    return true;
}

void TakeOffListIfGone(const std::wstring& path) {
    const ProjectAnswer answer = LookForProject(path);
    for (RecentProject& entry : editorState.recentProjects) {
        if (entry.path == path) entry.answer = answer;
    }
    if (answer == ProjectAnswer::NoProject) TakeOffList(path);
}

void RemoveProjectFromList(int32_t index) {
    const std::wstring path = editorState.recentProjects[static_cast<size_t>(index)].path;
    TakeOffList(path);
    SetStatus(L"Projekt odebran ze seznamu: " + path);
}

void DeleteProjectFromDisk(int32_t index) {
    const std::wstring path = editorState.recentProjects[static_cast<size_t>(index)].path;
    CloseMenu();
    const Answer answer =
        AskYesNo(L"Smazat projekt z disku?\n\n" + path + L"\n\nSlozka bude presunuta do kose Windows.",
                 L"ZelEngine - smazat projekt");
    if (answer != Answer::Yes) {
        SetStatus(L"Smazani projektu zruseno.");
        return;
    }
    if (!MoveFolderToRecycleBin(path)) {
        SetStatus(L"Projekt se nepodarilo smazat: " + path);
        return;
    }
    TakeOffList(path);
    SetStatus(L"Projekt presunut do kose: " + path);
}

static bool ProgramRunsFrom(const std::wstring& folder) {
    return IsAtOrBelow(AbsolutePath(GetExecutablePath()), folder);
}

bool MoveFolderToRecycleBin(const std::wstring& path) {
    const std::wstring folder = AbsolutePath(path);
    if (KindOfPath(folder) != PathKind::Folder) return false;
    if (ProgramRunsFrom(folder)) {
        SetStatus(L"Tuto slozku nejde smazat, protoze z ni bezi ZelEngine.");
        return false;
    }
    return RecycleFolder(folder);
}
