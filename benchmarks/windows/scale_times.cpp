// What 100,000 objects cost the Windows program, in a real window of 1360 x 820 pixels.
#include "large_scene.h"

#include "app/current_layout.h"
#include "app/frame.h"
#include "formats/scene_file.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/window.h"
#include "render/frame_buffer.h"
#include "render/icons.h"
#include "scene/commands.h"
#include "scene/selection.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

constexpr int32_t kFew = 1'000, kMany = 100'000;
constexpr auto kScenePath = L"zel_scale_times.scene";

// The median over several rounds, in milliseconds.
template <typename Work>
static double Median(size_t rounds, Work work) {
    std::vector<double> times;
    for (size_t i = 0; i < rounds; ++i) {
        PumpMessages();
        const double start = MonotonicSeconds();
        work();
        PreparePixelAccess(frameBuffer);  // what the system still has to draw belongs to the work
        times.push_back((MonotonicSeconds() - start) * 1000);
    }
    std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(rounds / 2));
    return times[rounds / 2];
}

static double MedianOfPanels(Tree tree, int32_t objects) {
    BuildLargeScene(tree, objects);
    RenderFrame();
    return Median(51, [] { DrawPanels(CurrentLayout()); });
}

static void Print(const char* what, double milliseconds, double peer) {
    std::printf("%-46s %8.2f ms %7.2f\n", what, milliseconds, milliseconds / peer);
}

static void PrintTree(const char* name, Tree tree) {
    const double few = MedianOfPanels(tree, kFew), many = MedianOfPanels(tree, kMany);
    const double frame = Median(11, RenderFrame);
    std::printf("%s\n", name);
    Print("  panels of 1,000 objects", few, few);
    Print("  panels of 100,000", many, few);
    Print("  frame of 100,000", frame, frame);
    Print("  delete one", Median(11, deleteSelected), frame);
    Print("  duplicate one", Median(11, duplicateSelected), frame);
    Print("  undo step with one changed",
          Median(11,
                 [] {
                     SelectedObject().position.x += 1;
                     pushUndo("Step");
                 }),
          frame);
}

static void PrintFile() {
    BuildLargeScene(Tree::Roots, kMany);
    const std::wstring path = AbsolutePath(kScenePath);
    const double save = Median(5, [&path] { SaveScene(path); });
    const double load = Median(5, [&path] { LoadScene(path); });
    std::string bytes;
    if (!ReadWholeFile(path, bytes)) return;
    const double megabytes = static_cast<double>(bytes.size()) / 1e6;
    const double write = Median(5, [&] { WriteWholeFile(path, bytes); });
    RemoveFile(path);
    std::printf(
        "scene file of %.1f MB: saved at %.0f MB/s, loaded at %.0f MB/s, its bytes written at %.0f MB/s\n",
        megabytes, megabytes / save * 1000, megabytes / load * 1000, megabytes / write * 1000);
}

int main() {
    StartPlatform();
    LoadIcons();
    if (!OpenMainWindow(L"ZelEngine", {1360, 820})) return 1;
    frameBuffer.cachesTexts = true;
    std::printf("100,000 objects: medians, and parts of the panels of 1,000 or of the frame\n");
    PrintTree("all roots", Tree::Roots);
    PrintTree("under one parent", Tree::OneParent);
    PrintTree("in chains of 50", Tree::Chains);
    PrintFile();

    ReleaseFrameBuffer();
    ReleaseCanvasImages();
    StopPlatform();
    return 0;
}
