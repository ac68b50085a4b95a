// A scene kept for later, which shares with an earlier one what did not change in between.
#pragma once

#include "state/game_object.h"

#include <cstdint>
#include <memory>
#include <vector>

// The objects in scene order, cut into runs that nobody changes any more. A value: a copy costs no object.
// Parent indices are kept aside, because removing or moving one object changes those of all objects whose
// parents stand behind it.
struct SceneSnapshot {
    std::vector<std::shared_ptr<const Scene>> runs{};  // 1 .. 64 objects each; their parents say nothing
    std::shared_ptr<const std::vector<int32_t>>
        parents{};  // parent index of each object; null without objects
};
