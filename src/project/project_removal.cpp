#include "project/project_removal.h"

#include "base/path_text.h"
#include "formats/recent_projects.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "scene/status.h"
#include "scene/text_entry.h"
#include "state/editor_state.h"

// By its path: while a question is open or the folder moves, the list may have changed.
static void TakeOffList(const std::wstring& path) {
    std::erase_if(editorState.recentProjects,
                  [&path](const RecentProject& entry) { return entry.path == path; });
    CloseMenu();
    SaveRecentProjects();
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
