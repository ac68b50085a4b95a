#include "mesa_bench.h"

#include "bench_report.h"
#include "mesa_renderer.h"

#include "render/frame_buffer.h"
#include "render/raster/draw_mesh.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

// Each rounds in its own way, which shows at edges and where faces cut each other.
constexpr int32_t kSameColor = 4;  // levels of a channel
constexpr double kMostOthers = 1;  // percent of the pixels that are not background

static bool LooksSame(Pixel a, Pixel b) {
    const auto differs = [a, b](int shift) {
        const auto channel = [shift](Pixel p) {
            return static_cast<int32_t>(static_cast<uint32_t>(p) >> shift & 255);
        };
        return std::abs(channel(a) - channel(b)) > kSameColor;
    };
    return !differs(16) && !differs(8) && !differs(0);
}

static void DrawOwnFrame(const BenchScene& scene) {
    EnsureSize(scene.width, scene.height);
    Clear(scene.background);
    for (const BenchObject& object : scene.objects) DrawMesh(*object.mesh, object.draw, frameBuffer);
}

// How many percent of the pixels that one of the pictures has something in look different in the other.
static double PercentOfOthers(const std::vector<Pixel>& picture, const Pixel* own, Pixel background) {
    size_t drawn = 0, others = 0;
    for (size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] == background && own[i] == background) continue;
        ++drawn;
        if (!LooksSame(picture[i], own[i])) ++others;
    }
    return 100 * static_cast<double>(others) / static_cast<double>(std::max<size_t>(drawn, 1));
}

// Skips the scene if the pictures differ. The first frame also compiles the shaders.
static void ComparePictures(benchmark::State& state, const BenchScene& scene, const MesaScene& loaded) {
    DrawMesaFrame(loaded);
    DrawOwnFrame(scene);
    const double others = PercentOfOthers(MesaPicture(loaded), frameBuffer.pixels, scene.background);
    char label[64];
    std::snprintf(label, sizeof label, "%.2f %% of its pixels differ", others);
    state.SetLabel(label);
    if (others > kMostOthers) state.SkipWithError(label);
}

// Mesa asks for large blocks in each frame. Getting them from the system anew, page by page, costs it up to
// two fifths of a frame. This holds to the end of the program.
static void KeepFreedMemory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
}

// In the order of DrawMeshes.
static BenchScene NearestFirst(BenchScene scene) {
    std::ranges::stable_sort(scene.objects, {}, [](const BenchObject& object) {
        return TransformToClip(object.draw.viewProjection, Translation(object.draw.world)).w;
    });
    return scene;
}

static void MeasureFrame(benchmark::State& state, const BenchScene& scene, MesaOrder order, MesaWay way) {
    KeepFreedMemory();
    const MesaScene loaded =
        LoadMesaScene(order == MesaOrder::NearestFirst ? NearestFirst(scene) : scene, way);
    ComparePictures(state, scene, loaded);
    MeasureBest(state, [&loaded] { DrawMesaFrame(loaded); });
    ReleaseMesaScene(loaded);
}

std::string MesaNote() {
    const std::string renderer = MesaRenderer();
    if (renderer.empty()) return "Mesa: left out, its off-screen renderer is not llvmpipe.";
    return "Mesa: " + renderer + ", one thread. The faster of its two ways counts.";
}

void RegisterMesaBenchmarks(const BenchScene& scene, MesaOrder order) {
    if (MesaRenderer().empty()) return;
    const auto add = [&scene, order](const std::string& name, MesaWay way) {
        const auto measure = [&scene, order, way](benchmark::State& state) {
            MeasureFrame(state, scene, order, way);
        };
        benchmark::RegisterBenchmark(BenchName(scene.name, kMesaPeer + name).c_str(), measure)
            ->Unit(benchmark::kMillisecond)
            ->MinTime(kLongEnough);
    };
    add(", instanced", MesaWay::Instanced);
    add(", pre-lit", MesaWay::PreLit);
}
