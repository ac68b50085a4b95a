// Whole frames of the rasterizer: clear, then every object.
#include "bench_report.h"
#include "bench_scenes.h"
#include "mesa_bench.h"

#include "render/frame_buffer.h"
#include "support/plain_renderer.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

// How a frame is begun, and how the objects of it are drawn.
struct FrameWay {
    void (*clear)();
    void (*draw)(const std::vector<MeshInstance>&);
};

}  // namespace

// Every way is measured once in each pass, so that a minute in which others keep the machine busy spoils one
// pass and no figure.
constexpr int32_t kPasses = 4;

static void ClearPlainly() {
    std::fill_n(frameBuffer.pixels, frameBuffer.depth.size(), kBenchBackground);
    std::ranges::fill(frameBuffer.depth, kFarDepth);
}

template <void (*drawOne)(const Mesh&, const MeshDraw&)>
static void DrawInOrder(const std::vector<MeshInstance>& objects) {
    for (const MeshInstance& object : objects) drawOne(*object.mesh, object.draw);
}

constexpr FrameWay kPlainWay{ClearPlainly, DrawInOrder<DrawMeshPlainly>};
constexpr FrameWay kSceneOrder{[] { Clear(kBenchBackground); }, DrawInOrder<DrawMesh>};
constexpr FrameWay kProgramWay{[] { Clear(kBenchBackground); },
                               [](const std::vector<MeshInstance>& objects) { DrawMeshes(objects); }};

static void MeasureFrame(benchmark::State& state, const BenchScene& scene, const FrameWay& way,
                         SimdLevel level) {
    EnsureSize(kBenchWidth, kBenchHeight);
    frameBuffer.simd = level;
    PrepareDepth(frameBuffer.viewport);
    MeasureBest(state, [&] {
        way.clear();
        way.draw(scene.objects);
        benchmark::DoNotOptimize(frameBuffer.pixels[0]);
    });
}

static void RegisterWaysOf(const BenchScene& scene) {
    const auto add = [&scene](const std::string& name, const FrameWay& way, SimdLevel level) {
        benchmark::RegisterBenchmark(
            BenchName(scene.name, name).c_str(),
            [&scene, &way, level](benchmark::State& state) { MeasureFrame(state, scene, way, level); })
            ->Unit(benchmark::kMillisecond)
            ->MinTime(kLongEnough);
    };
    add(kPeer, kPlainWay, SimdLevel::OneLane);
    RegisterMesaBenchmarks(scene);
    for (SimdLevel level : SupportedSimdLevels()) add(NameOf(level), kProgramWay, level);
    add("scene order", kSceneOrder, BestSimdLevel());
}

void RegisterRasterizerBenchmarks() {
    for (int32_t pass = 0; pass < kPasses; ++pass) {
        for (const BenchScene& scene : BenchScenes()) RegisterWaysOf(scene);
    }
}
