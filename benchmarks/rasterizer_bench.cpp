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
    void (*clear)(Pixel background);
    void (*draw)(const std::vector<MeshInstance>&);
};

}  // namespace

// Every way is measured once in each pass, so that a minute in which others keep the machine busy spoils one
// pass and no figure.
constexpr int32_t kPasses = 4;

static void ClearPlainly(Pixel background) {
    std::fill_n(frameBuffer.pixels, frameBuffer.depth.size(), background);
    std::ranges::fill(frameBuffer.depth, kFarDepth);
}

template <void (*drawOne)(const Mesh&, const MeshDraw&)>
static void DrawInOrder(const std::vector<MeshInstance>& objects) {
    for (const MeshInstance& object : objects) drawOne(*object.mesh, object.draw);
}

constexpr FrameWay kPlainWay{ClearPlainly, DrawInOrder<DrawMeshPlainly>};
static void DrawNothing(const std::vector<MeshInstance>&) {}

static void DrawInFrame(const Mesh& mesh, const MeshDraw& draw) { DrawMesh(mesh, draw, frameBuffer); }

constexpr FrameWay kSceneOrder{Clear, DrawInOrder<DrawInFrame>};
constexpr FrameWay kClear{Clear, DrawNothing};  // what has to be written anyway
constexpr FrameWay kProgramWay{
    Clear, [](const std::vector<MeshInstance>& objects) { DrawMeshes(objects, frameBuffer); }};

static void MeasureFrame(benchmark::State& state, const BenchScene& scene, const FrameWay& way,
                         SimdLevel level) {
    EnsureSize(scene.width, scene.height);
    frameBuffer.simd = level;
    PrepareDepth(frameBuffer.viewport, frameBuffer);
    MeasureBest(state, [&] {
        way.clear(scene.background);
        way.draw(scene.objects);
        benchmark::DoNotOptimize(frameBuffer.pixels[0]);
    });
}

static void AddFrame(const BenchScene& scene, const std::string& name, const FrameWay& way, SimdLevel level) {
    benchmark::RegisterBenchmark(
        BenchName(scene.name, name).c_str(),
        [&scene, &way, level](benchmark::State& state) { MeasureFrame(state, scene, way, level); })
        ->Unit(benchmark::kMillisecond)
        ->MinTime(kLongEnough);
}

static void RegisterWaysOf(const BenchScene& scene) {
    AddFrame(scene, kPeer, kPlainWay, SimdLevel::OneLane);
    RegisterMesaBenchmarks(scene, MesaOrder::AsInScene);
    for (SimdLevel level : SupportedSimdLevels()) AddFrame(scene, NameOf(level), kProgramWay, level);
    AddFrame(scene, "scene order", kSceneOrder, BestSimdLevel());
    AddFrame(scene, "clear alone", kClear, BestSimdLevel());
}

// The colours alone, and everything: what is drawn and what has to be written anyway. Few objects, most of
// them large: Mesa gets them in the order in which the program draws them.
static void RegisterSample(const BenchScene& scene) {
    AddFrame(scene, kPeer, kPlainWay, SimdLevel::OneLane);
    RegisterMesaBenchmarks(scene, MesaOrder::NearestFirst);
    AddFrame(scene, "clear alone", kClear, BestSimdLevel());
    for (SimdLevel level : SupportedSimdLevels().subspan(1))
        AddFrame(scene, NameOf(level), kProgramWay, level);
}

// In units of the scene's size, so that a time that grows faster than the scene shows as a ratio below 1.
static void RegisterGrowth(const std::string& scenario, const std::string& name, const BenchScene& scene,
                           double units) {
    const auto measure = [scene, units](benchmark::State& state) {
        MeasureFrame(state, scene, kProgramWay, BestSimdLevel());
        state.counters[kBest] = state.counters[kBest] / units;
    };
    benchmark::RegisterBenchmark(BenchName(scenario, name).c_str(), measure)
        ->Unit(benchmark::kMillisecond)
        ->MinTime(kLongEnough);
}

void RegisterRasterizerBenchmarks() {
    const std::string growth = "1,000 of many spheres", hidden = "10,000 hidden spheres";
    RegisterGrowth(growth, kPeer, SpheresInView(1'000), 1);
    RegisterGrowth(growth, "of 10,000", SpheresInView(10'000), 10);
    RegisterGrowth(growth, "of 100,000", SpheresInView(100'000), 100);
    RegisterGrowth(hidden, kPeer, SpheresBehindWall(WallPlace::None), 1);
    RegisterGrowth(hidden, "wall first", SpheresBehindWall(WallPlace::First), 1);
    RegisterGrowth(hidden, "wall last", SpheresBehindWall(WallPlace::Last), 1);
    for (int32_t pass = 0; pass < kPasses; ++pass) {
        for (const BenchScene& scene : SampleScenes()) RegisterSample(scene);
        for (const BenchScene& scene : BenchScenes()) RegisterWaysOf(scene);
    }
}
