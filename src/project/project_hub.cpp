#include "project/project_hub.h"

#include "base/enough_memory.h"
#include "base/path_text.h"
#include "editor/popup_menu.h"
#include "formats/project_file.h"
#include "formats/recent_projects.h"
#include "platform/aside.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "play/play_mode.h"
#include "project/project_folder.h"
#include "project/project_lifecycle.h"
#include "project/scene_switch.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <atomic>
#include <memory>

constexpr TextColor kDangerText{0x7A7AF0};

// ---- The list.

// Found by its path, because the list may change while a question is open or a folder is being moved.
static void TakeOffList(const std::wstring& path) {
    std::erase_if(editorState.recentProjects,
                  [&path](const RecentProject& entry) { return entry.path == path; });
    CloseMenu();
    SaveRecentProjects();
}

// Asks on another thread what stands at the path of the entry. The thread knows nothing of the state: it
// shares only the question, which outlives the entry if that leaves the list meanwhile.
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

// One turn: takes the answer that has come, or asks the next question. Only one question is open at a time,
// because each server that does not answer holds a thread for half a minute. An answer that never comes
// holds up nothing but the questions about the entries below.
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

// Asks about one entry now, after it could not be opened.
static void TakeOffListIfGone(const std::wstring& path) {
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

// ---- The disk.

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

// ---- The menu of a project.

static bool IsProjectIndex(int32_t index) {
    return index >= 0 && static_cast<size_t>(index) < editorState.recentProjects.size();
}

static void Remove(const MenuChoice& choice) {
    if (IsProjectIndex(choice.menu.item)) RemoveProjectFromList(choice.menu.item);
}

static void Delete(const MenuChoice& choice) {
    if (IsProjectIndex(choice.menu.item)) DeleteProjectFromDisk(choice.menu.item);
}

constexpr MenuItem kProjectItems[] = {
    {.top = 36, .label = L"Odebrat ze seznamu", .run = Remove, .height = 26},
    {.top = 68, .label = L"Smazat projekt z disku", .run = Delete, .height = 28, .color = kDangerText},
};

constexpr MenuTable kProjectMenu{
    .kind = MenuKind::Project,
    .title = L"Project",
    .titleTop = 10,
    .textTop = 5,
    .box = [](Point corner,
              const MenuArea& area) { return ProjectMenuRect(corner, area.width, area.height); },
    .pressOnBoxOnly = true,
    .beside = PressBesideItems::StaysOpen,
    .items = kProjectItems};

void DrawProjectMenu(const HubLayout& layout) { DrawMenu(kProjectMenu, MenuAreaOf(layout)); }

// ---- Clicks.

static bool IsInWindow(Point point, const HubLayout& layout) {
    return Contains({0, 0, layout.width, layout.height}, point);
}

int32_t ProjectRowAt(Point point) {
    const auto isUnderPoint = [point](const PathZone& row) { return Contains(row.rect, point); };
    const auto row = std::ranges::find_if(editorState.hubRows, isUnderPoint);
    if (row == editorState.hubRows.end()) return -1;
    const auto& projects = editorState.recentProjects;
    const auto project = std::ranges::find(projects, row->path, &RecentProject::path);
    return project != projects.end() ? static_cast<int32_t>(project - projects.begin()) : -1;
}

// If the folder is no project any more, it leaves the list.
static void OpenListed(int32_t index) {
    const std::wstring path = editorState.recentProjects[static_cast<size_t>(index)].path;
    if (OpenProject(path) == Opening::NoProject) TakeOffListIfGone(path);
}

bool HubLeftClick(Point pointer, const HubLayout& layout) {
    if (!IsInWindow(pointer, layout)) return false;
    if (ClickMenu(kProjectMenu, pointer, MenuAreaOf(layout))) return true;
    const int32_t row = ProjectRowAt(pointer);
    if (Contains(layout.openButton, pointer)) {
        OpenProjectDialog();
    } else if (Contains(layout.basicCard, pointer)) {
        CreateProject(false);
    } else if (Contains(layout.emptyCard, pointer)) {
        CreateProject(true);
    } else if (IsProjectIndex(row)) {
        OpenListed(row);
    }
    return true;
}

bool HubRightClick(Point pointer, const HubLayout& layout) {
    if (!IsInWindow(pointer, layout)) return false;
    const int32_t row = ProjectRowAt(pointer);
    if (!IsProjectIndex(row)) {
        CloseMenu();
        return true;
    }
    OpenMenu(kProjectMenu, row, pointer, MenuAreaOf(layout));
    SetStatus(L"Project menu: " + editorState.recentProjects[static_cast<size_t>(row)].name);
    return true;
}

// ---- Showing the Hub.

void ShowHub() {
    editorState.hubVisible = true;
    editorState.hubRows.clear();
    LoadRecentProjects();
    SetStatus(L"Vyber existujici projekt nebo vytvor novy.");
}

// Each question may end it: Cancel about the prefab, or about the scene, stays in the editor. A game stops
// before the scene is asked about, because a game's changes are not kept.
void ReturnToHub() {
    if (!LeaveOtherScreens()) return;
    StopPlayMode();
    if (!AskSaveOfChangedScene()) return;
    ForgetObjectIndices();
    DropGesture();  // looking around too: there is no view any more
    CloseEntriesAndMenu();
    ShowHub();
    ShowTitle(L"ZelEngine - Projects");
    SetStatus(L"Project Hub otevren.");
}
