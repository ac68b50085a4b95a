#include "project/project_hub.h"

#include "formats/recent_projects.h"
#include "play/play_mode.h"
#include "project/other_screens.h"
#include "project/project_folder.h"
#include "project/project_lifecycle.h"
#include "project/project_removal.h"
#include "project/scene_switch.h"
#include "scene/gestures.h"
#include "scene/status.h"
#include "scene/text_entry.h"
#include "state/editor_state.h"

#include <algorithm>

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

// True when the click lay inside the open menu.
static bool ClickProjectMenu(Point pointer, const HubLayout& layout) {
    const PopupMenu menu = editorState.projectMenu;
    if (!menu.open) return false;
    const ProjectMenuLayout place = LayoutProjectMenu(menu.corner, layout.width, layout.height);
    if (!Contains(place.box, pointer)) {
        editorState.projectMenu = {};
        return false;
    }
    if (!IsProjectIndex(menu.item)) return true;
    if (Contains(place.remove, pointer)) RemoveProjectFromList(menu.item);
    if (Contains(place.recycle, pointer)) DeleteProjectFromDisk(menu.item);
    return true;
}

// A folder that is no project any more leaves the list.
static void OpenListed(int32_t index) {
    const std::wstring path = editorState.recentProjects[static_cast<size_t>(index)].path;
    if (OpenProject(path) != Opening::NoProject) return;
    std::erase_if(editorState.recentProjects,
                  [&path](const RecentProject& entry) { return entry.path == path; });
    SaveRecentProjects();
}

bool HubLeftClick(Point pointer, const HubLayout& layout) {
    if (!IsInWindow(pointer, layout)) return false;
    if (ClickProjectMenu(pointer, layout)) return true;
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
        editorState.projectMenu = {};
        return true;
    }
    editorState.projectMenu = {.open = true, .corner = pointer, .item = row};
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
    CloseEntriesAndMenus();
    ShowHub();
    ShowTitle(L"ZelEngine - Projects");
    SetStatus(L"Project Hub otevren.");
}
