#include "support/editor_laws.h"

#include "platform/headless/headless.h"
#include "scene/name_entry.h"
#include "scene/object_tree.h"
#include "scene/selection.h"
#include "state/editor_state.h"
#include "support/gestures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

// Each function says what is wrong, or nothing.

static bool HasCycle(const Scene& scene) {
    // An object that no way leads to from a root hangs in a cycle, or below one.
    size_t reached = 0;
    std::vector<int32_t> open{-1};
    const ObjectTree tree = BuildObjectTree(scene);
    while (!open.empty()) {
        const int32_t parent = open.back();
        open.pop_back();
        for (int32_t child = FirstChild(tree, parent); child >= 0; child = tree.nextSibling[child]) {
            ++reached;
            open.push_back(child);
        }
    }
    return reached != scene.size();
}

static bool HasHalfPair(const std::wstring& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        const auto unit = static_cast<uint32_t>(text[i]);
        if (unit >= 0xDC00 && unit < 0xE000) return true;
        if (unit < 0xD800 || unit >= 0xDC00) continue;
        const auto next = i + 1 < text.size() ? static_cast<uint32_t>(text[i + 1]) : 0;
        if (next < 0xDC00 || next >= 0xE000) return true;
        ++i;
    }
    return false;
}

static const char* FaultInScene() {
    const Scene& scene = editorState.scene;
    for (const GameObject& object : scene) {
        if (object.parentIndex != -1 && !IsObjectIndex(object.parentIndex)) return "a parent is not there";
        if (HasHalfPair(object.name) || HasHalfPair(object.text)) return "half a pair in an object";
        if (std::isnan(object.position.x + object.position.y + object.position.z))
            return "a position is lost";
    }
    if (HasCycle(scene)) return "a cycle of parents";
    if (editorState.selectedIndex != -1 && !SelectionIsValid()) return "the selection is not there";
    return nullptr;
}

static const char* FaultInHistory() {
    if (std::ranges::any_of(editorState.undoSteps, [](const UndoStep& step) { return step.label.empty(); }))
        return "a step without a label";
    if (editorState.undoSteps.size() > 64) return "more than 64 steps";
    return nullptr;
}

// `longestName` is 80, or as much as the open entry began with.
static const char* FaultInEntries(size_t longestName) {
    const int32_t open = NameEntryIsOpen() + editorState.numberEntry.open + editorState.componentSearchActive;
    if (open > 1) return "two entries are open";
    if (editorState.nameEntry.text.size() > longestName) return "a name is too long";
    if (editorState.numberEntry.text.size() > 44) return "a number is too long";  // the longest float shown
    if (editorState.componentSearchText.size() > 40) return "a search is too long";
    if (HasHalfPair(editorState.nameEntry.text)) return "half a pair in a name";
    if (HasHalfPair(editorState.componentSearchText)) return "half a pair in a search";
    return nullptr;
}

static const char* FaultInPanels() {
    const auto [hierarchy, inspector, bottom] = editorState.panels;
    if (hierarchy != 0 && hierarchy < 170) return "the Hierarchy is too narrow";
    if (inspector != 0 && inspector < 320) return "the Inspector is too narrow";
    if (bottom < 96) return "the bottom panel is too low";
    return nullptr;
}

static const char* FaultInGestures() {
    if (GestureIsUnderWay() != headless.mouseIsCaptured)
        return "the mouse is held without a gesture, or not in one";
    return nullptr;
}

const char* FaultInEditor(size_t longestName) {
    for (const char* fault : {FaultInScene(), FaultInHistory(), FaultInEntries(longestName), FaultInPanels(),
                              FaultInGestures()}) {
        if (fault != nullptr) return fault;
    }
    return nullptr;
}
