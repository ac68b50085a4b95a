#include "platform/windows/held_files.h"

constexpr DWORD kPauses[] = {10, 20, 40, 60, 80, 90};  // milliseconds between one try and the next

// Makes the call until it succeeds or fails for good. It returns false and sets the last error when it fails.
template <typename Call>
static bool TryAgain(Call call) {
    for (const DWORD pause : kPauses) {
        if (call()) return true;
        if (!MayPass(GetLastError())) return false;
        Sleep(pause);
    }
    return call();
}

bool RenameOver(const std::wstring& from, const std::wstring& target) {
    constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return TryAgain([&] { return MoveFileExW(from.c_str(), target.c_str(), kFlags) != 0; });
}

bool RemoveHeldFile(const std::wstring& path) {
    return TryAgain([&path] { return DeleteFileW(path.c_str()) != 0; });
}
