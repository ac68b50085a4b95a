#include "project/scene_switch.h"

#include "base/letter_case.h"
#include "formats/scene_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "play/play_mode.h"
#include "project/other_screens.h"
#include "project/project_folder.h"
#include "scene/gestures.h"
#include "scene/status.h"
#include "scene/text_entry.h"
#include "scene/undo.h"
#include "state/editor_state.h"

bool AskSaveBeforeSceneSwitch() {
    const Answer answer =
        AskYesNoCancel(L"Chces ulozit aktualni scenu pred otevrenim jine sceny?", L"ZelEngine");
    if (answer == Answer::Cancel) {
        SetStatus(L"Otevreni sceny zruseno.");
        return false;
    }
    if (answer == Answer::Yes && !SaveScene(CurrentScenePath())) {
        SetStatus(L"Aktualni scenu se nepodarilo ulozit.");
        return false;
    }
    return true;
}

bool AskSaveOfChangedScene() { return SceneIsSaved() || AskSaveBeforeSceneSwitch(); }

void OpenSceneFile(const std::wstring& path) {
    if (!LeaveOtherScreens()) return;
    StopPlayMode();
    const bool isOther = !SameWithoutCase(AbsolutePath(path), AbsolutePath(editorState.scenePath));
    if (isOther && !AskSaveBeforeSceneSwitch()) return;
    if (!LoadScene(path)) {
        SetStatus(L"Scenu se nepodarilo otevrit.");
        return;
    }
    ForgetObjectIndices();
    CloseEntriesAndMenu();
    ClearUndo();
    editorState.scenePath = path;
    SetStatus(L"Otevrena scena: " + path);
}
