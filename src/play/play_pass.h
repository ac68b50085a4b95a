// What one pass over a playing scene looks up and keeps until its end: boxes, objects by name and by prefab,
// and which files exist. Each is looked up at most once.
#pragma once

#include "play/world_boxes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// The names of the open scene, each with the first object that has it.
struct FirstByName {
    struct Hash {
        using is_transparent = void;
        size_t operator()(int32_t index) const;
        size_t operator()(std::wstring_view name) const;
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(int32_t a, int32_t b) const;
        bool operator()(std::wstring_view name, int32_t index) const;
        bool operator()(int32_t index, std::wstring_view name) const;
    };
    std::unordered_set<int32_t, Hash, Equal> indices{};
    size_t seen = 0;  // objects that were looked at so far
};

// For each prefab the objects that were made from it, in scene order, without those that were inactive when
// first looked at.
struct InstancesByPrefab {
    std::unordered_map<std::wstring, std::vector<int32_t>> indices{};
    size_t seen = 0;
};

// Valid as long as no object changes its name or its prefab, or becomes active. Objects added at the end are
// noticed.
struct SceneLookup {
    FirstByName names{};
    InstancesByPrefab instances{};
    std::unordered_map<std::wstring, bool> files{};
};

struct PlayPass {
    WorldBoxes boxes{};
    SceneLookup lookup{};
    int32_t objectsBefore = 0;         // objects that were there when the pass began
    std::vector<int32_t> spawnedBy{};  // for each object added since: the spawner that placed it
};

// The first object with that name. -1 when there is none.
int32_t FirstObjectNamed(const std::wstring& name, SceneLookup& lookup);

// The instances of a prefab, in scene order. May leave out inactive ones.
std::span<const int32_t> InstancesOf(const std::wstring& prefab, SceneLookup& lookup);

// True when the path names a file.
bool IsFile(const std::wstring& path, SceneLookup& lookup);
