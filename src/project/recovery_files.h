// Recoveries on the disk: which file holds which unsaved work, how it gets there, how it is found again, and
// what goes when there is too much.
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

// The first line of a recovery, which names the file that it is about. Scenes and prefabs are read without
// it.
std::wstring RecoveryLine(std::wstring_view fullPath);

// The path that such a line names; empty for any other line.
std::wstring RecoveredPath(std::wstring_view line);

// The name of the copy that the user finds beside a scene or prefab: "Main_neulozeno" for "Main.scene".
std::wstring RecoveredStem(std::wstring_view fullPath);

// Those that must go, the oldest first, so that at most 20 files and 200 MB stay.
std::vector<std::wstring> SurplusRecoveries(std::vector<RecoveryFacts> all);

// Writes a recovery that still waits for it, and removes what is too much then. Uses nothing but `writing`
// and the disk, so that any thread may call it; the first one to come writes, any other returns at once.
void WriteRecovery(RecoveryWriting& writing);

// Before the files of the project in `folder` are listed: each recovery of one of its scenes and prefabs that
// is newer than the file and differs from it is put beside it under a free name, "Main_neulozeno.scene". All
// of them go then; one that cannot be copied stays for the next time.
void TakeOverRecoveries(const std::wstring& folder);
