// How far the recovery of unsaved work is; see project/recovery.h.
#pragma once

#include "state/scene_snapshot.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

// A recovery that this program has written and may replace or remove.
struct OwnRecovery {
    std::wstring about{};  // full path of the scene or prefab
    std::wstring path{};   // of the recovery
    uint64_t version = 0;  // EditorState::sceneVersion of the objects that are in it
};

// A recovery that is being put into words, a few objects in each frame.
struct RecoveryDraft {
    bool ofPrefab = false;
    std::wstring about{};
    uint64_t version = 0;                 // of the objects that it is about
    std::optional<SceneSnapshot> kept{};  // these objects, once the user has changed them
    size_t nextObject = 0;                // in scene order
    size_t nextRun = 0, nextInRun = 0;    // where that one stands in `kept`
    std::string bytes{};                  // the file so far
};

enum class RecoveryStage { Waiting, Writing, Written, Failed };

// A whole recovery on its way to the disk. Whoever turns Waiting into Writing writes it; the others leave
// everything but `stage` alone until it is Written or Failed.
struct RecoveryWriting {
    bool ofPrefab = false;
    std::wstring about{};
    uint64_t version = 0;
    std::wstring folder{};  // of all recoveries
    std::wstring path{};    // to be replaced; empty for a new name, which the writer enters
    std::string bytes{};
    bool isUnwanted = false;  // was saved meanwhile; the window's thread alone uses it
    std::atomic<RecoveryStage> stage = RecoveryStage::Waiting;
};

struct RecoveryState {
    std::optional<OwnRecovery> scene{}, prefab{};
    std::optional<RecoveryDraft> draft{};
    std::shared_ptr<RecoveryWriting> writing{};  // no draft begins meanwhile
    bool prefabIsNext = false;                   // the scene has had its turn
    double nextLook = 0;                         // seconds of the clock: before it no draft begins
};
