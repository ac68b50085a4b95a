// Whole frames of the rasterizer: clear, then every object.
#include "bench_report.h"
#include "bench_scenes.h"
#include "mesa_bench.h"

#include "render/frame_buffer.h"
#include "support/plain_renderer.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

// How a frame is begun, and how each object of it is drawn.
struct FrameWay {
    void (*clear)();
    void (*draw)(const Mesh&, const MeshDraw&);
};

}  // namespace

static void ClearPlainly() {
    std::fill_n(frameBuffer.pixels, frameBuffer.depth.size(), kBenchBackground);
    std::ranges::fill(frameBuffer.depth, kFarDepth);
}

constexpr FrameWay kPlainWay{ClearPlainly, DrawMeshPlainly};
constexpr FrameWay kProgramWay{[] { Clear(kBenchBackground); }, DrawMesh};

static void MeasureFrame(benchmark::State& state, const BenchScene& scene, const FrameWay& way,
                         SimdLevel level) {
    EnsureSize(kBenchWidth, kBenchHeight);
    frameBuffer.simd = level;
    PrepareDepth(frameBuffer.viewport);
    for ([[maybe_unused]] auto frame : state) {
        way.clear();
        for (const BenchObject& object : scene.objects) way.draw(*object.mesh, object.draw);
        benchmark::DoNotOptimize(frameBuffer.pixels[0]);
    }
}

void RegisterRasterizerBenchmarks() {
    for (const BenchScene& scene : BenchScenes()) {
        const auto add = [&scene](const char* name, const FrameWay& way, SimdLevel level) {
            benchmark::RegisterBenchmark(BenchName(scene.name, name).c_str(), [&scene, &way, level](
                                                                                  benchmark::State& state) {
                MeasureFrame(state, scene, way, level);
            })->Unit(benchmark::kMillisecond);
        };
        add(kPeer, kPlainWay, SimdLevel::Scalar);
        RegisterMesaBenchmarks(scene);
        add("scalar rows", kProgramWay, SimdLevel::Scalar);
        add("SSE2", kProgramWay, SimdLevel::Sse2);
        if (BestSimdLevel() == SimdLevel::Avx2) add("AVX2", kProgramWay, SimdLevel::Avx2);
    }
}
