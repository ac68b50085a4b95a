// What an editor frame of the Windows program costs, part by part, in a real window of 1360 x 820 pixels.
#include "app/current_layout.h"
#include "app/frame.h"
#include "app/turn.h"
#include "editor/theme.h"
#include "moving_pointer.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "viewport/scene_drawing.h"
#include "viewport/scene_view.h"

#include <algorithm>
#include <cstdio>
#include <vector>

constexpr int32_t kRounds = 200;
constexpr int32_t kTextsPerRound = 100;

// The median over many rounds, in milliseconds.
template <typename Work>
static double Median(Work work) {
    for (int32_t i = 0; i < 5; ++i) work();
    std::vector<double> times;
    for (int32_t i = 0; i < kRounds; ++i) {
        PumpMessages();
        const double start = MonotonicSeconds();
        work();
        PreparePixelAccess(frameBuffer);  // what the system still has to draw belongs to the work
        times.push_back((MonotonicSeconds() - start) * 1000);
    }
    std::ranges::nth_element(times, times.begin() + kRounds / 2);
    return times[kRounds / 2];
}

// From an event to the picture that shows it, in milliseconds: the median over many rounds of the loop.
// `turn` is what the loop does between messages and sleep, and answers whether it has drawn.
template <typename Turn>
static double EventToPicture(Turn turn) {
    MovingPointer pointer(L"ZelEngine");
    std::vector<double> times;
    while (times.size() < kRounds) {
        const uint64_t before = editorState.handledEvents;
        PumpMessages();
        const bool hasEvent = editorState.handledEvents != before;
        const bool isDrawn = turn();
        const double movedAt = hasEvent && isDrawn ? pointer.TakeMove() : 0;
        if (movedAt > 0) times.push_back((MonotonicSeconds() - movedAt) * 1000);
        SleepMilliseconds(1);
    }
    std::ranges::nth_element(times, times.begin() + kRounds / 2);
    return times[kRounds / 2];
}

static void DrawTexts() {
    FillRect({0, 0, 1200, 250}, kPanelFill);
    for (int32_t i = 0; i < kTextsPerRound; ++i) {
        DrawText(20 + i % 10 * 110, 10 + i / 10 * 20, L"Position 0.00", kLabelText, 14, kNormal);
    }
}

static void Print(const char* what, double milliseconds, double whole) {
    std::printf("%-46s %8.3f ms %7.2f\n", what, milliseconds, milliseconds / whole);
}

int main() {
    StartPlatform();
    LoadIcons();
    resetScene(true);
    if (!OpenMainWindow(L"ZelEngine", {1360, 820})) return 1;
    PumpMessages();
    RenderFrame();
    const EditorLayout layout = CurrentLayout();

    frameBuffer.cachesTexts = false;
    const double systemFrame = Median([] { RenderFrame(); });
    const double systemPanels = Median([&] { DrawPanels(layout); });
    const double systemTexts = Median(DrawTexts);
    frameBuffer.cachesTexts = true;
    const double frame = Median([] { RenderFrame(); });
    const double panels = Median([&] { DrawPanels(layout); });
    const double texts = Median(DrawTexts);
    const double scene = Median([&] {
        Clear(kWindowFill);
        DrawScene(CurrentView(layout.viewport));
    });
    const double present = Median(Present);
    const double fill = Median([] { FillRect({0, 0, 1200, 250}, kPanelFill); });

    std::printf("Editor frame at 1360 x 820, default scene: medians of %d, and parts of the whole frame\n",
                kRounds);
    Print("whole frame, texts kept", frame, frame);
    Print("  clear and scene", scene, frame);
    Print("  panels with their texts", panels, frame);
    Print("  present", present, frame);
    Print("whole frame, every text by the system", systemFrame, frame);
    Print("  panels with their texts", systemPanels, frame);
    const double systemText = (systemTexts - fill) * 1000 / kTextsPerRound;
    const double keptText = (texts - fill) * 1000 / kTextsPerRound;
    std::printf("one text: %.2f us by the system, %.2f us kept, ratio %.1f\n", systemText, keptText,
                systemText / keptText);

    const double always = EventToPicture([] { return RenderFrame(); });
    frameBuffer.cachesPicture = true;
    Turn turn;
    const double whenDue = EventToPicture([&turn] { return RunTurn(0.001f, turn); });
    std::printf(
        "event to picture: %.3f ms with a picture in every turn, %.3f ms as the program draws, ratio "
        "%.2f\n",
        always, whenDue, whenDue / always);

    ReleaseFrameBuffer();
    ReleaseCanvasImages();
    StopPlatform();
    return 0;
}
