// What the recycle bin takes. Where there is no bin, or it is off or too small, the system's call deletes a
// folder for good, and silently when it was asked for no dialog.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

// What is known of a folder and of its drive's bin.
struct RecycleFacts {
    UINT driveKind = DRIVE_UNKNOWN;      // as GetDriveTypeW gives it; only fixed drives have a bin
    bool binAnswers = false;             // the system says what is in the bin
    bool isSwitchedOff = false;          // by the user for this drive, or by a rule for all
    uint64_t largestBytes = UINT64_MAX;  // that the bin takes
    uint64_t folderBytes = 0;            // of all files in the folder
};

constexpr bool GoesToBin(const RecycleFacts& facts) {
    return facts.driveKind == DRIVE_FIXED && facts.binAnswers && !facts.isSwitchedOff &&
           facts.folderBytes <= facts.largestBytes;
}

// `folder` is a full path.
RecycleFacts FindRecycleFacts(const std::wstring& folder);
