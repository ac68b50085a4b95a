#include "project/project_hub.h"

#include "editor/popup_menu.h"
#include "formats/recent_projects.h"
#include "play/play_mode.h"
#include "project/project_folder.h"
#include "project/project_lifecycle.h"
#include "project/project_removal.h"
#include "project/scene_switch.h"
#include "scene/interaction.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>

constexpr TextColor kDangerText{0x7A7AF0};

static bool IsInWindow(Point point, const HubLayout& layout) {
    return Contains({0, 0, layout.width, layout.height}, point);
}

static bool IsProjectIndex(int32_t index) {
    return index >= 0 && static_cast<size_t>(index) < editorState.recentProjects.size();
}

int32_t ProjectRowAt(Point point) {
    const auto isUnderPoint = [point](const PathZone& row) { return Contains(row.rect, point); };
    const auto row = std::ranges::find_if(editorState.hubRows, isUnderPoint);
    if (row == editorState.hubRows.end()) return -1;
    const auto& projects = editorState.recentProjects;
    const auto project = std::ranges::find(projects, row->path, &RecentProject::path);
    return project != projects.end() ? static_cast<int32_t>(project - projects.begin()) : -1;
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

// A folder that is no project any more leaves the list.
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

void ShowHub() {
    editorState.hubVisible = true;
    editorState.hubRows.clear();
    LoadRecentProjects();
    SetStatus(L"Vyber existujici projekt nebo vytvor novy.");
}

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
