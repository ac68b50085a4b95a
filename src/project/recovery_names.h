// Which file holds which unsaved work: names, first lines, and what goes when there is too much. Asks no
// disk.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A recovery on the disk.
struct RecoveryFacts {
    std::wstring path{};
    int64_t bytes = 0;
    int64_t written = 0;  // when, in the disk's own unit; later is more
};

// The name, without extension, of the recoveries of the scene or prefab at a full path: 16 digits that are
// the same in upper and lower case.
std::wstring RecoveryStem(std::wstring_view fullPath);

// The first line of a recovery, which names the file that it is about. Scenes and prefabs are read without
// it.
std::wstring RecoveryLine(std::wstring_view fullPath);

// The path that such a line names; empty for any other line.
std::wstring RecoveredPath(std::wstring_view line);

// The name of the copy that the user finds beside a scene or prefab: "Main_neulozeno" for "Main.scene".
std::wstring RecoveredStem(std::wstring_view fullPath);

// Those that must go, the oldest first, so that at most 20 files and 200 MB stay.
std::vector<std::wstring> SurplusRecoveries(std::vector<RecoveryFacts> all);
