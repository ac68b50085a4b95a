// Small games for tests.
#pragma once

#include "play/play_mode.h"
#include "render/builtin_meshes.h"
#include "state/editor_state.h"
#include "support/frame_update.h"

#include <initializer_list>
#include <utility>

// A fresh editor that plays the objects, at rest. Their velocities may be set afterwards.
inline void StartGame(Scene objects) {
    editorState = EditorState{};
    editorState.meshes = BuiltinMeshLibrary();
    editorState.scene = std::move(objects);
    StartPlayMode();
}

inline GameObject& Object(int32_t index) { return editorState.scene[static_cast<size_t>(index)]; }

inline void Hold(std::initializer_list<char> keys) {
    for (const char key : keys) editorState.keyDown[static_cast<size_t>(key)] = true;
}

inline void ReleaseKeys() { editorState.keyDown = {}; }

// Frames of the longest time, a twentieth of a second.
inline void PlayFrames(int32_t frames) {
    for (int32_t i = 0; i < frames; ++i) UpdateFrame(0.05f);
}
