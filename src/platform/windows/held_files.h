// Renaming and removing files that another program may hold for a moment: a virus scanner, an indexer, a
// folder that is synchronised.
#pragma once

#include <windows.h>

#include <string>

// True for the errors of a call that may succeed a moment later.
constexpr bool MayPass(DWORD error) {
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

// Each tries for up to 300 ms while another program is in the way, and returns false when that does not help.

// One step, down to the disk: whoever looks finds the old file at `target` or the new one.
bool RenameOver(const std::wstring& from, const std::wstring& target);

bool RemoveHeldFile(const std::wstring& path);
