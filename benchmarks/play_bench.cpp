// A frame of a playing scene: boxes that fall onto platforms, against comparing every object with every
// other.
#include "bench_report.h"

#include "render/builtin_meshes.h"
#include "state/editor_state.h"
#include "support/frame_update.h"
#include "support/plain_play.h"

#include <benchmark/benchmark.h>

#include <string>

constexpr float kFrameTime = 1.0f / 60;
constexpr int32_t kAffordable = 5'000;  // boxes; the plain way takes a minute a frame for the most

static GameObject FallingBox(int32_t number, int32_t columns) {
    const auto column = static_cast<float>(number % columns), row = static_cast<float>(number / columns);
    return {.name = L"Box",
            .position{column * 1.3f, 0.6f + 0.1f * column, row * 1.3f},
            .scale{0.5f, 0.5f, 0.5f},
            .meshIndex = kCubeMesh,
            .hasCollision = true,
            .hasGravitation = true};
}

static GameObject Platform(int32_t number, int32_t columns) {
    const int32_t perRow = columns / 5 + 1;
    const auto column = static_cast<float>(number % perRow), row = static_cast<float>(number / perRow);
    return {.name = L"Platform",
            .position{column * 6.5f + 2.6f, -0.5f, row * 6.5f + 2.6f},
            .scale{3, 0.2f, 3},
            .meshIndex = kCubeMesh,
            .hasCollision = true};
}

// A square of boxes over platforms of five by five each, some of them in the air and some at rest.
static void StartGame(int32_t boxes) {
    editorState = EditorState{};
    editorState.meshes = BuiltinMeshLibrary();
    int32_t columns = 1;
    while (columns * columns < boxes) ++columns;
    for (int32_t i = 0; i < boxes; ++i) editorState.scene.push_back(FallingBox(i, columns));
    const int32_t platforms = (columns / 5 + 1) * (columns / 5 + 1);
    for (int32_t i = 0; i < platforms; ++i) editorState.scene.push_back(Platform(i, columns));
    editorState.playMode = true;
}

static void Play(benchmark::State& state, int32_t boxes, void (*update)(float)) {
    StartGame(boxes);
    for (int32_t frame = 0; frame < 30; ++frame) UpdateFrame(kFrameTime);
    const EditorState start = editorState;
    int32_t frame = 0;
    for ([[maybe_unused]] auto round : state) {
        update(kFrameTime);
        if (++frame % 60 != 0) continue;
        state.PauseTiming();
        editorState = start;
        state.ResumeTiming();
    }
}

void RegisterPlayBenchmarks() {
    for (const int32_t boxes : {100, 1'000, 5'000, 20'000, 100'000}) {
        const std::string scenario = std::to_string(boxes) + " boxes, a frame of play";
        const auto add = [&scenario, boxes](const char* way, void (*update)(float)) {
            benchmark::RegisterBenchmark(BenchName(scenario, way).c_str(), [boxes,
                                                                            update](benchmark::State& state) {
                Play(state, boxes, update);
            })->Unit(benchmark::kMillisecond);
        };
        if (boxes <= kAffordable) add(kPeer, UpdatePlayPlainly);
        add("UpdateFrame", [](float dt) { UpdateFrame(dt); });
    }
}
