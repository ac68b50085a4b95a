// Recoveries on the disk: how they are named, written and found again, and which are dropped when there are
// too many.
#pragma once

#include "state/recovery_state.h"

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

// Where all recoveries of this user lie.
std::wstring RecoveryFolder();

// The name, without extension, of the recoveries of the scene or prefab at a full path: 16 digits that are
// the same in upper and lower case.
std::wstring RecoveryStem(std::wstring_view fullPath);

// The first line of a recovery, which names the file that it is about. What follows it is a scene or prefab
// as usual.
std::wstring RecoveryLine(std::wstring_view fullPath);

// The path that such a line names; empty for any other line.
std::wstring RecoveredPath(std::wstring_view line);

// The name of the copy that the user finds beside a scene or prefab: "Main_neulozeno" for "Main.scene".
std::wstring RecoveredStem(std::wstring_view fullPath);

// The paths that must go, the oldest first, so that at most 20 files and 200 MB stay.
std::vector<std::wstring> SurplusRecoveries(std::vector<RecoveryFacts> all);

// Writes a recovery, unless another thread has begun to, and removes recoveries beyond the limits. Uses
// nothing but `writing` and the disk, so any thread may call it.
void WriteRecovery(RecoveryWriting& writing);

// Called before the files of the project in `folder` are listed. A recovery of one of its scenes or prefabs
// that is newer than the file and differs from it is put beside the file under a free name,
// "Main_neulozeno.scene". All recoveries of the project are then removed; one that cannot be copied stays
// for the next time.
void TakeOverRecoveries(const std::wstring& folder);
