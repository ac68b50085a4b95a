#include "project/save_project.h"

#include "formats/project_file.h"
#include "formats/scene_file.h"
#include "project/project_folder.h"
#include "scene/shown_screen.h"
#include "scene/status.h"
#include "state/editor_state.h"

static void ReportSaved(bool sceneSaved, bool projectWritten) {
    if (!sceneSaved) {
        SetStatus(L"Projekt se nepodarilo ulozit.");
    } else if (!projectWritten) {
        SetStatus(L"Scena ulozena, ale project.zel se nepodarilo ulozit.");
    } else {
        SetStatus(L"Ctrl+S: projekt ulozen: " + editorState.projectRoot);
    }
}

bool RefuseSaveInPlayMode() {
    if (!editorState.playMode || ShownScreen() == Shown::Game) return false;
    SetStatus(L"Nejdriv vypni Play Mode. Runtime zmeny se do projektu neukladaji.");
    return true;
}

void SaveProject() {
    if (RefuseSaveInPlayMode()) return;
    const bool sceneSaved = SaveScene(CurrentScenePath());
    const bool projectWritten = WriteProjectFile(editorState.projectRoot);
    ReportSaved(sceneSaved, projectWritten);
}
