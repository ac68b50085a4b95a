// What a picture of the editor costs with a sample open, part by part, and a turn of the loop while the
// pointer moves, while looking around and while the sample plays. In a real window.
//
// zel_frame_split <project folder> <width> <height>
#include "app/current_layout.h"
#include "app/frame.h"
#include "app/turn.h"
#include "editor/theme.h"
#include "formats/project_file.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/window.h"
#include "project/asset_list.h"
#include "project/project_folder.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "viewport/scene_drawing.h"
#include "viewport/scene_view.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <variant>
#include <vector>

constexpr int32_t kRounds = 100;

// The time that one round of ten stays below, in milliseconds: beside other work the median tells more of
// that than of the program. `prepare` is not measured.
template <typename Prepare, typename Work>
static double FirstDecile(Prepare prepare, Work work) {
    std::vector<double> times;
    for (int32_t i = -5; i < kRounds; ++i) {
        PumpMessages();
        prepare(i);
        const double start = MonotonicSeconds();
        work();
        PreparePixelAccess(frameBuffer);  // what the system still has to draw belongs to the work
        if (i >= 0) times.push_back((MonotonicSeconds() - start) * 1000);
    }
    std::ranges::nth_element(times, times.begin() + kRounds / 10);
    return times[kRounds / 10];
}

template <typename Work>
static double FirstDecile(Work work) {
    return FirstDecile([](int32_t) {}, work);
}

// Of the whole process, milliseconds, in steps of ten.
static double ProcessorMilliseconds() {
    FILETIME made{}, ended{}, inSystem{}, inProgram{};
    GetProcessTimes(GetCurrentProcess(), &made, &ended, &inSystem, &inProgram);
    return (inSystem.dwLowDateTime + inProgram.dwLowDateTime) / 1e4;
}

// What a turn of the loop takes of a processor, in milliseconds, however many others share it: the mean of
// many.
template <typename Prepare>
static double ProcessorTimeOfTurns(Prepare prepare) {
    constexpr int32_t kTurns = 200;
    Turn turn;
    RunTurn(0.016f, turn);
    const double start = ProcessorMilliseconds();
    for (int32_t i = 0; i < kTurns; ++i) {
        PumpMessages();
        prepare(i);
        RunTurn(0.016f, turn);
    }
    return (ProcessorMilliseconds() - start) / kTurns;
}

static void SendMouse(InputKind kind, int32_t x, int32_t y) { HandleInput({.kind = kind, .x = x, .y = y}); }

static void MovePointer(int32_t round) {
    SendMouse(InputKind::MouseMove, 600 + round % 40, 300 + round % 20);
}

static void TapPlay() {
    HandleInput({.kind = InputKind::KeyDown, .key = 'P'});
    HandleInput({.kind = InputKind::KeyUp, .key = 'P'});
}

// Lets the panels say what they would draw.
static void NotePanels(const EditorLayout& layout) {
    frameBuffer.cachesPicture = true;
    BeginPicture();
    DrawPanels(layout);
    frameBuffer.cachesPicture = frameBuffer.picture.isNoting = false;
}

// What they draw but for their texts.
static std::vector<FillStep> BoxesOfPanels(const EditorLayout& layout) {
    NotePanels(layout);
    std::vector<FillStep> boxes;
    for (const DrawingStep& step : frameBuffer.picture.next.steps) {
        if (const auto* box = std::get_if<FillStep>(&step)) boxes.push_back(*box);
    }
    return boxes;
}

static void PrintParts(const EditorLayout& layout) {
    const std::vector<FillStep> panelBoxes = BoxesOfPanels(layout);
    const double whole = FirstDecile([] { RenderFrame(); });
    const double clear = FirstDecile([&layout] {
        FillRect({0, 0, layout.width, layout.height}, kWindowFill);
        frameBuffer.viewport = layout.viewport;
        ClearViewportDepth();
    });
    const double scene = FirstDecile([&layout] { DrawScene(CurrentView(layout.viewport)); });
    const double panels = FirstDecile([&layout] { DrawPanels(layout); });
    const double boxes = FirstDecile([&layout, &panelBoxes] {
        NotePanels(layout);
        for (const FillStep& box : panelBoxes) FillRect(box.rect, box.color);
    });
    const double present = FirstDecile(Present);
    std::printf(
        "  drawn whole %7.3f ms: clear %.3f, scene %.3f, panels %.3f and their texts %.3f, present %.3f\n",
        whole, clear, scene, boxes, panels - boxes, present);
}

static void PrintTurns() {
    const double pointer = ProcessorTimeOfTurns(MovePointer);
    SendMouse(InputKind::RightDown, 600, 300);
    const double look = ProcessorTimeOfTurns(MovePointer);
    SendMouse(InputKind::RightUp, 600, 300);
    TapPlay();
    const double play = ProcessorTimeOfTurns([](int32_t) {});
    TapPlay();
    std::printf("  a turn, of a processor: pointer moving %.2f ms, looking around %.2f ms, playing %.2f ms\n",
                pointer, look, play);
}

int wmain(int argc, wchar_t** argv) {
    if (argc != 4) return 2;
    StartPlatform();
    LoadIcons();
    resetScene(true);
    const std::wstring folder = AbsolutePath(argv[1]);
    const int32_t width = std::stoi(argv[2]), height = std::stoi(argv[3]);
    SetProjectFolder(folder);
    if (!ReadProjectFile(folder) || !OpenMainWindow(L"ZelEngine", {width, height})) return 1;
    RefreshAssetList();
    PumpMessages();
    frameBuffer.cachesTexts = true;
    RenderFrame();
    RenderFrame();
    const ClientSize size = WindowClientSize();
    std::printf("%ls at %d x %d, first deciles of %d\n", argv[1], size.width, size.height, kRounds);
    PrintParts(CurrentLayout());
    frameBuffer.cachesPicture = true;
    PrintTurns();

    ReleaseFrameBuffer();
    ReleaseCanvasImages();
    StopPlatform();
    return 0;
}
