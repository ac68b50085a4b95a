// Projects as a user has them: in the Project Hub, and open in the editor with the Files page before them.
#pragma once

#include "app/current_layout.h"
#include "base/path_text.h"
#include "platform/headless/fault_injection.h"
#include "project/project_hub.h"
#include "project/project_lifecycle.h"
#include "support/editor_input.h"
#include "support/open_menu.h"
#include "support/scratch_folder.h"

#include "doctest/doctest.h"

#include <initializer_list>
#include <string>

// The editor as the program has started it, with all its folders below `folder`; "projects" is there and
// empty. The window is 1360 x 820.
inline void StartIn(const ScratchFolder& folder) {
    StartEditor();
    fileFaults = {};
    folderAnswers = {.executablePath = folder / L"program\\ZelEngine.exe",
                     .localDataFolder = folder / L"local",
                     .workingFolder = folder / L"work"};
    PutFile(folderAnswers.executablePath, "the program");
    PutFolder(folder / L"work");
    PutFolder(folder / L"projects");
}

inline void StartHub(const ScratchFolder& folder) {
    StartIn(folder);
    ShowHub();
    RenderFrame();
}

// The basic project projects\ZelEngineProject, just made.
inline void StartProject(const ScratchFolder& folder) {
    StartIn(folder);
    editorState.hubVisible = true;
    headless.folderAnswers = {folder / L"projects"};
    CreateProject(false);
    headless.prompts.clear();
    editorState.bottomTab = BottomTab::Files;
    editorState.statusMessage = L"untouched";
    RenderFrame();
}

inline std::wstring ProjectIn(const ScratchFolder& folder) { return folder / L"projects\\ZelEngineProject"; }
inline std::wstring FilesIn(const ScratchFolder& folder) { return ProjectIn(folder) + L"\\Files"; }

// Answers of the system's dialogs, for the questions to come.
inline void AnswerFolder(const std::wstring& folder) { headless.folderAnswers = {folder}; }
inline void Answers(std::initializer_list<Answer> answers) { headless.questionAnswers = answers; }

inline void TapWithControlAndShift(uint32_t key) {
    headless.shiftIsHeld = true;
    TapWithControl(key);
    headless.shiftIsHeld = false;
}

// A build of the basic project, made in the folder "builds".
inline std::wstring BuildIn(const ScratchFolder& folder) {
    return folder / L"builds\\ZelEngineProject_Build";
}

inline void StartToBuild(const ScratchFolder& folder) {
    StartProject(folder);
    PutFile(FilesIn(folder) + L"\\imported\\deep\\note.txt", "a note");
    PutFolder(folder / L"builds");
}

inline void BuildInto(const std::wstring& chosen) {
    AnswerFolder(chosen);
    TapWithControl('B');
}

// Places of the Hub. A row is counted from 0.
inline Point BasicCard() { return {headless.clientSize.width - 100, 96 + 170}; }
inline Point EmptyCard() { return {headless.clientSize.width - 100, 96 + 260}; }
inline Point OpenOther() { return {headless.clientSize.width - 100, 36}; }
inline Point ProjectRow(size_t row) {
    const HubLayout layout = CurrentHubLayout();
    if (row >= layout.rows.size()) return {-1, -1};
    return {layout.rows[row].left + 20, layout.rows[row].top + 20};
}

// An item of a pop-up menu of the shared look, counted from 0.
inline Point MenuItemAt(const PopupMenu& menu, int32_t item) {
    return {menu.corner.x + 30, menu.corner.y + 34 + 28 * item + 12};
}

// Where the Files page shows an item, drawn anew. (-1, -1) where it shows none of that name.
inline Point FileNamed(const std::wstring& name) {
    RenderFrame();
    for (const PathZone& cell : editorState.filesCells) {
        if (LastComponent(cell.path) != name) continue;
        return {cell.rect.left + 40, cell.rect.top + 20};
    }
    return {-1, -1};
}

inline bool IsShown(const std::wstring& name) { return FileNamed(name) != Point{-1, -1}; }

// Empty space of the Files page.
inline Point EmptyFilesPlace() { return {1300, 800}; }
inline Point FilesBackButton() { return {30, CurrentLayout().bottomTop + 58}; }

// What the two menus of the Files page offer, by their order.
enum class CreateItem : int32_t { Folder, Script, SceneFile, Blueprint, Prefab };
enum class FileItem : int32_t { Open, Rename, Duplicate, Delete };

inline void ChooseCreate(CreateItem item) {
    RightClick(EmptyFilesPlace());
    Click(MenuItemAt(OpenMenuState(), static_cast<int32_t>(item)));
}

inline void ChooseForFile(const std::wstring& name, FileItem item) {
    RightClick(FileNamed(name));
    Click(MenuItemAt(OpenMenuState(), static_cast<int32_t>(item)));
}

inline void RenameFileTo(const std::wstring& name, const std::wstring& newName) {
    ChooseForFile(name, FileItem::Rename);
    while (!editorState.nameEntry.text.empty()) TapKey(kKeyBackspace);
    Type(newName);
    TapKey(kKeyEnter);
}

inline void OpenFolderNamed(const std::wstring& name) { DoubleClick(FileNamed(name)); }

inline void DropFiles(std::vector<std::wstring> files) {
    HandleInput({.kind = InputKind::FilesDropped, .x = 600, .y = 300, .files = std::move(files)});
}

// Runs `act` once for every file step that it takes, each time from a fresh `start` and with that step
// failing; then `check`.
template <typename Start, typename Act, typename Check>
void FailEachStep(Start start, Act act, Check check) {
    for (int32_t step = 1;; ++step) {
        CAPTURE(step);
        const ScratchFolder folder;
        start(folder);
        fileFaults = {.failStep = step};
        act(folder);
        const bool hasFailed = fileFaults.steps >= step;
        fileFaults = {};
        check(folder);
        if (!hasFailed) break;
    }
}
