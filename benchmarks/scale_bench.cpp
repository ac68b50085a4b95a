// The editor over 100,000 objects: its frame against the frame of 1,000, and what a user does against the
// frame that shows it.
#include "bench_report.h"
#include "large_scene.h"

#include "app/current_layout.h"
#include "app/frame.h"
#include "platform/headless/headless.h"
#include "render/frame_buffer.h"
#include "scene/commands.h"
#include "scene/undo.h"
#include "state/editor_state.h"
#include "support/frame_update.h"
#include "viewport/gizmo.h"
#include "viewport/pick.h"
#include "viewport/scene_view.h"

#include <benchmark/benchmark.h>

#include <string>

constexpr int32_t kFew = 1'000, kMany = 100'000;
constexpr Point kInViewport{600, 400}, kBesideIt{640, 430};

static void DrawTheFrame() { RenderFrame(); }

static void DrawThePanels() { DrawPanels(CurrentLayout()); }

static void SelectAnother() {
    editorState.selectedIndex = editorState.selectedIndex == kMany / 2 ? kMany / 3 : kMany / 2;
    DrawThePanels();
}

static void Pick() {
    benchmark::DoNotOptimize(PickObject(CurrentPickView(CurrentLayout().viewport), kInViewport));
}

// A step of a held key, and one of a drag.
static void MoveByKey() {
    editorState.keyDown['L'] = true;
    UpdateFrame(1.0f / 60);
}

static void MoveByGizmo() {
    MoveGizmoDrag({.object = editorState.selectedIndex, .press = kInViewport, .screenX = 50}, kBesideIt);
}

static void DeleteAndUndo() {
    deleteSelected();
    undo();
}

static void DuplicateAndUndo() {
    duplicateSelected();
    undo();
}

// Back and forth over half of the scene.
static void Reorder() {
    const bool isBehind = editorState.selectedIndex > kMany / 4;
    moveInHierarchy(editorState.selectedIndex, isBehind ? 2 : kMany / 2, false, true);
}

static void Measure(benchmark::State& state, Tree tree, int32_t objects, void (*work)()) {
    BuildLargeScene(tree, objects);
    headless = HeadlessPlatform{};
    headless.clientSize = {1360, 820};
    ReleaseFrameBuffer();
    RenderFrame();
    for ([[maybe_unused]] auto round : state) {
        work();
        headless.texts.clear();
        headless.images.clear();
    }
}

static void RegisterTree(Tree tree, const std::string& name) {
    const auto add = [tree, &name](const char* what, const char* way, int32_t objects, void (*work)()) {
        benchmark::RegisterBenchmark(BenchName(name + what, way).c_str(), [=](benchmark::State& state) {
            Measure(state, tree, objects, work);
        })->Unit(benchmark::kMillisecond);
    };
    add(", panels", kPeer, kFew, DrawThePanels);
    add(", panels", "DrawPanels", kMany, DrawThePanels);
    add(", frame", kPeer, kFew, DrawTheFrame);
    add(", frame", "RenderFrame", kMany, DrawTheFrame);
    add(", action", kPeer, kMany, DrawTheFrame);
    add(", action", "select", kMany, SelectAnother);
    add(", action", "delete", kMany, deleteSelected);
    add(", action", "with its undo", kMany, DeleteAndUndo);
    add(", action", "duplicate", kMany, duplicateSelected);
    add(", action", "with its undo", kMany, DuplicateAndUndo);
    add(", action", "reorder", kMany, Reorder);
    add(", action", "pick", kMany, Pick);
    add(", action", "move by key", kMany, MoveByKey);
    add(", action", "move by gizmo", kMany, MoveByGizmo);
}

void RegisterScaleBenchmarks() {
    RegisterTree(Tree::Roots, "100,000 roots");
    RegisterTree(Tree::OneParent, "100,000 siblings");
    RegisterTree(Tree::Chains, "100,000 in chains");
}
