// How far the recovery of unsaved work is; see project/recovery.h.
#pragma once

#include "state/scene_snapshot.h"

#include <cstddef>
#include <optional>
#include <string>

// A recovery that this program has written and may replace or remove.
struct OwnRecovery {
    std::wstring about{};   // full path of the scene or prefab
    std::wstring path{};    // of the recovery
    SceneSnapshot holds{};  // the objects that are in it
};

// A recovery that is being put into words, a few objects in each frame.
struct RecoveryDraft {
    bool ofPrefab = false;
    std::wstring about{};
    SceneSnapshot scene{};
    size_t nextRun = 0, nextObject = 0;
    std::wstring text{};
};

struct RecoveryState {
    std::optional<OwnRecovery> scene{}, prefab{};
    std::optional<RecoveryDraft> draft{};
    double nextLook = 0;  // seconds of the clock: before it no draft begins
};
