#include "play/collect.h"

#include "base/letter_case.h"
#include "base/path_text.h"
#include "scene/selection.h"
#include "scene/status.h"
#include "state/editor_state.h"

#include <algorithm>
#include <string>

constexpr float kReach = 0.08f;  // world units around the collector's box

// An object collects by prefab or by name, never both, and at most one thing a frame: two coins that are
// touched at once count in two frames. What was collected becomes inactive together with everything below
// it, so that it neither counts again nor blocks anybody later in the same frame.
static void Collect(int32_t index, const std::wstring& message, WorldBoxes& boxes) {
    SetActiveRecursive(index, false, boxes);
    ++editorState.score;
    ShowScore();
    SetStatus(message);
}

// The topmost object of the instance that `index` belongs to: up while the parent comes from the same
// prefab. A cycle of parents ends after as many steps as there are objects.
static int32_t InstanceRoot(int32_t index) {
    const Scene& scene = editorState.scene;
    const std::wstring& prefab = scene[index].prefabSource;
    for (size_t steps = 0; steps < scene.size(); ++steps) {
        const int32_t parent = scene[index].parentIndex;
        if (!IsObjectIndex(parent) || scene[parent].prefabSource != prefab) break;
        index = parent;
    }
    return index;
}

static int32_t FirstTouchingInstance(int32_t collector, const Box& reach, PlayPass& pass) {
    const std::wstring& prefab = editorState.scene[collector].collectPrefab;
    for (const int32_t index : InstancesOf(prefab, pass.lookup)) {
        if (index == collector || !editorState.scene[index].active) continue;
        if (BoxesTouch(WorldBox(index, pass.boxes), reach)) return index;
    }
    return -1;
}

static void CollectInstance(int32_t collector, const Box& reach, PlayPass& pass) {
    const int32_t touched = FirstTouchingInstance(collector, reach, pass);
    if (touched < 0) return;
    const std::wstring fileName = LastComponent(editorState.scene[collector].collectPrefab);
    Collect(InstanceRoot(touched), L"CollectOnTouch: score +1, sebran prefab " + fileName, pass.boxes);
}

static void CollectTarget(int32_t collector, const Box& reach, PlayPass& pass) {
    const int32_t target = FirstObjectNamed(editorState.scene[collector].collectTarget, pass.lookup);
    if (target < 0 || target == collector || !editorState.scene[target].active) return;
    if (!BoxesTouch(WorldBox(target, pass.boxes), reach)) return;
    const std::wstring& name = editorState.scene[target].name;
    Collect(target, L"CollectOnTouch: score +1, sebran objekt " + name, pass.boxes);
}

void CollectOnTouchStep(int32_t index, PlayPass& pass) {
    const GameObject& object = editorState.scene[index];
    if (!object.active) return;
    const bool hasPrefab = IsFile(object.collectPrefab, pass.lookup);
    if (!hasPrefab && object.collectTarget.empty()) return;

    const Box reach = Grown(WorldBox(index, pass.boxes), kReach);
    if (hasPrefab) {
        CollectInstance(index, reach, pass);
    } else {
        CollectTarget(index, reach, pass);
    }
}

void SetActiveRecursive(int32_t index, bool active, WorldBoxes& boxes) {
    for (const int32_t below : SubtreeOf(index, boxes)) {
        editorState.scene[below].active = active;
        ActiveChanged(below, boxes);
    }
}

static bool MentionsScore(const std::wstring& text) {
    const std::wstring capitals = UpperCase(text);
    return capitals.find(UpperCase(L"score")) != std::wstring::npos ||
           capitals.find(UpperCase(L"skore")) != std::wstring::npos;
}

static bool IsActiveText(const GameObject& object) { return object.active && object.isText; }

void ShowScore() {
    Scene& scene = editorState.scene;
    auto shown = std::ranges::find_if(scene, [](const GameObject& object) {
        return IsActiveText(object) && (MentionsScore(object.name) || MentionsScore(object.text));
    });
    if (shown == scene.end()) shown = std::ranges::find_if(scene, IsActiveText);
    if (shown == scene.end()) return;
    shown->text = L"Score: " + std::to_wstring(editorState.score);
}
