// Keeping the unsaved work of a scene of 100,000 objects, against the frame in which each part of it is done.
#include "bench_report.h"
#include "large_scene.h"

#include "app/frame.h"
#include "platform/headless/headless.h"
#include "project/recovery.h"
#include "render/frame_buffer.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>

constexpr int32_t kObjects = 100'000;
constexpr auto kScenario = "100,000 siblings, frame with recovery";

namespace {
// Milliseconds of the window's thread.
struct RecoveryTimes {
    double first = 0;  // the frame that begins
    double words = 0;  // one of those that put objects into words, the mean
    double last = 0;   // the one that hands the file to the thread aside
};
}  // namespace

static double KeepAt(double now) {
    const double start = ThreadMilliseconds();
    KeepRecovery(now);
    return ThreadMilliseconds() - start;
}

// A whole recovery after one change. What the thread aside would do is left out.
static RecoveryTimes KeepChange(double& now) {
    MarkChanged();
    RecoveryTimes times{.first = KeepAt(now += 61)};
    int32_t frames = 0;
    for (; headless.aside.empty(); ++frames) {
        times.words += times.last;
        times.last = KeepAt(now += 0.01);
    }
    times.words /= frames - 1;
    headless.aside.clear();
    editorState.recovery = {};
    return times;
}

static void MeasurePart(benchmark::State& state, double RecoveryTimes::*part) {
    BuildLargeScene(Tree::OneParent, kObjects);
    headless = HeadlessPlatform{};
    double now = 0, best = std::numeric_limits<double>::max();
    for ([[maybe_unused]] auto round : state) best = std::min(best, KeepChange(now).*part);
    state.counters[kBest] = best;
}

void RegisterRecoveryBenchmarks() {
    const auto add = [](const char* way, auto measure) {
        benchmark::RegisterBenchmark(BenchName(kScenario, way).c_str(), measure)
            ->Unit(benchmark::kMillisecond);
    };
    add(kPeer, [](benchmark::State& state) {
        BuildLargeScene(Tree::OneParent, kObjects);
        headless = HeadlessPlatform{};
        headless.clientSize = {1360, 820};
        ReleaseFrameBuffer();
        MeasureBest(state, [] {
            RenderFrame();
            headless.texts.clear();
            headless.images.clear();
        });
    });
    add("recovery begins", [](benchmark::State& state) { MeasurePart(state, &RecoveryTimes::first); });
    add("objects into words", [](benchmark::State& state) { MeasurePart(state, &RecoveryTimes::words); });
    add("handed over", [](benchmark::State& state) { MeasurePart(state, &RecoveryTimes::last); });
}
