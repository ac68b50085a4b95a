// Whole frames of the rasterizer: clear, then every object.
#include "bench_report.h"
#include "bench_scenes.h"

#include "render/frame_buffer.h"
#include "support/plain_renderer.h"

#include <benchmark/benchmark.h>

using DrawFunction = void (*)(const Mesh&, const MeshDraw&);

static void MeasureFrame(benchmark::State& state, const BenchScene& scene, DrawFunction draw,
                         SimdLevel level) {
    EnsureSize(kBenchWidth, kBenchHeight);
    frameBuffer.simd = level;
    for ([[maybe_unused]] auto frame : state) {
        Clear(Pixel{0x2D2219});
        for (const BenchObject& object : scene.objects) draw(*object.mesh, object.draw);
        benchmark::DoNotOptimize(frameBuffer.pixels[0]);
    }
}

void RegisterRasterizerBenchmarks() {
    for (const BenchScene& scene : BenchScenes()) {
        const auto add = [&scene](const char* way, DrawFunction draw, SimdLevel level) {
            benchmark::RegisterBenchmark(BenchName(scene.name, way).c_str(), [&scene, draw, level](
                                                                                 benchmark::State& state) {
                MeasureFrame(state, scene, draw, level);
            })->Unit(benchmark::kMillisecond);
        };
        add(kPeer, DrawMeshPlainly, SimdLevel::Scalar);
        add("scalar rows", DrawMesh, SimdLevel::Scalar);
        add("SSE2", DrawMesh, SimdLevel::Sse2);
        if (BestSimdLevel() == SimdLevel::Avx2) add("AVX2", DrawMesh, SimdLevel::Avx2);
    }
}
