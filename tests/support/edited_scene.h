// Scenes to edit in tests.
#pragma once

#include "scene/default_scenes.h"
#include "state/editor_state.h"
#include "support/random_scene.h"

#include <initializer_list>
#include <limits>
#include <string>

// A fresh editor showing roots and children: each object is given by its parent and named after its index.
inline void StartWithParents(std::initializer_list<int32_t> parents) {
    editorState = EditorState{};
    for (const int32_t parent : parents) {
        const std::wstring name = L"o" + std::to_wstring(editorState.scene.size());
        editorState.scene.push_back({.name = name, .parentIndex = parent});
    }
}

// A fresh editor with the sample scene.
inline void StartWithSamples() {
    editorState = EditorState{};
    resetScene(true);
}

// An object of which any field may differ from any other's.
inline GameObject RandomObject(RandomSource& random, int32_t parents) {
    GameObject object;
    object.name = std::wstring(static_cast<size_t>(random.IntBetween(0, 12)), L'a' + random.IntBetween(0, 3));
    object.position = {random.Between(-9, 9), random.Between(-9, 9), random.OneIn(4) ? -0.0f : 0.0f};
    object.rotation.y = random.Between(-3, 3);
    object.scale.x = random.OneIn(9) ? 0.0f : random.Between(-2, 2);
    object.parentIndex = random.OneIn(2) ? -1 : random.IntBetween(-2, parents);
    object.hasRigidbody = random.OneIn(2);
    object.mass = random.OneIn(9) ? std::numeric_limits<float>::quiet_NaN() : random.Between(0, 5);
    if (random.OneIn(3)) object.scripts.emplace_back(L"PlayerController");
    if (random.OneIn(3)) object.collectTarget = L"aaa";
    return object;
}
