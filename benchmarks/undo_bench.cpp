// One undo step in a scene of 100,000 objects, against a plain copy of all of them.
#include "bench_report.h"

#include "scene/default_scenes.h"
#include "scene/undo.h"
#include "state/editor_state.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <set>
#include <string>

constexpr int32_t kObjects = 100'000, kSteps = 64;
constexpr auto kScenario = "100,000 objects, undo step";

static void BuildScene() {
    editorState = EditorState{};
    resetScene(false);
    for (int32_t i = 2; i < kObjects; ++i) {
        editorState.scene.push_back({.name = L"GameObject_" + std::to_wstring(i),
                                     .position{static_cast<float>(i) * 0.37f, 0, 1},
                                     .parentIndex = i % 5 == 0 ? i - 1 : -1,
                                     .scriptCount = 1,
                                     .scripts = {L"PlayerController"}});
    }
}

// A different object in every step.
static void ChangeOneObject(int64_t step) {
    editorState.scene[static_cast<size_t>(step * 7919 % kObjects)].position.y += 1;
}

static size_t Bytes(const std::wstring& text) {
    const bool isInside = text.capacity() <= std::wstring{}.capacity();
    return isInside ? 0 : (text.capacity() + 1) * sizeof(wchar_t);
}

// Of the objects, with what their texts and lists hold on the heap.
static size_t Bytes(const Scene& objects) {
    size_t bytes = objects.size() * sizeof(GameObject);
    for (const GameObject& object : objects) {
        bytes += Bytes(object.name) + Bytes(object.text);
        bytes += object.scripts.capacity() * sizeof(std::wstring);
        for (const std::wstring& script : object.scripts) bytes += Bytes(script);
    }
    return bytes;
}

static size_t HistoryBytes() {
    std::set<std::shared_ptr<const Scene>> runs;
    std::set<std::shared_ptr<const std::vector<int32_t>>> parents;
    size_t bytes = 0;
    for (const UndoStep& step : editorState.undoSteps) {
        const SceneSnapshot& snapshot = step.scene;
        runs.insert(snapshot.runs.begin(), snapshot.runs.end());
        parents.insert(snapshot.parents);
        bytes += snapshot.runs.size() * sizeof(snapshot.runs[0]);
    }
    for (const auto& run : runs) bytes += Bytes(*run);
    for (const auto& indices : parents) bytes += indices->size() * sizeof(int32_t);
    return bytes;
}

static void ShowMemory(benchmark::State& state, size_t historyBytes) {
    char label[64];
    std::snprintf(label, sizeof label, "%d steps weigh %.2f scenes", kSteps,
                  static_cast<double>(historyBytes) / static_cast<double>(Bytes(editorState.scene)));
    state.SetLabel(label);
}

static void CopyScene(benchmark::State& state) {
    BuildScene();
    Scene copy;
    int64_t step = 0;
    for ([[maybe_unused]] auto round : state) {
        ChangeOneObject(++step);
        copy = Scene(editorState.scene);
        benchmark::DoNotOptimize(copy.data());
    }
    ShowMemory(state, Bytes(copy) * kSteps);
}

static void PushUndo(benchmark::State& state) {
    BuildScene();
    int64_t step = 0;
    for (; step < kSteps; ++step) {
        ChangeOneObject(step);
        pushUndo("Step");
    }
    for ([[maybe_unused]] auto round : state) {
        ChangeOneObject(++step);
        pushUndo("Step");
    }
    ShowMemory(state, HistoryBytes());
}

// A front object away in each step, so that the parents of all others are renumbered.
static void PushWithoutFront(benchmark::State& state) {
    BuildScene();
    const auto removeFront = [] {
        pushUndo("Step");
        Scene& scene = editorState.scene;
        scene.erase(scene.begin());
        for (GameObject& object : scene) object.parentIndex -= object.parentIndex > 0;
    };
    for (int64_t step = 0; step < kSteps; ++step) removeFront();
    for ([[maybe_unused]] auto round : state) removeFront();
    ShowMemory(state, HistoryBytes());
}

// One command and its undo.
static void PushAndUndo(benchmark::State& state) {
    BuildScene();
    pushUndo("First step");
    int64_t step = 0;
    for ([[maybe_unused]] auto round : state) {
        pushUndo("Step");
        ChangeOneObject(++step);
        undo();
    }
}

void RegisterUndoBenchmarks() {
    const auto add = [](const char* way, void (*run)(benchmark::State&)) {
        benchmark::RegisterBenchmark(BenchName(kScenario, way).c_str(), run)->Unit(benchmark::kMillisecond);
    };
    add(kPeer, CopyScene);
    add("pushUndo", PushUndo);
    add("front removed", PushWithoutFront);
    add("push and undo", PushAndUndo);
}
