#include "project/project_removal.h"

#include "formats/path_text.h"
#include "formats/recent_projects.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "scene/editor_state.h"
#include "scene/lower_case.h"
#include "scene/status.h"

// The path of an entry that goes.
static std::wstring TakeOffList(int32_t index) {
    auto& projects = editorState.recentProjects;
    std::wstring path = projects[static_cast<size_t>(index)].path;
    projects.erase(projects.begin() + index);
    editorState.projectMenu = {};
    SaveRecentProjects();
    return path;
}

void RemoveProjectFromList(int32_t index) { SetStatus(L"Projekt odebran ze seznamu: " + TakeOffList(index)); }

void DeleteProjectFromDisk(int32_t index) {
    const std::wstring path = editorState.recentProjects[static_cast<size_t>(index)].path;
    editorState.projectMenu = {};
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
    TakeOffList(index);
    SetStatus(L"Projekt presunut do kose: " + path);
}

// In lower case, without a separator at its end.
static std::wstring FolderKey(const std::wstring& folder) {
    std::wstring key = LowerCase(AbsolutePath(folder));
    while (!key.empty() && IsSeparator(key.back())) key.pop_back();
    return key;
}

static bool ProgramRunsFrom(const std::wstring& folder) {
    const std::wstring target = FolderKey(folder), program = FolderKey(ParentFolder(GetExecutablePath()));
    return program.starts_with(target) &&
           (program.size() == target.size() || IsSeparator(program[target.size()]));
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
