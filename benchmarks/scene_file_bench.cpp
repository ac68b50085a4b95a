// Saving and loading a scene of 100,000 objects, against writing and reading the same bytes.
#include "bench_report.h"

#include "formats/scene_file.h"
#include "platform/files.h"
#include "scene/default_scenes.h"
#include "state/editor_state.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

constexpr int32_t kObjects = 100'000;
constexpr auto kScenario = "100,000 objects saved", kLoadScenario = "100,000 objects loaded";

namespace {

// Removed when the program ends.
struct TemporaryFile {
    std::wstring path = AbsolutePath((std::filesystem::temp_directory_path() / "zel_bench.scene").wstring());

    TemporaryFile() = default;
    ~TemporaryFile() { RemoveFile(path); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
};

}  // namespace

static const std::wstring& ScenePath() {
    static const TemporaryFile file;
    return file.path;
}

static void BuildScene() {
    editorState = EditorState{};
    resetScene(false);
    for (int32_t i = 2; i < kObjects; ++i) {
        const auto at = static_cast<float>(i);
        GameObject object{.name = L"GameObject_" + std::to_wstring(i),
                          .position{at * 0.37f, at * 0.011f, -at},
                          .rotation{at * 0.001f, 0.4f, 0},
                          .meshIndex = i % 7,
                          .parentIndex = i % 5 == 0 ? i - 1 : -1};
        object.scripts = {L"PlayerController"};
        object.scriptCount = 1;
        editorState.scene.push_back(std::move(object));
    }
}

static std::string SavedBytes() {
    std::string bytes;
    BuildScene();
    if (!SaveScene(ScenePath()) || !ReadWholeFile(ScenePath(), bytes)) std::abort();
    return bytes;
}

// A call that fails is no measurement: it ends the benchmark, and no figure is shown.
template <typename Call>
static void Measure(benchmark::State& state, size_t bytes, Call call) {
    for ([[maybe_unused]] auto round : state) {
        if (call()) continue;
        state.SkipWithError("the file could not be saved or loaded");
        return;
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

static void Save(benchmark::State& state) {
    Measure(state, SavedBytes().size(), [] { return SaveScene(ScenePath()); });
}

static void WriteBytes(benchmark::State& state) {
    const std::string bytes = SavedBytes();
    Measure(state, bytes.size(), [&bytes] { return WriteWholeFile(ScenePath(), bytes); });
}

static void Load(benchmark::State& state) {
    Measure(state, SavedBytes().size(), [] { return LoadScene(ScenePath()); });
}

static void ReadBytes(benchmark::State& state) {
    std::string bytes = SavedBytes();
    Measure(state, bytes.size(), [&bytes] { return ReadWholeFile(ScenePath(), bytes); });
}

void RegisterSceneFileBenchmarks() {
    const auto add = [](const char* scenario, const char* way, void (*run)(benchmark::State&)) {
        benchmark::RegisterBenchmark(BenchName(scenario, way).c_str(), run)->Unit(benchmark::kMillisecond);
    };
    add(kScenario, kPeer, WriteBytes);
    add(kScenario, "SaveScene", Save);
    add(kLoadScenario, kPeer, ReadBytes);
    add(kLoadScenario, "LoadScene", Load);
}
