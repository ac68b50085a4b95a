#include "app/main_loop.h"

#include "app/current_layout.h"
#include "app/turn.h"
#include "base/enough_memory.h"
#include "blueprint/blueprint_editor.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/window.h"
#include "project/project_hub.h"
#include "project/project_lifecycle.h"
#include "project/recovery.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"

#include <algorithm>

constexpr ClientSize kInitialSize{1360, 820};
constexpr double kLongestFrame = 0.05;  // seconds

constexpr const wchar_t* kOutOfMemory =
    L"Nedostatek pameti: program se ukonci.\n\nUlozene soubory jsou v poradku, neulozene zmeny jsou "
    L"ztraceny.";

static const wchar_t* InitialTitle() {
    if (editorState.runtimeMode) return L"ZelGame";
    return editorState.hubVisible ? L"ZelEngine - Projects" : L"ZelEngine";
}

// The loop never waits for a message: a game goes on without any. It sleeps for a millisecond instead, which
// is what an idle program costs, since a turn in which nothing happens draws nothing.
static void RunFrames(double previous) {
    Turn turn;
    while (PumpMessages()) {
        const double now = MonotonicSeconds();
        RunTurn(FrameTime(now - previous), turn);
        previous = now;
        KeepRecovery(now);
        SleepMilliseconds(1);
    }
}

float FrameTime(double measured) { return static_cast<float>(std::min(measured, kLongestFrame)); }

// False when the window could not be opened.
static bool RunUntilAsked() {
    const double start = MonotonicSeconds();
    LoadIcons();
    resetScene(true);
    if (!DetectRuntimeProject()) ShowHub();

    editorState.windowTitle = InitialTitle();
    const bool isOpen = OpenMainWindow(editorState.windowTitle, kInitialSize);
    if (isOpen) RunFrames(start);
    SaveBlueprintChanges();
    WriteRecoveryNow();
    return isOpen;
}

int RunProgram() {
    StartPlatform();
    frameBuffer.cachesTexts = true;
    frameBuffer.cachesPicture = true;
    bool isGood = false, hasMemory = false;
    WithEnoughMemory([&] {
        isGood = RunUntilAsked();
        return hasMemory = true;
    });
    ReleaseFrameBuffer();
    ReleaseCanvasImages();
    if (!hasMemory) TellError(kOutOfMemory, L"ZelEngine");
    StopPlatform();
    return isGood ? 0 : 1;
}
