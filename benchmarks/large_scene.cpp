#include "large_scene.h"

#include "scene/default_scenes.h"
#include "state/editor_state.h"

#include <string>

// The first two objects are the camera and the light.
static int32_t ParentOf(int32_t index, Tree tree) {
    switch (tree) {
        case Tree::Roots: return -1;
        case Tree::OneParent: return index == 2 ? -1 : 2;
        case Tree::Chains: return index % kLongChain <= 2 ? -1 : index - 1;
    }
    return -1;
}

static Vec3 PlaceOf(int32_t index) {
    return {static_cast<float>(index % 100 - 50), static_cast<float>(index / 10'000),
            static_cast<float>(index / 100 % 100 + 4)};
}

void BuildLargeScene(Tree tree, int32_t objects) {
    editorState = EditorState{};
    resetScene(false);
    for (int32_t i = 2; i < objects; ++i) {
        const int32_t parent = ParentOf(i, tree);
        editorState.scene.push_back({.name = L"GameObject_" + std::to_wstring(i),
                                     .position = parent < 0 ? PlaceOf(i) : Vec3{0.1f, 0.1f, 0.2f},
                                     .rotation{0.1f, 0.2f, 0.3f},
                                     .scale{0.2f, 0.2f, 0.2f},
                                     .meshIndex = i % 3 == 0 ? 1 : 0,
                                     .parentIndex = parent});
    }
    editorState.selectedIndex = objects / 2;
}
